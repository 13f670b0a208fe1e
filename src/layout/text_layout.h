#pragma once

#include <cstdint>
#include <string>

#include "base/geometry.h"
#include "layout/drawing.h"
#include "layout/linear_options.h"

namespace barcode {

// The height of the bars, in pixels: what is left of the box above the text. lines: 1 for one line of text; n
// above 1 reserves n + 2 lines. At least 1.
float LayoutBarHeight(std::uint32_t height, int lines, const TextOptions& options);

// One line of text of a font size (at least one byte) in width pixels from x, spread evenly or in one piece
// around their middle.
TextRun LayoutTextLine(std::string text, int x, int width, int size, const TextBox& box,
                       const TextOptions& options, PixelGrid grid);

// Adds the human-readable line at the bottom of the box, across barsWidth pixels from its left edge; nothing
// for an empty text or when text is not shown. In whole pixels no image leaves the box at the bottom.
void AddHumanReadableLine(Drawing& drawing, std::string text, const Box& box, int barsWidth,
                          const TextOptions& options, PixelGrid grid);

}  // namespace barcode
