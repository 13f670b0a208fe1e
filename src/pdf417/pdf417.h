#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/barcode_base_2d.h"
#include "pdf417/pdf417_options.h"

namespace barcode {

// PDF417 (ISO/IEC 15438): text, byte and numeric compaction, columns and rows after the aspect ratio, an
// error level that fills the grid.
class PDF417 : public BarcodeBase2D {
 public:
  static constexpr std::string_view kTag = "[PDF417] ";

  enum class SizeKind : std::uint8_t { kAuto, kRows, kColumns, kColumnsAndRows };

  using BarcodeBase2D::BarcodeBase2D;

  // Stored and reported. No setter selects a size kind or a fixed error level: columns, rows and level do not
  // change the symbol. This is intended.
  void SetErrorLevel(std::int32_t level) { m_errorLevel = level; }
  void SetCodeColumns(std::int32_t columns);  // 0 to 30; other numbers change nothing
  void SetCodeRows(std::int32_t rows);        // 0 to 90; other numbers change nothing

  // Height to width, 0.001 to 1000; other values change nothing.
  void SetAspectRatio(double ratio);

  // Height of a row in modules, above 0; other values change nothing. It shapes the number of columns and, in
  // a square box, the width of the symbol, not the height of a row.
  void SetYHeight(std::int32_t height);

  bool DrawMatrix(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) override;

  // What the encoder is told: ROWS and COLUMNS are exchanged on the way. This is intended.
  static PDF417SizeKind EncoderSizeKind(SizeKind kind);
  PDF417Options EncoderOptions() const;

 private:
  bool DrawRaster(const ModuleMatrix& modules, int x, int y, std::uint32_t width, std::uint32_t height);
  void DrawSvgDocument(const ModuleMatrix& modules, std::uint32_t width, std::uint32_t height);

  SizeKind m_sizeKind = SizeKind::kAuto;
  std::int32_t m_codeColumns = 0;
  std::int32_t m_codeRows = 0;
  bool m_useAutoErrorLevel = true;
  std::int32_t m_errorLevel = 2;
  double m_aspectRatio = 0.5;
  std::int32_t m_yHeight = 3;
};

}  // namespace barcode
