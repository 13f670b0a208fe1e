#include "pdf417/pdf417_layout.h"

#include <algorithm>
#include <cmath>

namespace barcode {
namespace {

constexpr int kMaxErrorLevel = 8;
constexpr int kMaxColumns = 30;
constexpr int kMinRows = 3;
constexpr int kMaxRows = 90;

// Above this number of columns a full symbol is nearer in shape to 29 x 32 than to 16 x 58: the geometric
// mean of 16 and 29 columns is 21.5.
constexpr int kMaxColumnsOfTallFullGrid = 21;

int CeilDiv(int dividend, int divisor) {
  return (dividend - 1) / divisor + 1;
}

// The highest level up to `level` whose codewords fit into `room`; room is at least 2.
int CapErrorLevel(int level, int room) {
  while (level > 0 && PDF417ErrorCodewords(level) > room) {
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

int InitialErrorLevel(int dataLength, const PDF417Options& options) {
  const int level = options.useAutoErrorLevel ? AutomaticErrorLevel(dataLength)
                                              : std::clamp(options.errorLevel, 0, kMaxErrorLevel);
  return CapErrorLevel(level, kPDF417MaxCodewords - dataLength);
}

// Columns of a symbol of about the wanted ratio: a column is 17 modules wide beside 73 - 4 modules of frame,
// a row yHeight modules high.
int ColumnsForAspectRatio(int total, const PDF417Options& options) {
  // Written so that a ratio that is not a number becomes the smallest.
  const double ratio = options.aspectRatio > kPDF417MinAspectRatio
                           ? std::min(options.aspectRatio, kPDF417MaxAspectRatio)
                           : kPDF417MinAspectRatio;
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

Grid ColumnsForRows(int total, int rows) {
  const int columns = CeilDiv(total, rows);
  return columns <= kMaxColumns ? Grid{columns, rows} : Grid{kMaxColumns, CeilDiv(total, kMaxColumns)};
}

// Two grids hold exactly the largest number of codewords. A grid beyond it becomes the one nearer in shape.
Grid ReduceToCapacity(Grid grid) {
  if (grid.columns * grid.rows <= kPDF417MaxCodewords) {
    return grid;
  }
  return grid.columns <= kMaxColumnsOfTallFullGrid ? Grid{16, 58} : Grid{29, 32};
}

Grid ChooseGrid(int total, const PDF417Options& options) {
  const Grid wanted = {std::clamp(options.codeColumns, 1, kMaxColumns),
                       std::clamp(options.codeRows, kMinRows, kMaxRows)};
  switch (options.sizeKind) {
    case PDF417SizeKind::kRows:
      return ColumnsForRows(total, wanted.rows);
    case PDF417SizeKind::kColumns:
      return RowsForColumns(total, wanted.columns);
    case PDF417SizeKind::kColumnsAndRows: {
      const Grid reduced = ReduceToCapacity(wanted);
      return reduced.columns * reduced.rows >= total ? reduced : RowsForColumns(total, wanted.columns);
    }
    case PDF417SizeKind::kAuto:
      break;
  }
  return RowsForColumns(total, ColumnsForAspectRatio(total, options));
}

}  // namespace

PDF417Layout LayoutPDF417(int dataLength, const PDF417Options& options) {
  const int level = InitialErrorLevel(dataLength, options);
  const Grid grid = ReduceToCapacity(ChooseGrid(dataLength + PDF417ErrorCodewords(level), options));
  // Error correction rather than padding fills what the grid leaves over.
  const int room = grid.columns * grid.rows - dataLength;
  return {grid.columns, grid.rows, CapErrorLevel(kMaxErrorLevel, room)};
}

}  // namespace barcode
