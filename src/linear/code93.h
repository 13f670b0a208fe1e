#pragma once

#include <cstddef>
#include <string_view>

#include "core/run_vector.h"

namespace barcode {

// The module pattern of a Code 93 symbol with both check characters. Letters may be lower case.
// Throws std::invalid_argument for an empty text or a character outside the set.
RunVector EncodeCode93(std::string_view text);

// Value of the check character for upper-case text: weights run 1 to maxWeight, again and again, from the
// right.
std::size_t Code93CheckIndex(std::string_view text, std::size_t maxWeight);

}  // namespace barcode
