#include "gs1/gs1_databar_14.h"

#include <limits>
#include <utility>

#include "base/keywords.h"
#include "base/numeric.h"
#include "core/diagnostics.h"
#include "gs1/databar_14_diagnostics.h"
#include "layout/linear_layout.h"
#include "layout/stacked_layout.h"
#include "layout/text_layout.h"

namespace barcode {
namespace {

constexpr Keywords<DataBar14Type, 3> kKeywords = {{
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
    const std::size_t end = rest.find('\n') + 1;
    PrintError(rest.substr(0, end));
    rest.remove_prefix(end);
  }
}

}  // namespace

void GS1DataBar14::SetSymbolType(std::string_view keyword) {
  m_symbolType = FindKeyword(kKeywords, keyword).value_or(m_symbolType);
}

const char* GS1DataBar14::SymbolType() const {
  return kKeywords[static_cast<std::size_t>(m_symbolType)].first.data();
}

bool GS1DataBar14::Encode(const std::string& text) const {
  return Reported(kTag, [&] {
    EncodeSymbol(text);
    return true;
  });
}

DataBar14Symbol GS1DataBar14::EncodeSymbol(const std::string& text) const {
  EncoderLines lines;
  DataBar14Symbol symbol = EncodeDataBar14(text, m_symbolType, lines);
  Report(lines);
  return symbol;
}

std::optional<SymbolDrawing> GS1DataBar14::Layout(const std::string& text, const DrawContext& context) const {
  const DataBar14Symbol symbol = EncodeSymbol(text);
  if (m_symbolType == DataBar14Type::kOmnidirectional) {
    return PlainDrawing(symbol.rows.front().widths, DisplayText(symbol), context);
  }
  return StackedDrawing(symbol, context);
}

SymbolDrawing GS1DataBar14::StackedDrawing(const DataBar14Symbol& symbol, const DrawContext& context) const {
  const LinearOptions options = Options();
  const Box& box = context.box;
  const ElementScale scale = ScaleFor(static_cast<float>(box.width), WidestRow(symbol.rows), options);
  const StackedRoom room = StackedRoom::Of(box.height, options.text.fontScale, options.text.gap);
  const std::vector<float> heights = RowHeights(symbol, room, scale.moduleWidth);
  if (context.grid == PixelGrid::kWhole) {
    EncoderLines lines;
    DescribeStackedDraw14(box, room, heights, lines);
    Report(lines);
  }
  Drawing drawing = LayoutRows(symbol.rows, heights, scale, box);
  AddHumanReadableLine(drawing, DisplayText(symbol), box, ClampToInt(box.width), options.text, context.grid);
  return {std::move(drawing), {}};
}

}  // namespace barcode
