#include "pdf417/layout.h"

#include <algorithm>
#include <cmath>

namespace barcode::pdf417 {
namespace {

// Above this number of columns a full symbol is nearer in shape to 29 x 32 than to 16 x 58: the geometric
// mean of 16 and 29 columns is 21.5.
constexpr int kMaxColumnsOfTallFullGrid = 21;

int CeilDiv(int dividend, int divisor) {
  return (dividend - 1) / divisor + 1;
}

// The highest level up to `level` whose codewords fit into `room`; room is at least 2.
int CapErrorLevel(int level, int room) {
  while (level > 0 && ErrorCodewords(level) > room) {
    --level;
  }
  return level;
}

int AutomaticErrorLevel(int dataLength) {
  if (dataLength < 41) {
    return 2;
  }
  if (dataLength < 161) {
    return 3;
  }
  if (dataLength < 321) {
    return 4;
  }
  return 5;
}

// Columns of a symbol of about the wanted ratio: a column is 17 modules wide beside 73 - 4 modules of frame,
// a row yHeight modules high.
int ColumnsForAspectRatio(int total, const Options& options) {
  // Written so that a ratio that is not a number becomes the smallest.
  const double ratio = options.aspectRatio > kMinAspectRatio ? std::min(options.aspectRatio, kMaxAspectRatio)
                                                             : kMinAspectRatio;
  const double b = 73.0 * ratio - 4.0;
  const double root = std::sqrt(68.0 * ratio * total * options.RowHeight() + b * b);
  const double columns = std::trunc((root - b) / (34.0 * ratio) + 0.5);
  return static_cast<int>(std::clamp(columns, 1.0, static_cast<double>(kMaxColumns)));
}

struct Grid {
  int columns = 0;
  int rows = 0;
};

Grid RowsForColumns(int total, int columns) {
  const int rows = std::max(CeilDiv(total, columns), kMinRows);
  return rows <= kMaxRows ? Grid{columns, rows} : Grid{CeilDiv(total, kMaxRows), kMaxRows};
}

// Two grids hold exactly the largest number of codewords. A grid beyond it becomes the one nearer in shape.
Grid ReduceToCapacity(Grid grid) {
  if (grid.columns * grid.rows <= kMaxCodewords) {
    return grid;
  }
  return grid.columns <= kMaxColumnsOfTallFullGrid ? Grid{16, 58} : Grid{29, 32};
}

}  // namespace

Layout ChooseLayout(int dataLength, const Options& options) {
  const int level = CapErrorLevel(AutomaticErrorLevel(dataLength), kMaxCodewords - dataLength);
  const int total = dataLength + ErrorCodewords(level);
  const Grid grid = ReduceToCapacity(RowsForColumns(total, ColumnsForAspectRatio(total, options)));
  // Error correction rather than padding fills what the grid leaves over.
  const int room = grid.columns * grid.rows - dataLength;
  return {grid.columns, grid.rows, CapErrorLevel(kMaxErrorLevel, room)};
}

}  // namespace barcode::pdf417
