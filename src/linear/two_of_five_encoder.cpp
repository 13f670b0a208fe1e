#include "linear/two_of_five_encoder.h"

#include <array>
#include <cstddef>
#include <stdexcept>

#include "base/ascii.h"

namespace barcode {
namespace {

// Two wide elements of five for each digit, the first in bit 4.
constexpr std::array<std::uint32_t, 10> kDigitMasks = {24, 3, 5, 6, 9, 10, 12, 17, 18, 20};

// A digit is three bars with narrow spaces between them. Only these bits become bars; the widths that bits 8
// and 2 would give the spaces are left out. Some digits therefore look alike (3 and 6, for example): that is
// how these symbols are meant to be drawn.
constexpr std::array<std::uint32_t, 3> kBarBits = {16, 4, 1};

// The module pattern of both symbologies, which differ in their message only.
RunVector EncodeTwoOfFive(std::string_view digits, const char* notDigitsMessage) {
  RequireDigits(digits, notDigitsMessage);
  RunVector pattern = {kWideModules, 1, kWideModules, 1};
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
      pattern.push_back((mask & bit) != 0 ? kWideModules : 1);
    }
  }
  // The last element is a space: it draws nothing, but counts in the width of the symbol.
  pattern.insert(pattern.end(), {1, kWideModules, kWideModules});
  return pattern;
}

}  // namespace

void RequireDigits(std::string_view text, const char* message) {
  if (text.empty()) {
    throw std::runtime_error("Empty string");
  }
  if (!AllDigits(text)) {
    throw std::runtime_error(message);
  }
}

RunVector EncodeMatrix2of5(std::string_view text) {
  return EncodeTwoOfFive(text, "Matrix 2 of 5 barcode requires numeric digits only");
}

RunVector EncodeNec2of5(std::string_view text) {
  return EncodeTwoOfFive(text, "NEC 2 of 5 barcode requires numeric digits only");
}

}  // namespace barcode
