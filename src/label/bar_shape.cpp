#include "label/bar_shape.h"

#include <algorithm>
#include <span>

namespace barcode::label {
namespace {

BarShape ShapeOf(const std::vector<DotRect>& rects) {
  const DotRect& first = rects.front();
  bool oneHeight = true;
  bool oneWidth = true;
  for (const DotRect& rect : rects) {
    oneHeight = oneHeight && rect.height == first.height;
    oneWidth = oneWidth && rect.width == first.width;
  }
  if (oneHeight) {
    return BarShape::kOneHeight;
  }
  return oneWidth ? BarShape::kOneWidth : BarShape::kMixed;
}

bool ContinuesAcross(const DotRect& rect, const DotRect& next) {
  return next.x == rect.x + rect.width && next.y == rect.y && next.height == rect.height;
}

bool ContinuesDown(const DotRect& rect, const DotRect& next) {
  return next.y == rect.y + rect.height && next.x == rect.x && next.width == rect.width;
}

bool Continues(const DotRect& rect, const DotRect& next, BarShape shape) {
  return (shape != BarShape::kOneWidth && ContinuesAcross(rect, next)) ||
         (shape != BarShape::kOneHeight && ContinuesDown(rect, next));
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
  const BarShape shape = ShapeOf(dark);
  const auto continued = std::adjacent_find(
      dark.begin(), dark.end(),
      [shape](const DotRect& rect, const DotRect& next) { return Continues(rect, next, shape); });
  if (continued == dark.end()) {
    return {.shape = shape, .rects = dark};
  }
  Bars bars{.shape = shape, .rects = {dark.begin(), continued}};
  bars.rects.reserve(dark.size());
  for (const DotRect& rect : std::span(continued, dark.end())) {
    if (bars.rects.empty() || !Absorb(bars.rects.back(), rect, shape)) {
      bars.rects.push_back(rect);
    }
  }
  return bars;
}

}  // namespace barcode::label
