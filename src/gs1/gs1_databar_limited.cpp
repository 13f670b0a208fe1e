#include "gs1/gs1_databar_limited.h"

#include <array>

#include "base/numeric.h"
#include "gs1/databar_limited_encoder.h"
#include "gs1/databar_rows.h"

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
  const std::array<DataBarRow, 1> row = {{{BehindEmptyBar(symbol.elements), kSharedHeight}}};
  BarLayout layout = LayoutRows(row, std::array{m_barHeight}, ScaleFor(width, kDataBarLimitedModules),
                                static_cast<float>(x), static_cast<float>(y));
  const int drawnWidth = TruncToInt(layout.drawnWidth);
  return {std::move(layout), "(01)" + symbol.digits, drawnWidth};
}

}  // namespace barcode
