#pragma once

#include <string>

#include "label/drawing.h"

// Pure functions from a drawing to the bytes of a file. They throw std::bad_alloc.
namespace barcode::label {

// The smallest lossless form: one bit a dot without text, else a palette of sixteen shades between the
// colours; `pHYs` when the size is physical.
std::string WritePng(const Drawing& drawing);

// An SVG 1.1 document of width x height dots, or of their size in millimetres when it is physical.
std::string WriteSvg(const Drawing& drawing);

// One page of the exact size, vector; without a dpi a dot is 1/96 inch. Throws LabelError (kTooLarge,
// kTooSmall) for a page beyond what PDF allows.
std::string WritePdf(const Drawing& drawing);

}  // namespace barcode::label
