#pragma once

#include <string_view>

#include "base/geometry.h"
#include "layout/drawing.h"
#include "layout/linear_options.h"

namespace barcode {

// The drawing of a payment slip: the symbol, and under it two lines of text, which may run out of a low box.
// measure: of the font that the lines will be set in. Throws std::runtime_error for a text that is no slip.
Drawing LayoutPaymentForm(std::string_view text, const Box& box, const LinearOptions& options, PixelGrid grid,
                          const TextMeasure& measure);

}  // namespace barcode
