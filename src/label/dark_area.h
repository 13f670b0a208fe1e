#pragma once

#include <cstdint>
#include <vector>

#include "base/module_matrix.h"
#include "base/run_vector.h"
#include "label/drawing.h"

// Bars and modules as rectangles in whole dots. `adjust`: dots that every bar, or every dark module, gains on
// the far side, taken from the light that follows it, or loses there. The pitch stays; no dark and no light
// becomes narrower than one dot.
namespace barcode::label {

// One bar of a row, in modules.
struct Bar {
  std::int64_t start = 0;
  std::int64_t modules = 0;
  std::size_t run = 0;  // its place in the run vector

  bool operator==(const Bar&) const = default;
};

// The bars of a row; parts of one bar with an element of no modules between them are one.
std::vector<Bar> BarsOf(const RunVector& pattern);

// Where a row stands: its top-left corner and its height in dots, and the right edge of the light behind it.
struct RowPlace {
  int x = 0;
  int y = 0;
  int height = 0;
  int lightEnd = 0;
};

void AddBars(std::vector<DotRect>& dark, const std::vector<Bar>& bars, int module, int adjust,
             const RowPlace& place);

// The dark modules of a matrix of cells of width x height dots from (x, y), runs in one piece.
void AddMatrix(std::vector<DotRect>& dark, const ModuleMatrix& matrix, int x, int y, int cellWidth,
               int cellHeight, int adjust);

}  // namespace barcode::label
