#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "base/stacked_row.h"
#include "layout/drawing.h"
#include "layout/linear_layout.h"

// Rows of elements as bars in pixels: one geometry for the raster and the SVG draw of every GS1 DataBar
// form that is not drawn by the plain linear layout.
namespace barcode {

// How the height of a stacked symbol is divided, in pixels. The text area is reserved whether or not text is
// shown.
struct StackedRoom {
  int textSize = 0;
  int textGap = 0;  // as computed; at least 1 is kept free
  std::int64_t rows = 0;

  static StackedRoom Of(std::uint32_t height, float fontScale, float gapScale);
};

// Row heights in pixels: the room divided in proportion to the rows' heights in modules.
std::vector<float> ProportionalHeights(std::span<const StackedRow> rows, const StackedRoom& room);

// Row heights in pixels: rows with a height in modules get just that, the sharing rows divide the rest
// equally. A share may be below zero when the fixed rows fill the room; it is raised to `smallestShare`.
std::vector<float> SharedHeights(std::span<const StackedRow> rows, const StackedRoom& room, float moduleWidth,
                                 float smallestShare);

// Modules of the widest row.
std::uint64_t WidestRow(std::span<const StackedRow> rows);

// The bars of the rows from the top-left corner of the box downwards, one of the heights each; the drawn
// width is that of the widest row. Only adjusted widths are raised to a pixel, whatever the scale says. Rows
// without height have no bars.
Drawing LayoutRows(std::span<const StackedRow> rows, std::span<const float> heights, ElementScale scale,
                   const Box& box);

}  // namespace barcode
