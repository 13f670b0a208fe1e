#pragma once

#include <cstdint>

namespace barcode::label {

// A length in dots that is worked out from millimetres is off by no more than this.
inline constexpr double kDotTolerance = 1e-6;

// A length for each direction, or one for both.
struct Spacing {
  double across = 0;
  double down = 0;

  constexpr Spacing(double both) : across(both), down(both) {}  // NOLINT: a length is one
  constexpr Spacing(double ofColumns, double ofRows) : across(ofColumns), down(ofRows) {}
};

// A page of label paper, in millimetres.
struct SheetGrid {
  double pageWidth = 210;
  double pageHeight = 297;
  int columns = 1;
  int rows = 1;
  Spacing margin = 10;  // left and right of all cells, above and below them
  Spacing gap = 2;      // between columns, between rows
};

// In millimetres from the upper left corner of the page, y downwards.
struct Cell {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;
};

// The number of cells on a page.
std::int64_t CellsOf(const SheetGrid& grid);

// A cell by its number on the page, row by row, from 0. All have the same size, which is not above 0 where
// margin and gaps take all the room.
Cell CellAt(const SheetGrid& grid, std::int64_t number);

// Where in a range an object of whole dots stands: in its middle, to the nearest dot from the start of the
// page, and inside it; exactly in its middle where no whole dot lets it stand inside. All in dots; the object
// is no larger than the range.
double PlaceInRange(double begin, double length, int object);

}  // namespace barcode::label
