#include "gs1/gs1_databar_14.h"

#include <array>
#include <limits>
#include <utility>

#include "base/numeric.h"
#include "core/diagnostics.h"
#include "gs1/databar_14_diagnostics.h"
#include "layout/linear_layout.h"
#include "layout/stacked_layout.h"
#include "layout/text_layout.h"

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

void Report(const std::vector<std::string>& lines) {
  for (const std::string& line : lines) {
    ErrorLine(line);
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

DataBar14Symbol GS1DataBar14::EncodeSymbol(const std::string& text) const {
  DataBar14Symbol symbol = EncodeDataBar14(text, m_symbolType);
  Report(DescribeDataBar14(symbol));
  return symbol;
}

// The one-row form is drawn bar first. The standard begins with a space: what is drawn is its symbol with the
// colours exchanged. This is intended; the stacked forms have the standard's colours.
std::optional<SymbolDrawing> GS1DataBar14::Layout(const std::string& text, const DrawContext& context) const {
  const DataBar14Symbol symbol = EncodeSymbol(text);
  if (m_symbolType == DataBar14Type::kOmnidirectional) {
    return PlainDrawing(RunVector(symbol.elements.begin(), symbol.elements.end()), DisplayText(symbol),
                        context);
  }
  return StackedDrawing(symbol, context);
}

SymbolDrawing GS1DataBar14::StackedDrawing(const DataBar14Symbol& symbol, const DrawContext& context) const {
  const LinearOptions options = Options();
  const Box& box = context.box;
  const ElementScale scale =
      ScaleFor(static_cast<float>(box.width), WidestRow(symbol.rows), options, ElementMinimum::kAdjusted);
  const StackedRoom room = StackedRoom::Of(box.height, options.text.fontScale, options.text.gap);
  const std::vector<float> heights = RowHeights(symbol, room, scale.moduleWidth);
  if (context.grid == PixelGrid::kWhole) {
    Report(DescribeStackedDraw14(box, room, heights));
  }
  Drawing drawing = LayoutRows(symbol.rows, heights, scale, box);
  AddHumanReadableLine(drawing, DisplayText(symbol), box, ClampToInt(box.width), options.text, context.grid);
  return {std::move(drawing), {}};
}

}  // namespace barcode
