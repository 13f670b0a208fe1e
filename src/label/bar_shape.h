#pragma once

#include <cstdint>
#include <vector>

#include "label/drawing.h"

namespace barcode::label {

// How the dark rectangles of a drawing are alike.
enum class BarShape : std::uint8_t {
  kOneHeight,  // all have the same height
  kOneWidth,   // else, all have the same width
  kMixed,
};

// The dark rectangles for vector formats: neighbours that follow one another are one, along the direction in
// which they are alike.
struct Bars {
  BarShape shape = BarShape::kMixed;
  std::vector<DotRect> rects;
};

Bars MergedBars(const std::vector<DotRect>& dark);

}  // namespace barcode::label
