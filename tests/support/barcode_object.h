#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "barcode.h"
#include "support/image.h"

namespace barcode::test {

// A handle of the exported functions that is destroyed at the end of its scope.
class BarcodeObject {
 public:
  explicit BarcodeObject(int type) : m_handle(barcode_create(type)) {}
  ~BarcodeObject() { barcode_destroy(m_handle); }
  BarcodeObject(const BarcodeObject&) = delete;
  BarcodeObject& operator=(const BarcodeObject&) = delete;

  BarcodeHandle Handle() const { return m_handle; }
  operator BarcodeHandle() const { return m_handle; }  // NOLINT: stands for its handle in every call

  // The canvas as PNG bytes; empty when there is none.
  std::span<const std::uint8_t> Png() const {
    int length = 0;
    const unsigned char* const bytes = barcode_get_image_data(m_handle, &length);
    return bytes == nullptr ? std::span<const std::uint8_t>()
                            : std::span(bytes, static_cast<std::size_t>(length));
  }

  Image Picture() const { return DecodePng(Png()); }

  // Draws in SVG and returns the document; empty when the draw failed.
  std::string SvgOf(const std::string& text, int width, int height) const {
    barcode_set_output_format(m_handle, "svg");
    return barcode_draw_1d(m_handle, text.c_str(), width, height) == 1 ? barcode_get_svg(m_handle) : "";
  }

 private:
  BarcodeHandle m_handle;
};

}  // namespace barcode::test
