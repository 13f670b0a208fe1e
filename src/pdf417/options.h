#pragma once

namespace barcode::pdf417 {

// What shapes a symbol, and what a host may store beside it. The columns, the rows and the error level do not
// change the symbol: the grid always follows the aspect ratio, and the level fills it. This is intended.
struct Options {
  int codeColumns = 0;       // reported only
  int codeRows = 0;          // reported only
  int errorLevel = 2;        // reported only
  double aspectRatio = 0.5;  // height to width; beyond its range it counts as the nearer bound
  int yHeight = 3;           // height of a row in modules

  // The row height that is drawn with: 3 where the option is below 1.
  int RowHeight() const { return yHeight < 1 ? 3 : yHeight; }
};

}  // namespace barcode::pdf417
