#pragma once

#include <cstdint>
#include <string_view>

#include "base/run_vector.h"

namespace barcode {

// What the two-of-five symbologies share.

// Modules of a wide element; a narrow one has one.
inline constexpr std::uint32_t kWideModules = 3;

// Throws std::runtime_error for an empty text ("Empty string") and, with the message, for one that holds
// anything but decimal digits.
void RequireDigits(std::string_view text, const char* message);

// Matrix 2 of 5 and NEC 2 of 5: digits as three bars each, alike in both. No check digit. Throw
// std::runtime_error on empty text and on anything but digits.
RunVector EncodeMatrix2of5(std::string_view text);
RunVector EncodeNec2of5(std::string_view text);

}  // namespace barcode
