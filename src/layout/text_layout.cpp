#include "layout/text_layout.h"

#include <algorithm>
#include <utility>

#include "text/text_bands.h"

namespace barcode {

float LayoutBarHeight(std::uint32_t height, int lines, const TextOptions& options) {
  constexpr int kMinGap = 2;
  auto barHeight = static_cast<float>(height);
  if (options.show) {
    const std::int64_t textRows = lines == 1 ? 1 : std::int64_t{lines} + 2;
    const std::int64_t gap = std::max(ScaledTextGap(height, kTextGapBands, options.gap), kMinGap);
    barHeight = static_cast<float>(height - textRows * TextSize(height, options.fontScale) - gap);
  }
  return std::max(barHeight, 1.0F);
}

TextRun LayoutTextLine(std::string text, int x, std::int64_t width, int size, const TextBox& box,
                       const TextOptions& options, PixelGrid grid) {
  TextRun run;
  run.text = std::move(text);
  run.size = size;
  run.box = box;
  if (options.evenSpacing) {
    run.spacing = EvenSpacing::Across(x, width, run.text.size(), size, options.marginScale);
  } else if (grid == PixelGrid::kWhole) {
    run.anchor = TextAnchor::kWithin;
    run.x = x;
    run.width = static_cast<double>(width);
  } else {
    run.anchor = TextAnchor::kMiddle;
    const std::int64_t middle = x + width / 2;  // in whole pixels
    run.x = static_cast<double>(middle);
  }
  return run;
}

void AddHumanReadableLine(Drawing& drawing, std::string text, const Box& box, std::int64_t barsWidth,
                          const TextOptions& options, PixelGrid grid) {
  if (!options.show || text.empty()) {
    return;
  }
  const int size = TextSize(box.height, options.fontScale);
  const std::int64_t bottom = std::int64_t{box.y} + box.height;
  TextBox room{.top = static_cast<double>(bottom - size)};
  if (grid == PixelGrid::kWhole) {
    room.bottom = static_cast<double>(bottom);
  }
  drawing.texts.push_back(LayoutTextLine(std::move(text), box.x, barsWidth, size, room, options, grid));
}

}  // namespace barcode
