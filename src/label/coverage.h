#pragma once

#include <cstdint>
#include <vector>

#include "label/font.h"

namespace barcode::label {

// Where an outline stands: its origin in dots, and the dots of a unit.
struct OutlinePlace {
  double x = 0;
  double y = 0;
  double scale = 1;
};

// Whole dots.
struct DotBox {
  int left = 0;
  int top = 0;
  int right = 0;  // behind the last
  int bottom = 0;
};

// The dots that an outline touches; y downwards. The outline is not empty.
DotBox BoundsOf(const Outline& outline, const OutlinePlace& place);

// How much of each dot in `box` the outline covers, row by row: 0 none to kFullCoverage all. What lies
// outside of the box is left away. Exact to the rounding, without hints, and the same on every machine.
inline constexpr int kFullCoverage = 15;
std::vector<std::uint8_t> CoverageOf(const Outline& outline, const OutlinePlace& place, const DotBox& box);

}  // namespace barcode::label
