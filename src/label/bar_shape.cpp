#include "label/bar_shape.h"

#include <algorithm>

namespace barcode::label {
namespace {

BarShape ShapeOf(const std::vector<DotRect>& rects) {
  const auto alike = [&rects](int DotRect::*side) {
    return std::all_of(rects.begin(), rects.end(),
                       [&rects, side](const DotRect& rect) { return rect.*side == rects.front().*side; });
  };
  if (alike(&DotRect::height)) {
    return BarShape::kOneHeight;
  }
  return alike(&DotRect::width) ? BarShape::kOneWidth : BarShape::kMixed;
}

bool ContinuesAcross(const DotRect& rect, const DotRect& next) {
  return next.y == rect.y && next.height == rect.height && next.x == rect.x + rect.width;
}

bool ContinuesDown(const DotRect& rect, const DotRect& next) {
  return next.x == rect.x && next.width == rect.width && next.y == rect.y + rect.height;
}

// Lengthens `rect` by what continues it.
bool Absorb(DotRect& rect, const DotRect& next, BarShape shape) {
  if (shape != BarShape::kOneWidth && ContinuesAcross(rect, next)) {
    rect.width += next.width;
    return true;
  }
  if (shape != BarShape::kOneHeight && ContinuesDown(rect, next)) {
    rect.height += next.height;
    return true;
  }
  return false;
}

}  // namespace

Bars MergedBars(const std::vector<DotRect>& dark) {
  Bars bars{.shape = ShapeOf(dark), .rects = {}};
  bars.rects.reserve(dark.size());
  for (const DotRect& rect : dark) {
    if (bars.rects.empty() || !Absorb(bars.rects.back(), rect, bars.shape)) {
      bars.rects.push_back(rect);
    }
  }
  return bars;
}

}  // namespace barcode::label
