#pragma once

#include <cstddef>

#include "support/image.h"

namespace barcode::test {

// ZXing 1.4 told to find every symbol of the picture, not the first. Returns their number.
std::size_t ReadSeveralWithZxing(const GreyImage& image);

}  // namespace barcode::test
