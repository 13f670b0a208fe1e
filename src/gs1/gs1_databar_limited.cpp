#include "gs1/gs1_databar_limited.h"

#include <array>
#include <utility>

#include "base/numeric.h"
#include "gs1/databar_limited_encoder.h"
#include "layout/linear_layout.h"
#include "layout/stacked_layout.h"
#include "layout/text_layout.h"

namespace barcode {

std::optional<SymbolDrawing> GS1DataBarLimited::Layout(const std::string& text,
                                                       const DrawContext& context) const {
  const DataBarLimitedSymbol symbol = EncodeDataBarLimited(text);
  const LinearOptions options = Options();
  const Box& box = context.box;
  const float barHeight = LayoutBarHeight(box.height, 1, options.text);
  const std::array<StackedRow, 1> row = {{{symbol.widths, std::nullopt}}};
  Drawing drawing =
      LayoutRows(row, std::array{barHeight},
                 ScaleFor(static_cast<float>(box.width), TotalModules(symbol.widths), options), box);
  drawing.barHeight = barHeight;
  AddHumanReadableLine(drawing, "(01)" + symbol.digits, box, TruncToInt(drawing.drawnWidth), options.text,
                       context.grid);
  return SymbolDrawing{std::move(drawing), {}};
}

}  // namespace barcode
