#pragma once

#include <string>
#include <string_view>

#include "base/run_vector.h"

namespace barcode {

// Interleaved 2 of 5 (ISO/IEC 16390): pairs of digits, the first in the bars, the second in the spaces. No
// check digit. An odd number of digits gets a zero in front. Throws std::runtime_error on empty text and on
// anything but digits.
RunVector EncodeItf(std::string_view text);

// The digits that are encoded, the zero in front included.
std::string ItfDisplayText(std::string_view text);

}  // namespace barcode
