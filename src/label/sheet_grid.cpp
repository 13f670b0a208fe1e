#include "label/sheet_grid.h"

#include <cmath>
#include <initializer_list>

namespace barcode::label {

std::int64_t CellsOf(const SheetGrid& grid) {
  return std::int64_t{grid.columns} * grid.rows;
}

Cell CellAt(const SheetGrid& grid, std::int64_t number) {
  const auto column = static_cast<double>(number % grid.columns);
  const auto row = static_cast<double>(number / grid.columns);
  Cell cell;
  cell.width = (grid.pageWidth - 2 * grid.margin - (grid.columns - 1) * grid.gap) / grid.columns;
  cell.height = (grid.pageHeight - 2 * grid.margin - (grid.rows - 1) * grid.gap) / grid.rows;
  cell.x = grid.margin + column * (cell.width + grid.gap);
  cell.y = grid.margin + row * (cell.height + grid.gap);
  return cell;
}

double PlaceInRange(double begin, double length, int object) {
  const double middle = begin + (length - object) / 2;
  const double lowest = begin - kDotTolerance;
  const double highest = begin + length - object + kDotTolerance;
  for (const double place : {std::round(middle), std::ceil(lowest), std::floor(highest)}) {
    if (place >= lowest && place <= highest) {
      return place;
    }
  }
  return middle;
}

}  // namespace barcode::label
