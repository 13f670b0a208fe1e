#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "core/run_vector.h"

namespace barcode {

// The digits that an ITF symbol holds: the text, with a zero in front when their number is odd.
std::string ItfDigits(std::string_view text);

// The module pattern of an Interleaved 2 of 5 symbol. Throws std::invalid_argument for anything but digits.
RunVector EncodeItf(std::string_view text, std::uint32_t wide);

}  // namespace barcode
