#include "gs1/databar_14_diagnostics.h"

#include <algorithm>
#include <string>

namespace barcode {
namespace {

constexpr std::size_t kShown = 20;
constexpr int kShownSharedHeight = -1;

// The first modules of a row, '1' for a dark one.
std::string FirstModules(const RunVector& widths) {
  std::string modules;
  bool dark = true;
  for (const std::uint32_t width : widths) {
    modules.append(std::min<std::size_t>(width, kShown - modules.size()), dark ? '1' : '0');
    dark = !dark;
  }
  return modules;
}

// The first widths of a row, a digit for each.
std::string FirstWidths(const RunVector& widths) {
  std::string digits;
  for (const std::uint32_t width : std::span(widths).first(std::min(kShown, widths.size()))) {
    digits += static_cast<char>('0' + width);
  }
  return digits;
}

}  // namespace

void DescribeDataBar14(const DataBar14Symbol& symbol, EncoderLines& lines) {
  if (symbol.type != DataBar14Type::kOmnidirectional) {
    for (std::size_t row = 0; row < symbol.rows.size(); ++row) {
      lines.Add("DEBUG encode: row ", row, " bin[0:20]=", FirstModules(symbol.rows[row].widths));
    }
  }
  lines.Add("DEBUG DataBar14: m_rowCount=", symbol.rows.size());
  lines.Add("DEBUG DataBar14: m_symbolType=", static_cast<int>(symbol.type));
  for (std::size_t row = 0; row < symbol.rows.size(); ++row) {
    const auto& [widths, height] = symbol.rows[row];
    lines.Add("DEBUG DataBar14: row ", row, ": height=", height.value_or(kShownSharedHeight),
              ", pattern[0:20]=", FirstWidths(widths), ", pattern.length=", widths.size());
  }
}

void DescribeStackedDraw14(const Box& box, const StackedRoom& room, std::span<const float> rowHeights,
                           EncoderLines& lines) {
  lines.Add("DEBUG Draw: availableHeight=", room.rows, ", height=", box.height);
  lines.Add("DEBUG Draw: textHeight=", room.textSize, ", verticalOffset=", room.textGap);
  auto currentY = static_cast<float>(box.y);
  for (std::size_t row = 0; row < rowHeights.size(); ++row) {
    lines.Add("DEBUG Draw: row ", row, ": thisRowHeight=", rowHeights[row], ", currentY=", currentY);
    currentY += rowHeights[row];
  }
  lines.Add("DEBUG Draw: final currentY=", currentY,
            ", barcode actual height=", currentY - static_cast<float>(box.y));
  lines.Add("DEBUG Draw: About to call RenderText with x=", box.x, ", y=", box.y, ", width=", box.width,
            ", height=", box.height);
}

}  // namespace barcode
