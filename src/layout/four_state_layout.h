#pragma once

#include <cstdint>
#include <span>

#include "base/four_state.h"
#include "base/geometry.h"
#include "layout/drawing.h"

namespace barcode {

// Width of the image around 67 bars with long bars of `height` pixels, in whole pixels: half a bar's pitch on
// one side.
int FourStateImageWidth(float height);

// The bars of a symbol whose long bars fill the height of the box, from its top-left corner. The width of the
// box says nothing. pxAdjustBlack: pixels added to every bar, which is at least 1 pixel wide.
Drawing LayoutFourState(std::span<const FourState> bars, const Box& box, std::int32_t pxAdjustBlack);

}  // namespace barcode
