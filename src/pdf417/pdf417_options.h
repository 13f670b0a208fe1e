#pragma once

#include <cstdint>
#include <string>

namespace barcode {

// What fixes the grid: the aspect ratio, the columns, the rows, or both.
enum class PDF417SizeKind : std::uint8_t { kAuto, kColumns, kRows, kColumnsAndRows };

inline constexpr double kPDF417MinAspectRatio = 0.001;
inline constexpr double kPDF417MaxAspectRatio = 1000.0;

// What an encoder is told. Values beyond their range are clamped where they are used.
struct PDF417Options {
  std::string stringEncoding = "utf-8";  // reported, not used: the text is already converted
  PDF417SizeKind sizeKind = PDF417SizeKind::kAuto;
  int codeColumns = 0;
  int codeRows = 0;
  bool useAutoErrorLevel = true;
  int errorLevel = 2;
  double aspectRatio = 0.5;  // height to width
  int yHeight = 3;           // height of a row in modules

  // The row height that is drawn with: 3 where the option is below 1.
  int RowHeight() const { return yHeight < 1 ? 3 : yHeight; }
};

}  // namespace barcode
