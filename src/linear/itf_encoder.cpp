#include "linear/itf_encoder.h"

#include <array>
#include <cstddef>
#include <cstdint>

#include "linear/two_of_five_encoder.h"

namespace barcode {
namespace {

// The five elements of each digit, the first in bit 4; a set bit is wide (ISO/IEC 16390).
constexpr std::array<std::uint32_t, 10> kDigitMasks = {
    0b00110, 0b10001, 0b01001, 0b11000, 0b00101, 0b10100, 0b01100, 0b00011, 0b10010, 0b01010,
};
constexpr std::size_t kElements = 5;
constexpr std::uint32_t kFirstElement = 0b10000;

std::uint32_t DigitMask(char digit) {
  return kDigitMasks[static_cast<std::size_t>(digit - '0')];
}

}  // namespace

RunVector EncodeItf(std::string_view text) {
  RequireDigits(text, "ITF barcode requires numeric digits only");
  const std::string digits = ItfDisplayText(text);
  RunVector pattern = {1, 1, 1, 1};
  pattern.reserve(kElements * digits.size() + 7);
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    const std::uint32_t bars = DigitMask(digits[i]);
    const std::uint32_t spaces = DigitMask(digits[i + 1]);
    for (std::uint32_t element = kFirstElement; element != 0; element >>= 1U) {
      pattern.push_back((bars & element) != 0 ? kWideModules : 1);
      pattern.push_back((spaces & element) != 0 ? kWideModules : 1);
    }
  }
  pattern.insert(pattern.end(), {kWideModules, 1, 1});
  return pattern;
}

std::string ItfDisplayText(std::string_view text) {
  std::string digits(text);
  return digits.size() % 2 == 0 ? digits : '0' + digits;
}

}  // namespace barcode
