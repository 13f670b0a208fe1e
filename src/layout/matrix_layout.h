#pragma once

#include <cstdint>
#include <vector>

#include "base/module_matrix.h"
#include "layout/drawing.h"

namespace barcode {

// Geometry of two-dimensional symbols, in pixels, for the raster and the SVG draw alike: the size of a
// module, the edges between modules, the rectangles of the dark ones.

struct ModuleSize {
  double width = 1.0;
  double height = 1.0;
};

// Modules that fill the box, width and height each on their own: fractions when the symbol is to fit the
// width, else whole pixels, at least 1. 1 x 1 for a symbol without modules.
ModuleSize StretchedModules(std::uint32_t width, std::uint32_t height, int columns, int rows, bool fitWidth);

// Square modules, as large as the box allows: a fraction when the symbol is to fit the width, else whole
// pixels, which may be 0. 1 x 1 for a symbol without modules.
ModuleSize SquareModules(std::uint32_t width, std::uint32_t height, int columns, int rows, bool fitWidth);

// Edges of the modules: x[i] is the left edge of column i and the right edge of column i - 1, likewise y.
struct ModuleGrid {
  std::vector<double> x;
  std::vector<double> y;
};

// From (x, y), each edge rounded to whole pixels, half away from zero.
ModuleGrid RoundedGrid(const ModuleSize& module, int columns, int rows, int x, int y);

// From (0, 0), not rounded.
ModuleGrid ExactGrid(const ModuleSize& module, int columns, int rows);

// A box of width x height at (0, 0) divided evenly, not rounded.
ModuleGrid DividedGrid(double width, double height, int columns, int rows);

struct ModuleRect {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;

  bool operator==(const ModuleRect&) const = default;
};

// Which rectangles are left out because their width or height is not positive.
enum class SkipModules {
  kNone,
  kEmptyCell,  // judged before the adjustment
  kEmptyRect,  // judged after it
};

// What is drawn of a dark module: its cell, `adjust` pixels added to width and height.
struct ModuleRule {
  double adjust = 0;
  SkipModules skip = SkipModules::kNone;
};

// A symbol in its picture of width x height pixels: where its modules stand and what is drawn of them.
struct MatrixDrawing {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  ModuleSize module;
  ModuleGrid grid;
  ModuleRule rule;
};

// A symbol whose modules fill the box: whole pixels have rounded edges, fractions exact ones.
MatrixDrawing LayoutStretched(const ModuleMatrix& matrix, std::uint32_t width, std::uint32_t height,
                              bool fitWidth, PixelGrid grid, const ModuleRule& rule);

// The rectangles of the dark modules, row by row: visit(ModuleRect).
template <class Visit>
void LayoutModules(const ModuleMatrix& matrix, const ModuleGrid& grid, const ModuleRule& rule, Visit visit);

// The same area as LayoutModules covers with SkipModules::kEmptyRect, in fewer rectangles where that is
// possible: neighbours in a row that touch or overlap become one.
template <class Visit>
void LayoutDarkArea(const ModuleMatrix& matrix, const ModuleGrid& grid, double adjust, Visit visit);

namespace detail {

// The rectangle of the modules firstColumn .. lastColumn of a row.
inline ModuleRect ModulesRect(const ModuleGrid& grid, int firstColumn, int lastColumn, int row,
                              double adjust) {
  const auto x = static_cast<std::size_t>(firstColumn);
  const auto end = static_cast<std::size_t>(lastColumn) + 1;
  const auto y = static_cast<std::size_t>(row);
  return {grid.x[x], grid.y[y], grid.x[end] - grid.x[x] + adjust, grid.y[y + 1] - grid.y[y] + adjust};
}

inline bool IsEmpty(const ModuleRect& rect) {
  return !(rect.width > 0 && rect.height > 0);
}

}  // namespace detail

template <class Visit>
void LayoutModules(const ModuleMatrix& matrix, const ModuleGrid& grid, const ModuleRule& rule, Visit visit) {
  for (int row = 0; row < matrix.Rows(); ++row) {
    for (int column = 0; column < matrix.Columns(); ++column) {
      if (!matrix.At(column, row)) {
        continue;
      }
      const ModuleRect rect = detail::ModulesRect(grid, column, column, row, rule.adjust);
      const double judged = rule.skip == SkipModules::kEmptyCell ? 0.0 : rule.adjust;
      const bool isEmpty = detail::IsEmpty(detail::ModulesRect(grid, column, column, row, judged));
      if (rule.skip == SkipModules::kNone || !isEmpty) {
        visit(rect);
      }
    }
  }
}

template <class Visit>
void LayoutDarkArea(const ModuleMatrix& matrix, const ModuleGrid& grid, double adjust, Visit visit) {
  // A negative adjustment opens gaps between neighbours.
  if (adjust < 0) {
    LayoutModules(matrix, grid, {adjust, SkipModules::kEmptyRect}, visit);
    return;
  }
  for (int row = 0; row < matrix.Rows(); ++row) {
    for (int column = 0; column < matrix.Columns(); ++column) {
      if (!matrix.At(column, row)) {
        continue;
      }
      const int first = column;
      while (column + 1 < matrix.Columns() && matrix.At(column + 1, row)) {
        ++column;
      }
      const ModuleRect rect = detail::ModulesRect(grid, first, column, row, adjust);
      if (!detail::IsEmpty(rect)) {
        visit(rect);
      }
    }
  }
}

}  // namespace barcode
