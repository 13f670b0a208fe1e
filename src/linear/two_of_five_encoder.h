#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/run_vector.h"

namespace barcode {

// What the two-of-five symbologies share.

// Modules of a wide element; a narrow one has one.
inline constexpr std::uint32_t kWideModules = 3;

// The five elements of each digit, two of them wide, the first in bit 4.
using TwoOfFiveMasks = std::array<std::uint32_t, 10>;
inline constexpr std::size_t kTwoOfFiveElements = 5;
inline constexpr std::uint32_t kTwoOfFiveFirstElement = 0b10000;

// Those of Interleaved 2 of 5 (ISO/IEC 16390), which Matrix 2 of 5 has too.
inline constexpr TwoOfFiveMasks kTwoOfFiveMasks = {
    0b00110, 0b10001, 0b01001, 0b11000, 0b00101, 0b10100, 0b01100, 0b00011, 0b10010, 0b01010,
};

// Throws std::runtime_error for an empty text ("Empty string") and, with the message, for one that holds
// anything but decimal digits.
void RequireDigits(std::string_view text, const char* message);

// How digits are drawn.
enum class TwoOfFiveRule : std::uint8_t {
  kBarsAlone,      // this library's own: the wide bars of a digit, not its wide spaces, alike in both
  kBarsAndSpaces,  // as published: two of a digit's three bars and two spaces are wide
};

// Matrix 2 of 5 and NEC 2 of 5 (COOP 2 of 5): digits as three bars each. No check digit. Throw
// std::runtime_error on empty text and on anything but digits.
RunVector EncodeMatrix2of5(std::string_view text, TwoOfFiveRule rule = TwoOfFiveRule::kBarsAlone);
RunVector EncodeNec2of5(std::string_view text, TwoOfFiveRule rule = TwoOfFiveRule::kBarsAlone);

}  // namespace barcode
