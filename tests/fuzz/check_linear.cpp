#include <algorithm>
#include <numeric>
#include <string>

#include "fuzz/checks.h"
#include "fuzz/require.h"
#include "linear/code128_encoder.h"
#include "linear/code39_encoder.h"
#include "linear/code93_encoder.h"
#include "linear/ean_upc_encoder.h"
#include "linear/itf_encoder.h"
#include "linear/nw7_encoder.h"
#include "linear/two_of_five_encoder.h"
#include "linear/yubin_customer_encoder.h"
#include "support/code128_reference.h"

namespace barcode::fuzz {
namespace {

std::size_t Modules(const RunVector& pattern) {
  return std::accumulate(pattern.begin(), pattern.end(), std::size_t{0});
}

// Bars at both ends, no element of no modules, none wider than `widest`.
void RequirePattern(const RunVector& pattern, std::size_t modules, std::uint32_t widest) {
  Require(pattern.size() % 2 == 1, "a pattern begins and ends with a bar");
  Require(
      std::ranges::all_of(pattern, [widest](std::uint32_t width) { return width >= 1 && width <= widest; }),
      "elements have a width of the symbology");
  Require(Modules(pattern) == modules, "a pattern has the modules of its characters");
}

// A text of the characters, or nearly so, or of any bytes.
std::string TextOf(ByteReader& reader, std::string_view characters) {
  const std::size_t kind = reader.Below(4);
  std::string text = reader.Bytes(40);
  if (kind != 0) {
    text = InAlphabet(std::move(text), characters);
  }
  return kind == 1 ? text + reader.Bytes(2) : text;
}

constexpr std::string_view kCode39Characters =
    "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz-. $/+%";

// The digits of the five elements from an index on, every second one: their wide ones have the weights 1 2 4
// 7 0.
char TwoOfFiveDigit(const RunVector& pattern, std::size_t first) {
  constexpr std::array kWeights = {1U, 2U, 4U, 7U, 0U};
  std::uint32_t sum = 0;
  int wide = 0;
  for (std::size_t i = 0; i < kWeights.size(); ++i) {
    if (pattern[first + 2 * i] == kWideModules) {
      sum += kWeights[i];
      ++wide;
    }
  }
  Require(wide == 2, "two of five elements are wide");
  return static_cast<char>('0' + (sum == 11 ? 0 : sum));
}

void RequireItf(const std::string& text, const RunVector& pattern) {
  const std::string digits = text.size() % 2 == 0 ? text : "0" + text;
  Require(ItfDisplayText(text) == digits, "an odd number of digits gets a zero in front");
  Require(pattern.size() == 5 * digits.size() + 7, "two digits have ten elements");
  std::string decoded;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    decoded += TwoOfFiveDigit(pattern, 4 + i / 2 * 10 + i % 2);
  }
  Require(decoded == digits, "Interleaved 2 of 5 reads back");
}

// The values of set A are the bytes themselves.
std::string DecodeHouseCode128(const Code128Values& values) {
  std::string text;
  int set = values.front() - 103;
  for (std::size_t i = 1; i + 2 < values.size(); ++i) {
    const int value = values[i];
    const bool switches = set == 2 ? value >= 100 : value >= 99;
    if (switches) {
      Require(value >= 99 && value <= 101 && set != 101 - value, "a switch leads into another set");
      set = 101 - value;
    } else if (set == 2) {
      text += {static_cast<char>('0' + value / 10), static_cast<char>('0' + value % 10)};
    } else {
      text += static_cast<char>(set == 0 ? value : value + 32);
    }
  }
  return text;
}

char Gs1Digit(std::string_view message) {
  int sum = 0;
  int weight = 3;
  for (std::size_t i = message.size(); i-- > 0; weight = 4 - weight) {
    sum += (message[i] - '0') * weight;
  }
  return static_cast<char>('0' + (10 - sum % 10) % 10);
}

// A full code of `digits` digits from its message, or from the full code itself.
bool IsRetailText(std::string_view text, std::size_t digits) {
  if (!IsMadeOf(text, kDigits)) {
    return false;
  }
  return text.size() == digits - 1 ||
         (text.size() == digits && text.back() == Gs1Digit(text.substr(0, digits - 1)));
}

struct RetailCode {
  std::size_t digits;
  std::string (*complete)(std::string_view);
  RunVector (*encode)(std::string_view);
  std::size_t elements;
  std::size_t modules;
};

constexpr std::array<RetailCode, 3> kRetailCodes = {{{13, CompleteJan13, EncodeJan13, 59, 95},
                                                     {8, CompleteJan8, EncodeJan8, 43, 67},
                                                     {12, CompleteUpcA, EncodeUpcA, 59, 95}}};

void CheckUpcE(const std::string& text) {
  const auto code = Accepted([&] { return CompleteUpcE(text); });
  Require(code.has_value() == (text.size() >= 6 && text.size() <= 8 && IsMadeOf(text, kDigits)),
          "UPC-E takes 6, 7 or 8 digits");
  if (!code) {
    return;
  }
  Require(code->size() == 8 && code->find(text) != std::string::npos, "a UPC-E code holds the text");
  const RunVector pattern = EncodeUpcE(*code);
  Require(pattern.size() == 33, "UPC-E has 33 elements");
  RequirePattern(pattern, 51, 4);
  Require(text.size() == 8 || code->back() == Gs1Digit(ExpandUpcE(*code)),
          "UPC-E has the check digit of UPC-A");
}

}  // namespace

void CheckCode39(ByteReader& reader) {
  const std::string text = TextOf(reader, kCode39Characters);
  const auto pattern = Accepted([&] { return EncodeCode39(text); });
  Require(pattern.has_value() == (!text.empty() && IsMadeOf(text, kCode39Characters)),
          "Code 39 takes its characters and no others");
  if (pattern) {
    RequirePattern(*pattern, 16 * text.size() + 31, 3);
  }
  Require(Code39DisplayText(text, true) == "*" + text + "*" && Code39DisplayText(text, false) == text,
          "Code 39 shows the text as given");
}

void CheckCode93(ByteReader& reader) {
  const std::string characters = std::string(kCode39Characters) + "<>?!";
  const std::string text = TextOf(reader, characters);
  const auto pattern = Accepted([&] { return EncodeCode93(text); });
  Require(pattern.has_value() == (!text.empty() && IsMadeOf(text, characters)),
          "Code 93 takes its characters and no others");
  if (pattern) {
    RequirePattern(*pattern, 9 * (text.size() + 3) + 10, 4);
  }
}

void CheckCode128(ByteReader& reader) {
  constexpr std::array kModes = {Code128Mode::kAuto, Code128Mode::kAuto, Code128Mode::kA, Code128Mode::kB,
                                 Code128Mode::kC};
  constexpr std::array<std::string_view, 4> kAlphabets = {"0123456789", "012345Aa\x01", "\x01\x02 Az~`_",
                                                          "12a"};
  const Code128Mode mode = reader.Of(kModes);
  const std::string text = TextOf(reader, reader.Of(kAlphabets));
  const auto values = Accepted([&] { return EncodeValues(text, mode); });
  Require(!values || !text.empty(), "an empty text is refused");
  if (values) {
    Require(values->size() >= 4 && values->back() == kCode128Stop, "a symbol ends with the stop value");
    const Code128Values start(values->begin(), values->end() - 2);
    Require((*values)[values->size() - 2] == CheckValue(start), "the check value is before the stop value");
    Require(DecodeHouseCode128(*values) == text, "Code 128 reads back");
    RequirePattern(ValuesToPattern(*values), 11 * (values->size() - 1) + 13, 4);
  }
  if (mode == Code128Mode::kAuto && text.size() <= 16) {
    const auto best = test::ReferenceCode128(text).Encode();
    Require(values.has_value() == (best && !text.empty()), "AUTO takes what any way through the sets takes");
    Require(!values || values->size() == best->size() + 2, "AUTO takes the fewest values");
  }
}

void CheckNw7(ByteReader& reader) {
  constexpr std::string_view kCharacters = "0123456789-$:/.+ABCDabcd";
  constexpr std::string_view kFrame = "ABCDabcd";
  std::string text = TextOf(reader, reader.Flag() ? kCharacters : kCharacters.substr(0, 16));
  if (reader.Flag()) {
    text = 'A' + text + 'b';
  }
  const auto pattern = Accepted([&] { return EncodeNw7(text); });
  const auto isFrame = [&](char character) { return kFrame.find(character) != std::string_view::npos; };
  const bool isFramed = !text.empty() && isFrame(text.front());
  Require(pattern.has_value() ==
              (!text.empty() && IsMadeOf(text, kCharacters) && isFramed == isFrame(text.back())),
          "NW-7 takes its characters, framed on both sides or on neither");
  if (pattern) {
    Require(pattern->size() == 8 * (text.size() + (isFramed ? 0 : 2)) - 1,
            "a character has seven elements and a gap");
    RequirePattern(*pattern, Modules(*pattern), 3);
  }
  Require(Nw7DisplayText(text, true) == text && Nw7DisplayText(text, false).size() <= text.size(),
          "NW-7 shows the text as given");
}

void CheckTwoOfFive(ByteReader& reader) {
  const std::string text = TextOf(reader, kDigits);
  const bool isValid = !text.empty() && IsMadeOf(text, kDigits);
  const auto itf = Accepted([&] { return EncodeItf(text); });
  const auto matrix = Accepted([&] { return EncodeMatrix2of5(text); });
  const auto nec = Accepted([&] { return EncodeNec2of5(text); });
  Require(itf.has_value() == isValid && matrix.has_value() == isValid && nec.has_value() == isValid,
          "two of five takes digits");
  if (!isValid) {
    return;
  }
  RequireItf(text, *itf);
  RequirePattern(*itf, Modules(*itf), 3);
  // The last element is a space.
  Require(matrix->size() == 6 * text.size() + 6 && *matrix == *nec,
          "three bars a digit, alike in both symbologies");
}

void CheckRetail(ByteReader& reader) {
  const RetailCode& retail = reader.Of(kRetailCodes);
  std::string text = TextOf(reader, kDigits);
  if (reader.Flag()) {
    text.resize(std::min(text.size(), retail.digits - 1));
  }
  if (reader.OneIn(4) && text.size() == retail.digits - 1 && IsMadeOf(text, kDigits)) {
    text += Gs1Digit(text);
  }
  const auto code = Accepted([&] { return retail.complete(text); });
  const auto pattern = Accepted([&] { return retail.encode(text); });
  const bool isValid = IsRetailText(text, retail.digits);
  Require(code.has_value() == isValid && pattern.has_value() == isValid,
          "a retail code takes its digits, with the right check digit or without");
  if (isValid) {
    Require(code->starts_with(text) && IsRetailText(*code, retail.digits) && code->size() == retail.digits,
            "a full code is the text and its check digit");
    Require(pattern->size() == retail.elements, "a retail code has its number of elements");
    RequirePattern(*pattern, retail.modules, 4);
  }
  CheckUpcE(text.substr(0, 9));
}

void CheckYubin(ByteReader& reader) {
  const std::string text = TextOf(reader, "0123456789-ABCXYZabcxyz");
  const FourStateSymbol symbol = EncodeYubinCustomer(text);
  Require(symbol.bars.size() == kYubinBars, "a postal symbol has 67 bars");
  Require(symbol.checkValue >= 0 && symbol.checkValue < 19, "a check value is one of 19");
  Require(symbol.bars.front() == FourState::kLong && symbol.bars.back() == FourState::kLong,
          "start and stop stand at the ends");
  std::string known;
  std::ranges::copy_if(text, std::back_inserter(known), [](char character) {
    return kCode39Characters.substr(0, 63).find(character) != std::string_view::npos;
  });
  Require(EncodeYubinCustomer(known).bars == symbol.bars, "characters that are not there are dropped");
}

}  // namespace barcode::fuzz
