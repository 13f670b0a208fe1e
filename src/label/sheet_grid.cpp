#include "label/sheet_grid.h"

#include <cmath>
#include <initializer_list>

namespace barcode::label {

std::int64_t CellsOf(const SheetGrid& grid) {
  return std::int64_t{grid.columns} * grid.rows;
}

Cell CellAt(const SheetGrid& grid, std::int64_t number) {
  const std::int64_t column = number % grid.columns;
  const std::int64_t row = number / grid.columns;
  Cell cell;
  const auto length = [](double page, double margin, double gap, int count) {
    return (page - 2 * margin - (count - 1) * gap) / count;
  };
  cell.width = length(grid.pageWidth, grid.margin.across, grid.gap.across, grid.columns);
  cell.height = length(grid.pageHeight, grid.margin.down, grid.gap.down, grid.rows);
  cell.x = grid.margin.across + static_cast<double>(column) * (cell.width + grid.gap.across);
  cell.y = grid.margin.down + static_cast<double>(row) * (cell.height + grid.gap.down);
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
