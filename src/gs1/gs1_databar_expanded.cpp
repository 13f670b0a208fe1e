#include "gs1/gs1_databar_expanded.h"

#include <array>
#include <utility>
#include <vector>

#include "base/numeric.h"
#include "layout/linear_layout.h"
#include "layout/stacked_layout.h"
#include "layout/text_layout.h"

namespace barcode {
namespace {

constexpr std::int32_t kMostPairsPerRow = 10;
constexpr std::size_t kDefaultPairsPerRow = 2;
constexpr float kLeastRowHeight = 1.0F;

}  // namespace

void GS1DataBarExpanded::SetSymbolType(std::string_view keyword) {
  if (keyword == "UNSTACKED") {
    m_stacked = false;
  }
  if (keyword == "STACKED") {
    m_stacked = true;
  }
}

std::size_t GS1DataBarExpanded::PairsPerRow() const {
  if (!m_stacked) {
    return kUnstacked;
  }
  const bool usable = m_pairsPerRow >= 1 && m_pairsPerRow <= kMostPairsPerRow;
  return usable ? static_cast<std::size_t>(m_pairsPerRow) : kDefaultPairsPerRow;
}

std::optional<SymbolDrawing> GS1DataBarExpanded::Layout(const std::string& text,
                                                        const DrawContext& context) const {
  const std::optional<DataBarExpandedSymbol> symbol = EncodeDataBarExpanded(text, PairsPerRow());
  if (!symbol) {
    return std::nullopt;
  }
  return m_stacked ? StackedDrawing(*symbol, context) : OneRowDrawing(*symbol, context);
}

// The module width of the one-row form is never rounded down, whether or not the symbol is to fit the width;
// that of the stacked form is. This is intended.
SymbolDrawing GS1DataBarExpanded::OneRowDrawing(const DataBarExpandedSymbol& symbol,
                                                const DrawContext& context) const {
  LinearOptions options = Options();
  options.fitWidth = true;
  const Box& box = context.box;
  const float barHeight = LayoutBarHeight(box.height, 1, options.text);
  const ElementScale scale = ScaleFor(static_cast<float>(box.width), WidestRow(symbol.rows), options);
  Drawing drawing = LayoutRows(symbol.rows, std::array{barHeight}, scale, box);
  drawing.barHeight = barHeight;
  AddHumanReadableLine(drawing, symbol.humanReadable, box, ClampToInt(box.width), options.text, context.grid);
  return {std::move(drawing), {}};
}

SymbolDrawing GS1DataBarExpanded::StackedDrawing(const DataBarExpandedSymbol& symbol,
                                                 const DrawContext& context) const {
  const LinearOptions options = Options();
  const Box& box = context.box;
  const std::size_t modules = WidestRow(symbol.rows);
  const ElementScale scale = ScaleFor(static_cast<float>(box.width), modules, options);
  const StackedRoom room = StackedRoom::Of(box.height, options.text.fontScale, options.text.gap);
  const std::vector<float> heights = SharedHeights(symbol.rows, room, scale.moduleWidth, kLeastRowHeight);
  Drawing drawing = LayoutRows(symbol.rows, heights, scale, box);
  const int textWidth = TruncToInt(static_cast<float>(modules) * scale.moduleWidth);
  AddHumanReadableLine(drawing, symbol.humanReadable, box, textWidth, options.text, context.grid);
  return {std::move(drawing), {}};
}

}  // namespace barcode
