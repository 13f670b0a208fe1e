#pragma once

#include <random>
#include <string_view>

#include "base/module_matrix.h"
#include "base/run_vector.h"
#include "label/drawing.h"
#include "label/font.h"

// Drawings for the tests of the writers, made without the composition.
namespace barcode::label::test {

// Bars with a margin of 10 modules at their sides.
Drawing LinearDrawing(const RunVector& pattern, int module, int height);

// With a margin of 4 modules all round; the runs of each row.
Drawing MatrixDrawing(const ModuleMatrix& matrix, int module);

// Writes a line of text below, from the middle; the picture grows.
void AddLine(Drawing& drawing, std::string_view text, double size);

// The drawing turned, its text with it.
Drawing Turned(const Drawing& drawing, Rotation rotation);

// A text whose first glyph stands at (x, y).
PlacedText TextAt(std::string_view text, double size, double x, double y);

// Rectangles anywhere, which may overlap.
Drawing RandomDrawing(std::mt19937& random);

}  // namespace barcode::label::test
