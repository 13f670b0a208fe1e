#include "gs1/gs1_databar_expanded.h"

#include <array>

#include "base/numeric.h"

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

bool GS1DataBarExpanded::Draw(const std::string& text, int x, int y, std::uint32_t width,
                              std::uint32_t height) {
  if (IsSvgOutput()) {
    return DrawSvg(text, x, y, width, height);
  }
  return DrawRaster(kTag, x, y, width, height, [&] { return Drawing(text, x, y, width, height); });
}

bool GS1DataBarExpanded::DrawSvg(const std::string& text, int x, int y, std::uint32_t width,
                                 std::uint32_t height) {
  return DrawVector(kTag, x, y, width, height, [&] { return Drawing(text, x, y, width, height); });
}

std::size_t GS1DataBarExpanded::PairsPerRow() const {
  if (!m_stacked) {
    return kUnstacked;
  }
  const bool usable = m_pairsPerRow >= 1 && m_pairsPerRow <= kMostPairsPerRow;
  return usable ? static_cast<std::size_t>(m_pairsPerRow) : kDefaultPairsPerRow;
}

std::optional<DataBarDrawing> GS1DataBarExpanded::Drawing(const std::string& text, int x, int y,
                                                          std::uint32_t width, std::uint32_t height) {
  const std::optional<DataBarExpandedSymbol> symbol = EncodeDataBarExpanded(text, PairsPerRow());
  if (!symbol) {
    return std::nullopt;
  }
  LayoutBarHeight(width, height, m_stacked ? static_cast<int>(symbol->rows.size()) : 1);
  return m_stacked ? StackedDrawing(*symbol, x, y, width, height) : OneRowDrawing(*symbol, x, y, width);
}

// The module width of the one-row form is never rounded down, whether or not the symbol is to fit the width;
// that of the stacked form is. This is intended.
DataBarDrawing GS1DataBarExpanded::OneRowDrawing(const DataBarExpandedSymbol& symbol, int x, int y,
                                                 std::uint32_t width) {
  constexpr bool kFractional = true;
  const ElementScale scale{ModuleWidth(static_cast<float>(width), WidestRow(symbol.rows), kFractional),
                           m_pxAdjustBlack, m_pxAdjustWhite};
  return {
      LayoutRows(symbol.rows, std::array{m_barHeight}, scale, static_cast<float>(x), static_cast<float>(y)),
      symbol.humanReadable, ClampToInt(width)};
}

DataBarDrawing GS1DataBarExpanded::StackedDrawing(const DataBarExpandedSymbol& symbol, int x, int y,
                                                  std::uint32_t width, std::uint32_t height) const {
  const std::size_t modules = WidestRow(symbol.rows);
  const ElementScale scale = ScaleFor(width, modules);
  const StackedRoom room = StackedRoom::Of(height, m_textFontScale, m_textGap);
  const std::vector<float> heights = SharedHeights(symbol.rows, room, scale.moduleWidth, kLeastRowHeight);
  return {LayoutRows(symbol.rows, heights, scale, static_cast<float>(x), static_cast<float>(y)),
          symbol.humanReadable, TruncToInt(static_cast<float>(modules) * scale.moduleWidth)};
}

}  // namespace barcode
