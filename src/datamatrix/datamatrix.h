#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/barcode_base_2d.h"
#include "datamatrix/options.h"

namespace barcode {

// Data Matrix ECC 200 (ISO/IEC 16022): all 30 sizes, all six encodation schemes.
class DataMatrix : public BarcodeBase2D {
 public:
  explicit DataMatrix(std::string_view format)
      : BarcodeBase2D(format, {.tag = "[DataMatrix] ", .doneLine = "--- DataMatrix::Draw 終了 (成功) ---"}) {}

  // "10x10" to "144x144", "8x18" to "16x48", rows first; any other text leaves the square size to the text.
  void SetCodeSize(std::string_view keyword);

  // "ASCII", "C40", "TEXT", "X12", "EDIFACT" or "BASE256"; any other text selects the fewest codewords.
  void SetEncodeScheme(std::string_view keyword);

 protected:
  ModuleMatrix Encode(const std::string& text, EncoderLines& lines) const override;
  MatrixDrawing Layout(const ModuleMatrix& matrix, std::uint32_t width, std::uint32_t height,
                       PixelGrid grid) const override;
  void ReportSymbol(const ModuleMatrix& matrix, const MatrixDrawing& drawing) const override;

 private:
  datamatrix::Options m_options;
};

}  // namespace barcode
