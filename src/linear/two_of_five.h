#pragma once

#include <cstdint>
#include <string_view>

#include "base/run_vector.h"

namespace barcode {

// What the two-of-five symbologies share.

// Modules of a wide element for a ratio setting: 3 when its integer part is odd; else two and a half, of
// which a whole-module pattern keeps 2.
std::uint32_t WideModules(float ratio);

// Throws std::runtime_error for an empty text ("Empty string") and, with the message, for one that holds
// anything but decimal digits.
void RequireDigits(std::string_view text, const char* message);

// The module pattern of Matrix 2 of 5 and NEC 2 of 5, which differ in their message only.
RunVector EncodeTwoOfFive(std::string_view digits, std::uint32_t wide, const char* notDigitsMessage);

}  // namespace barcode
