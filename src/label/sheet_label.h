#pragma once

#include <vector>

#include "label/drawing.h"
#include "label/error.h"
#include "label/request.h"
#include "label/sheet_grid.h"

namespace barcode::label {

// The resolution of labels that have no physical size of their own.
inline constexpr int kSheetDpi = 600;

// A label in its cell. Its drawing has a dpi.
struct SheetLabel {
  Drawing drawing;
  // Of its upper left corner, from that of the page, in dots of the drawing.
  double x = 0;
  double y = 0;
  std::vector<Warning> warnings;
};

// A label with a dpi has its own size. One without is made as if it had a dpi of kSheetDpi, with the largest
// module that fits the cell: the height of its bars grows with the module; a picture of given width and
// height becomes the largest of their proportion. Pure.
// Throws LabelError for what no label can be, and kTooSmall with the size of a cell that would do.
SheetLabel LabelInCell(const Request& request, const Cell& cell);

}  // namespace barcode::label
