#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/ascii.h"

// Lengths of application identifiers (AIs): two tables that differ on purpose.
namespace barcode {

// ---- GS1-128 ----

// This library's own short rule for the text under GS1-128 bars: how many characters behind a marker are set
// in parentheses, whether or not there is such an AI. It is coarser than the standard ("43" has two, for
// one), and users' labels look as it says. The first prefix that fits counts.
struct Gs1_128AiLength {
  std::string_view prefix;
  std::uint8_t length;
};

inline constexpr std::array<Gs1_128AiLength, 10> kGs1_128AiLengths = {{
    {"23", 3},
    {"24", 3},
    {"25", 3},
    {"30", 2},
    {"37", 2},
    {"43", 2},
    {"3", 4},
    {"4", 3},
    {"7", 4},
    {"8", 4},
}};
inline constexpr std::uint8_t kGs1_128OtherAiLength = 2;

// ---- GS1 element strings ----

// The standard's rule (GS1 General Specifications: AI lengths, element strings with predefined length), for
// element strings that are to be parsed. The AIs that begin with the same two digits have one entry.
// totalLength: AI and data together where the standard predefines it; 0 where the field ends at a separator
// or with the text.
struct Gs1AiRule {
  std::uint8_t aiLength = 0;  // 0: no such AI
  std::uint8_t totalLength = 0;
};

inline constexpr std::size_t kGs1AiPrefixes = 100;

// The number of the first two digits, which tells of an AI what kind it is.
constexpr std::size_t Gs1AiPrefix(std::string_view digits) {
  const int prefix = (digits[0] - '0') * 10 + (digits[1] - '0');
  return static_cast<std::size_t>(prefix);
}

using Gs1AiRules = std::array<Gs1AiRule, kGs1AiPrefixes>;

constexpr Gs1AiRules MakeGs1AiRules() {
  struct Range {
    std::size_t first;
    std::size_t last;
    Gs1AiRule rule;
  };
  constexpr std::array<Range, 21> kRanges = {{
      {0, 0, {2, 20}},  {1, 3, {2, 16}},  {4, 4, {2, 18}},  {10, 10, {2, 0}},  {11, 19, {2, 8}},
      {20, 20, {2, 4}}, {21, 22, {2, 0}}, {23, 25, {3, 0}}, {30, 30, {2, 0}},  {31, 36, {4, 10}},
      {37, 37, {2, 0}}, {39, 39, {4, 0}}, {40, 40, {3, 0}}, {41, 41, {3, 16}}, {42, 42, {3, 0}},
      {43, 43, {4, 0}}, {70, 70, {4, 0}}, {71, 71, {3, 0}}, {72, 72, {4, 0}},  {80, 82, {4, 0}},
      {90, 99, {2, 0}},
  }};
  Gs1AiRules rules{};
  for (const auto& [first, last, rule] : kRanges) {
    for (std::size_t prefix = first; prefix <= last; ++prefix) {
      rules[prefix] = rule;
    }
  }
  return rules;
}

inline constexpr Gs1AiRules kGs1AiRules = MakeGs1AiRules();

// The rule by the first two characters of a text; that of no AI when they are no digits.
constexpr Gs1AiRule Gs1AiRuleAt(std::string_view text) {
  if (text.size() < 2 || !IsDigit(text[0]) || !IsDigit(text[1])) {
    return {};
  }
  return kGs1AiRules[Gs1AiPrefix(text)];
}

static_assert([] {
  for (const auto& [aiLength, totalLength] : kGs1AiRules) {
    if (totalLength != 0 && totalLength <= aiLength) {
      return false;
    }
  }
  return true;
}());

}  // namespace barcode
