#pragma once

#include <cstddef>
#include <string_view>

#include "base/run_vector.h"

namespace barcode {

// Code 93 (AIM USS Code 93) with its two check characters. Letters may be lower case; the four shift
// characters are typed as "<", ">", "?" and "!". 9 (n + 3) + 10 modules for n characters. Throws
// std::runtime_error on empty text and on characters outside the set.
RunVector EncodeCode93(std::string_view text);

// Value of the check character for upper-case text: weights run 1 to maxWeight, again and again, from the
// right. Throws as EncodeCode93 does.
std::size_t Code93CheckIndex(std::string_view text, std::size_t maxWeight);

}  // namespace barcode
