#include "gs1/databar_14_diagnostics.h"

#include <string_view>

#include "base/line.h"

namespace barcode {
namespace {

constexpr std::size_t kShown = 20;

std::string_view Beginning(std::string_view text) {
  return text.substr(0, kShown);
}

}  // namespace

std::vector<std::string> DescribeDataBar14(const DataBar14Symbol& symbol) {
  std::vector<std::string> lines;
  for (std::size_t row = 0; row < symbol.moduleRows.size(); ++row) {
    lines.push_back(Line("DEBUG encode: row ", row, " bin[0:20]=", Beginning(symbol.moduleRows[row])));
  }
  lines.push_back(Line("DEBUG DataBar14: m_rowCount=", symbol.rows.size()));
  lines.push_back(Line("DEBUG DataBar14: m_symbolType=", static_cast<int>(symbol.type)));
  for (std::size_t row = 0; row < symbol.rows.size(); ++row) {
    const auto& [widths, height] = symbol.rows[row];
    lines.push_back(Line("DEBUG DataBar14: row ", row, ": height=", height,
                         ", pattern[0:20]=", Beginning(widths), ", pattern.length=", widths.size()));
  }
  return lines;
}

std::vector<std::string> DescribeStackedDraw14(const Box& box, const StackedRoom& room,
                                               std::span<const float> rowHeights) {
  std::vector<std::string> lines;
  lines.push_back(Line("DEBUG Draw: availableHeight=", room.rows, ", height=", box.height));
  lines.push_back(Line("DEBUG Draw: textHeight=", room.textSize, ", verticalOffset=", room.textGap));
  auto currentY = static_cast<float>(box.y);
  for (std::size_t row = 0; row < rowHeights.size(); ++row) {
    lines.push_back(
        Line("DEBUG Draw: row ", row, ": thisRowHeight=", rowHeights[row], ", currentY=", currentY));
    currentY += rowHeights[row];
  }
  lines.push_back(Line("DEBUG Draw: final currentY=", currentY,
                       ", barcode actual height=", currentY - static_cast<float>(box.y)));
  lines.push_back(Line("DEBUG Draw: About to call RenderText with x=", box.x, ", y=", box.y,
                       ", width=", box.width, ", height=", box.height));
  return lines;
}

}  // namespace barcode
