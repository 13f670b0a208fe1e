#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <string>

#include "base/geometry.h"
#include "base/run_vector.h"
#include "layout/drawing.h"
#include "layout/linear_options.h"

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

// When the width of an element is raised to one pixel: before and after the adjustment, or only after it.
enum class ElementMinimum : std::uint8_t { kNominalAndAdjusted, kAdjusted };

// How modules become pixels: the module width and what is added to every bar and space.
struct ElementScale {
  float moduleWidth = 1.0F;
  std::int32_t adjustBlack = 0;
  std::int32_t adjustWhite = 0;
  ElementMinimum minimum = ElementMinimum::kNominalAndAdjusted;

  // Drawn width of an element.
  float ElementWidth(std::uint32_t modules, bool isBar) const {
    float nominal = static_cast<float>(modules) * moduleWidth;
    if (minimum == ElementMinimum::kNominalAndAdjusted) {
      nominal = std::max(1.0F, nominal);
    }
    return std::max(1.0F, nominal + static_cast<float>(isBar ? adjustBlack : adjustWhite));
  }
};

// The scale of a symbol of so many modules in `width` pixels.
inline ElementScale ScaleFor(float width, std::uint64_t modules, const LinearOptions& options) {
  return {ModuleWidth(width, modules, options.fitWidth), options.pxAdjustBlack, options.pxAdjustWhite};
}

// Walks the elements from x, bar and space in turn, bar first: visit(index, isBar, left, width) for each but
// those of zero modules, which are not there. Returns the pen after the last.
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

// Adds the bars of one row, all of the height of `row`, from its top-left corner; returns the drawn width.
float AddBars(Drawing& drawing, const RunVector& pattern, const ElementScale& scale, const RectF& row);

// The plain linear layout: bars of one height above one line of text.
Drawing LayoutLinear(const RunVector& pattern, std::string displayText, const Box& box,
                     const LinearOptions& options, PixelGrid grid);

}  // namespace barcode
