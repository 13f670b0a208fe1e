#include "linear/itf.h"

#include <array>
#include <cstddef>

#include "linear/two_of_five.h"

namespace barcode {
namespace {

// The five elements of each digit, the first in bit 4; a set bit is wide (ISO/IEC 16390).
constexpr std::array<std::uint32_t, 10> kDigitMasks = {
    0b00110, 0b10001, 0b01001, 0b11000, 0b00101, 0b10100, 0b01100, 0b00011, 0b10010, 0b01010,
};
constexpr int kElements = 5;

std::uint32_t DigitMask(char digit) {
  return kDigitMasks[static_cast<std::size_t>(digit - '0')];
}

}  // namespace

std::string ItfDigits(std::string_view text) {
  std::string digits(text);
  if (digits.size() % 2 != 0) digits.insert(digits.begin(), '0');
  return digits;
}

RunVector EncodeItf(std::string_view text, std::uint32_t wide) {
  RequireDigits(text, "ITF barcode requires numeric digits only");
  const std::string digits = ItfDigits(text);
  RunVector pattern = {1, 1, 1, 1};
  pattern.reserve(kElements * digits.size() + 7);
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    const std::uint32_t bars = DigitMask(digits[i]);
    const std::uint32_t spaces = DigitMask(digits[i + 1]);
    for (int bit = kElements - 1; bit >= 0; --bit) {
      pattern.push_back((bars >> bit & 1U) != 0 ? wide : 1);
      pattern.push_back((spaces >> bit & 1U) != 0 ? wide : 1);
    }
  }
  pattern.insert(pattern.end(), {wide, 1, 1});
  return pattern;
}

}  // namespace barcode
