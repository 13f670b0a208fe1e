#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/module_matrix.h"
#include "core/barcode_base_2d.h"
#include "datamatrix/options.h"

namespace barcode {

// Data Matrix ECC 200 (ISO/IEC 16022): all 30 sizes, all six encodation schemes.
class DataMatrix : public BarcodeBase2D {
 public:
  static constexpr std::string_view kTag = "[DataMatrix] ";

  using BarcodeBase2D::BarcodeBase2D;

  // "10x10" to "144x144", "8x18" to "16x48", rows first; any other text leaves the square size to the text.
  void SetCodeSize(std::string_view keyword);

  // "ASCII", "C40", "TEXT", "X12", "EDIFACT" or "BASE256"; any other text selects the fewest codewords.
  void SetEncodeScheme(std::string_view keyword);

  bool DrawMatrix(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) override;

 private:
  bool DrawRaster(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height);
  bool DrawSvgDocument(const std::string& text, std::uint32_t width, std::uint32_t height);
  ModuleMatrix Encode(const std::string& text) const;

  datamatrix::Options m_options;
};

}  // namespace barcode
