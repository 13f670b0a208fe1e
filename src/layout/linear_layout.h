#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>

#include "base/geometry.h"
#include "base/run_vector.h"

namespace barcode {

inline std::uint64_t TotalModules(const RunVector& pattern) {
  return std::accumulate(pattern.begin(), pattern.end(), std::uint64_t{0});
}

// Pixels per module: the box's width divided by the modules, rounded down to whole pixels and at least 1
// unless the symbol is to fit the width.
inline float ModuleWidth(float width, std::uint64_t modules, bool fitWidth) {
  const float moduleWidth = width / static_cast<float>(modules);
  return fitWidth ? moduleWidth : std::max(1.0F, std::floor(moduleWidth));
}

// Which widths of an element are raised to a pixel: the nominal one and then the adjusted one, or the
// adjusted one alone.
enum class ElementMinimum : std::uint8_t { kNominalThenAdjusted, kAdjusted };

// How modules become pixels: the module width and what is added to every bar and space.
struct ElementScale {
  float moduleWidth = 1.0F;
  std::int32_t adjustBlack = 0;
  std::int32_t adjustWhite = 0;
  ElementMinimum minimum = ElementMinimum::kNominalThenAdjusted;

  // Drawn width of an element.
  float ElementWidth(std::uint32_t modules, bool isBar) const {
    float width = static_cast<float>(modules) * moduleWidth;
    if (minimum == ElementMinimum::kNominalThenAdjusted) {
      width = std::max(1.0F, width);
    }
    return std::max(1.0F, width + static_cast<float>(isBar ? adjustBlack : adjustWhite));
  }
};

// Walks the elements from x: visit(index, isBar, left, width) for each, bar first. An element of no modules
// takes no room and is not visited. Returns the pen after the last.
template <class Visit>
float WalkElements(const RunVector& pattern, const ElementScale& scale, float x, Visit visit) {
  float pen = x;
  bool isBar = true;
  for (std::size_t index = 0; index < pattern.size(); ++index, isBar = !isBar) {
    if (pattern[index] == 0) {
      continue;
    }
    const float width = scale.ElementWidth(pattern[index], isBar);
    visit(index, isBar, pen, width);
    pen += width;
  }
  return pen;
}

// The plain linear layout: bars of one height. drawBar(RectF) for each bar; returns the drawn width, pen - x.
template <class DrawBar>
float LayoutBars(const RunVector& pattern, const ElementScale& scale, float x, float y, float barHeight,
                 DrawBar drawBar) {
  const float pen = WalkElements(pattern, scale, x, [&](std::size_t, bool isBar, float left, float width) {
    if (isBar) {
      drawBar(RectF{left, y, width, barHeight});
    }
  });
  return pen - x;
}

}  // namespace barcode
