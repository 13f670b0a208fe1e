#include "layout/linear_layout.h"

#include <utility>

#include "base/numeric.h"
#include "layout/text_layout.h"

namespace barcode {

float AddBars(Drawing& drawing, const RunVector& pattern, const ElementScale& scale, const RectF& row) {
  if (drawing.bars.empty()) {
    drawing.bars.reserve((pattern.size() + 1) / 2);
  }
  const float pen =
      WalkElements(pattern, scale, row.x, [&](std::size_t, bool isBar, float left, float width) {
        if (isBar) {
          drawing.bars.push_back({left, row.y, width, row.height});
        }
      });
  return pen - row.x;
}

Drawing LayoutLinear(const RunVector& pattern, std::string displayText, const Box& box,
                     const LinearOptions& options, PixelGrid grid) {
  Drawing drawing;
  drawing.barHeight = LayoutBarHeight(box.height, 1, options.text);
  drawing.drawnWidth =
      AddBars(drawing, pattern, ScaleFor(static_cast<float>(box.width), TotalModules(pattern), options),
              {static_cast<float>(box.x), static_cast<float>(box.y), 0, drawing.barHeight});
  AddHumanReadableLine(drawing, std::move(displayText), box, TruncToInt(drawing.drawnWidth), options.text,
                       grid);
  return drawing;
}

}  // namespace barcode
