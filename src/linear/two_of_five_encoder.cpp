#include "linear/two_of_five_encoder.h"

#include <array>
#include <cstddef>
#include <stdexcept>

#include "base/ascii.h"
#include "linear/width_string.h"

namespace barcode {
namespace {

// ---- This library's own symbols ----

constexpr TwoOfFiveMasks kOwnMasks = {24, 3, 5, 6, 9, 10, 12, 17, 18, 20};

// A digit is three bars with narrow spaces between them. Only these bits become bars; the widths that bits 8
// and 2 would give the spaces are left out. Some digits therefore look alike (3 and 6, for example): that is
// how these symbols are meant to be drawn.
constexpr std::array<std::uint32_t, 3> kBarBits = {16, 4, 1};

// The module pattern of both symbologies.
RunVector EncodeBarsAlone(std::string_view digits) {
  RunVector pattern = {kWideModules, 1, kWideModules, 1};
  pattern.reserve(6 * digits.size() + 6);
  for (std::size_t i = 0; i < digits.size(); ++i) {
    if (i > 0) {
      pattern.push_back(1);
    }
    const std::uint32_t mask = kOwnMasks[static_cast<std::size_t>(digits[i] - '0')];
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

// ---- The symbols as they are published ----

// Bar, space, bar, space, bar of a digit; a narrow space stands between characters.
struct Published {
  TwoOfFiveMasks masks;
  std::string_view start;  // with the space behind it
  std::string_view stop;
};

constexpr Published kMatrix2of5 = {kTwoOfFiveMasks, "311111", "31111"};
constexpr Published kNec2of5 = {
    {0b11000, 0b00011, 0b00101, 0b00110, 0b01001, 0b01010, 0b01100, 0b10001, 0b10010, 0b10100},
    "3131",
    "133"};

RunVector EncodeBarsAndSpaces(std::string_view digits, const Published& symbology) {
  RunVector pattern;
  pattern.reserve((kTwoOfFiveElements + 1) * digits.size() + symbology.start.size() + symbology.stop.size());
  AppendWidths(pattern, symbology.start);
  for (const char digit : digits) {
    const std::uint32_t mask = symbology.masks[static_cast<std::size_t>(digit - '0')];
    for (std::uint32_t element = kTwoOfFiveFirstElement; element != 0; element >>= 1U) {
      pattern.push_back((mask & element) != 0 ? kWideModules : 1);
    }
    pattern.push_back(1);
  }
  AppendWidths(pattern, symbology.stop);
  return pattern;
}

RunVector EncodeTwoOfFive(std::string_view digits, TwoOfFiveRule rule, const Published& symbology,
                          const char* notDigitsMessage) {
  RequireDigits(digits, notDigitsMessage);
  return rule == TwoOfFiveRule::kBarsAndSpaces ? EncodeBarsAndSpaces(digits, symbology)
                                               : EncodeBarsAlone(digits);
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

RunVector EncodeMatrix2of5(std::string_view text, TwoOfFiveRule rule) {
  return EncodeTwoOfFive(text, rule, kMatrix2of5, "Matrix 2 of 5 barcode requires numeric digits only");
}

RunVector EncodeNec2of5(std::string_view text, TwoOfFiveRule rule) {
  return EncodeTwoOfFive(text, rule, kNec2of5, "NEC 2 of 5 barcode requires numeric digits only");
}

}  // namespace barcode
