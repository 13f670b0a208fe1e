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
constexpr std::size_t kElements = 5;
constexpr std::uint32_t kFirstElement = 0b10000;

std::uint32_t DigitMask(char digit) {
  return kDigitMasks[static_cast<std::size_t>(digit - '0')];
}

}  // namespace

RunVector ITF::Encode(const std::string& text) const {
  RequireDigits(text, "ITF barcode requires numeric digits only");
  const std::uint32_t wide = WideModules(m_wideRatio);
  const std::string digits = DisplayText(text);
  RunVector pattern = {1, 1, 1, 1};
  pattern.reserve(kElements * digits.size() + 7);
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    const std::uint32_t bars = DigitMask(digits[i]);
    const std::uint32_t spaces = DigitMask(digits[i + 1]);
    for (std::uint32_t element = kFirstElement; element != 0; element >>= 1U) {
      pattern.push_back((bars & element) != 0 ? wide : 1);
      pattern.push_back((spaces & element) != 0 ? wide : 1);
    }
  }
  pattern.insert(pattern.end(), {wide, 1, 1});
  return pattern;
}

std::string ITF::DisplayText(const std::string& text) const {
  return text.size() % 2 == 0 ? text : '0' + text;
}

}  // namespace barcode
