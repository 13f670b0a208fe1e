#include "gs1/gs1_databar_14.h"

#include <array>
#include <limits>
#include <utility>

#include "base/numeric.h"
#include "core/diagnostics.h"
#include "gs1/databar_14_diagnostics.h"

namespace barcode {
namespace {

constexpr std::array<std::pair<const char*, DataBar14Type>, 3> kKeywords = {{
    {"OMNIDIRECTIONAL", DataBar14Type::kOmnidirectional},
    {"STACKED", DataBar14Type::kStacked},
    {"STACKED_OMNIDIRECTIONAL", DataBar14Type::kStackedOmnidirectional},
}};

std::string DisplayText(const DataBar14Symbol& symbol) {
  return "(01)" + symbol.digits;
}

std::vector<float> RowHeights(const DataBar14Symbol& symbol, const StackedRoom& room, float moduleWidth) {
  if (symbol.type == DataBar14Type::kStacked) {
    return ProportionalHeights(symbol.rows, room);
  }
  return SharedHeights(symbol.rows, room, moduleWidth, std::numeric_limits<float>::lowest());
}

// Each line is a write of its own.
void Report(const EncoderLines& lines) {
  std::string_view rest = lines.Text();
  while (!rest.empty()) {
    const std::size_t end = rest.find('\n');
    ErrorLine(rest.substr(0, end));
    rest.remove_prefix(end + 1);
  }
}

}  // namespace

void GS1DataBar14::SetSymbolType(std::string_view keyword) {
  for (const auto& [name, type] : kKeywords) {
    if (keyword == name) {
      m_symbolType = type;
    }
  }
}

const char* GS1DataBar14::SymbolType() const {
  return kKeywords[static_cast<std::size_t>(m_symbolType)].first;
}

bool GS1DataBar14::Encode(const std::string& text) const {
  return Reported(kTag, [&] {
    EncodeSymbol(text);
    return true;
  });
}

bool GS1DataBar14::Draw(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) {
  if (IsSvgOutput()) {
    return DrawSvg(text, x, y, width, height);
  }
  if (m_symbolType == DataBar14Type::kOmnidirectional) {
    return DrawLinear(kTag, x, y, width, height, [&] { return OneRowSymbol(text); });
  }
  return DrawRaster(kTag, x, y, width, height, [&] {
    return StackedDrawing(text, {x, y, width, height}, true);
  });
}

bool GS1DataBar14::DrawSvg(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) {
  if (m_symbolType == DataBar14Type::kOmnidirectional) {
    return DrawLinearSvg(kTag, x, y, width, height, [&] { return OneRowSymbol(text); });
  }
  return DrawVector(kTag, x, y, width, height, [&] {
    return StackedDrawing(text, {x, y, width, height}, false);
  });
}

DataBar14Symbol GS1DataBar14::EncodeSymbol(const std::string& text) const {
  EncoderLines lines;
  DataBar14Symbol symbol = EncodeDataBar14(text, m_symbolType, lines);
  Report(lines);
  return symbol;
}

LinearSymbol GS1DataBar14::OneRowSymbol(const std::string& text) const {
  const DataBar14Symbol symbol = EncodeSymbol(text);
  return {symbol.rows.front().widths, DisplayText(symbol)};
}

DataBarDrawing GS1DataBar14::StackedDrawing(const std::string& text, const Box& box, bool report) const {
  const DataBar14Symbol symbol = EncodeSymbol(text);
  const ElementScale scale = ScaleFor(box.width, WidestRow(symbol.rows));
  const StackedRoom room = StackedRoom::Of(box.height, m_textFontScale, m_textGap);
  const std::vector<float> heights = RowHeights(symbol, room, scale.moduleWidth);
  if (report) {
    EncoderLines lines;
    DescribeStackedDraw14(box, room, heights, lines);
    Report(lines);
  }
  return {LayoutRows(symbol.rows, heights, scale, static_cast<float>(box.x), static_cast<float>(box.y)),
          DisplayText(symbol), ClampToInt(box.width)};
}

}  // namespace barcode
