#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/barcode_base_2d.h"
#include "pdf417/options.h"

namespace barcode {

// PDF417 (ISO/IEC 15438): text, byte and numeric compaction, columns and rows after the aspect ratio, an
// error level that fills the grid.
class PDF417 : public BarcodeBase2D {
 public:
  explicit PDF417(std::string_view format)
      : BarcodeBase2D(format,
                      {.tag = "[PDF417] ", .encodesFirst = true, .printsSteps = false, .doneLine = {}}) {}

  // Stored and reported. Level, columns and rows do not change the symbol. This is intended.
  void SetErrorLevel(std::int32_t level) { m_options.errorLevel = level; }
  void SetCodeColumns(std::int32_t columns);  // 0 to 30; other numbers change nothing
  void SetCodeRows(std::int32_t rows);        // 0 to 90; other numbers change nothing

  // Height to width, 0.001 to 1000; other values change nothing.
  void SetAspectRatio(double ratio);

  // Height of a row in modules, above 0; other values change nothing. It shapes the number of columns and, in
  // a square box, the width of the symbol, not the height of a row.
  void SetYHeight(std::int32_t height);

 protected:
  ModuleMatrix Encode(const std::string& text, EncoderLines& lines) const override;
  // A square box keeps its height and takes the width that is natural for the symbol.
  Box DrawnBox(const ModuleMatrix& matrix, const Box& box) const override;
  MatrixDrawing Layout(const ModuleMatrix& matrix, std::uint32_t width, std::uint32_t height,
                       PixelGrid grid) const override;

 private:
  pdf417::Options m_options;
};

}  // namespace barcode
