#include "linear/two_of_five.h"

#include <array>
#include <cstddef>
#include <stdexcept>

#include "base/ascii.h"
#include "base/numeric.h"

namespace barcode {
namespace {

// Two wide elements of five for each digit, the first in bit 4.
constexpr std::array<std::uint32_t, 10> kDigitMasks = {24, 3, 5, 6, 9, 10, 12, 17, 18, 20};

// A digit is three bars with narrow spaces between them. Only these bits become bars; the widths that bits 8
// and 2 would give the spaces are left out. Some digits therefore look alike (3 and 6, for example): that is
// how these symbols are meant to be drawn.
constexpr std::array<std::uint32_t, 3> kBarBits = {16, 4, 1};

}  // namespace

std::uint32_t WideModules(float ratio) {
  const bool odd = TruncToInt(ratio) % 2 != 0;
  return odd ? 3 : 2;
}

void RequireDigits(std::string_view text, const char* message) {
  if (text.empty()) {
    throw std::runtime_error("Empty string");
  }
  if (!AllDigits(text)) {
    throw std::runtime_error(message);
  }
}

RunVector EncodeTwoOfFive(std::string_view digits, std::uint32_t wide, const char* notDigitsMessage) {
  RequireDigits(digits, notDigitsMessage);
  RunVector pattern = {wide, 1, wide, 1};
  pattern.reserve(6 * digits.size() + 6);
  for (std::size_t i = 0; i < digits.size(); ++i) {
    if (i > 0) {
      pattern.push_back(1);
    }
    const std::uint32_t mask = kDigitMasks[static_cast<std::size_t>(digits[i] - '0')];
    for (const std::uint32_t bit : kBarBits) {
      if (bit != kBarBits.front()) {
        pattern.push_back(1);
      }
      pattern.push_back((mask & bit) != 0 ? wide : 1);
    }
  }
  // The last element is a space: it draws nothing, but counts in the width of the symbol.
  pattern.insert(pattern.end(), {1, wide, wide});
  return pattern;
}

}  // namespace barcode
