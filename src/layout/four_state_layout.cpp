#include "layout/four_state_layout.h"

#include <algorithm>

#include "base/numeric.h"

namespace barcode {
namespace {

struct Extent {
  float top;
  float height;
};

Extent BarExtent(FourState bar, float height) {
  const float twoThirds = 2.0F * height / 3.0F;
  switch (bar) {
    case FourState::kLong:
      return {0.0F, height};
    case FourState::kUpperSemiLong:
      return {0.0F, twoThirds};
    case FourState::kLowerSemiLong:
      return {height - twoThirds, twoThirds};
    case FourState::kTiming:
      break;
  }
  return {height - twoThirds, height / 3.0F};
}

float Pitch(float height) {
  return height / 3.0F;
}

}  // namespace

int FourStateImageWidth(float height) {
  return TruncToInt(height / 6.0F + Pitch(height) * 67.0F + 1.0F);
}

Drawing LayoutFourState(std::span<const FourState> bars, const Box& box, std::int32_t pxAdjustBlack) {
  const auto height = static_cast<float>(box.height);
  const auto top = static_cast<float>(box.y);
  const float width = std::max(1.0F, height / 6.0F + static_cast<float>(pxAdjustBlack));
  Drawing drawing;
  drawing.barHeight = height;
  drawing.bars.reserve(bars.size());
  auto pen = static_cast<float>(box.x);
  for (const FourState bar : bars) {
    const Extent extent = BarExtent(bar, height);
    drawing.bars.push_back({pen, top + extent.top, width, extent.height});
    pen += Pitch(height);
  }
  drawing.drawnWidth = pen - static_cast<float>(box.x);
  return drawing;
}

}  // namespace barcode
