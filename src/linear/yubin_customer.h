#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/barcode_base_1d.h"

namespace barcode {

// The customer barcode of the Japanese postal service: four-state bars of fixed number, whose size follows
// from their height. No human-readable text.
class YubinCustomer : public BarcodeBase1D {
 public:
  explicit YubinCustomer(std::string_view format) : BarcodeBase1D(format, "[YubinCustomer] ") {}

  // The draw itself: long bars of `height` pixels. Draw does the same whatever the width, as kept for hosts
  // that pass one.
  bool DrawPostal(const std::string& text, int x, int y, std::uint32_t height) {
    return Draw(text, x, y, 0, height);
  }

 protected:
  // Nothing for an empty text and for a height below 1: both are refused without a message.
  std::optional<Box> DrawnBox(const std::string& text, const Box& box) const override;
  std::optional<SymbolDrawing> Layout(const std::string& text, const DrawContext& context) const override;
};

}  // namespace barcode
