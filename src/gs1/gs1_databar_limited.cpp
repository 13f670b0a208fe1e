#include "gs1/gs1_databar_limited.h"

#include <array>
#include <optional>

#include "base/numeric.h"
#include "gs1/databar_limited_encoder.h"

namespace barcode {

bool GS1DataBarLimited::Draw(const std::string& text, int x, int y, std::uint32_t width,
                             std::uint32_t height) {
  if (IsSvgOutput()) {
    return DrawSvg(text, x, y, width, height);
  }
  return DrawRaster(kTag, x, y, width, height, [&] { return Drawing(text, x, y, width, height); });
}

bool GS1DataBarLimited::DrawSvg(const std::string& text, int x, int y, std::uint32_t width,
                                std::uint32_t height) {
  return DrawVector(kTag, x, y, width, height, [&] { return Drawing(text, x, y, width, height); });
}

DataBarDrawing GS1DataBarLimited::Drawing(const std::string& text, int x, int y, std::uint32_t width,
                                          std::uint32_t height) {
  LayoutBarHeight(width, height, 1);
  const DataBarLimitedSymbol symbol = EncodeDataBarLimited(text);
  const std::array<StackedRow, 1> row = {{{symbol.widths, std::nullopt}}};
  BarLayout layout = LayoutRows(row, std::array{m_barHeight}, ScaleFor(width, WidestRow(row)),
                                static_cast<float>(x), static_cast<float>(y));
  const int drawnWidth = TruncToInt(layout.drawnWidth);
  return {std::move(layout), "(01)" + symbol.digits, drawnWidth};
}

}  // namespace barcode
