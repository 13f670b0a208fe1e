#include "linear/ean_upc_encoder.h"

#include <bit>
#include <stdexcept>

#include "base/ascii.h"
#include "base/gs1_check_digit.h"

namespace barcode {
namespace {

constexpr int kDigitModules = 7;

constexpr unsigned Mirrored(unsigned pattern) {
  unsigned mirrored = 0;
  for (int bit = 0; bit < kDigitModules; ++bit) {
    mirrored = mirrored << 1 | (pattern >> bit & 1U);
  }
  return mirrored;
}

// The sets follow from one another: right = left odd with bars and spaces exchanged, left even = right
// mirrored. Left patterns begin with a space and end with a bar, so that every digit joins its neighbours at
// an edge.
constexpr bool SetsAreConsistent() {
  for (std::size_t digit = 0; digit < kRightPatterns.size(); ++digit) {
    const unsigned odd = kLeftOddPatterns[digit];
    const unsigned even = kLeftEvenPatterns[digit];
    const unsigned right = kRightPatterns[digit];
    const int edges = std::popcount((odd ^ odd >> 1) & 0x3FU);
    if (right != (odd ^ 0x7FU) || even != Mirrored(right) || edges != 3 || odd >> 6 != 0 || (odd & 1U) == 0 ||
        std::popcount(odd) % 2 != 1) {
      return false;
    }
  }
  return true;
}
static_assert(SetsAreConsistent());

// Every digit but 0 has three marked positions, never the first.
constexpr bool ParitiesAreConsistent() {
  for (std::size_t digit = 1; digit < kSixDigitParity.size(); ++digit) {
    const unsigned parity = kSixDigitParity[digit];
    if (std::popcount(parity) != 3 || parity >> 5 != 0) {
      return false;
    }
    for (std::size_t other = 0; other < digit; ++other) {
      if (kSixDigitParity[other] == parity) {
        return false;
      }
    }
  }
  return kSixDigitParity[0] == 0;
}
static_assert(ParitiesAreConsistent());

// The full code of a text of digits with or without its check digit: `fullLength` digits, the last one
// checked or appended. Throws std::runtime_error with the message of the symbology called `name`.
std::string CompleteRetailCode(std::string_view text, std::size_t fullLength, std::string_view name) {
  if (text.empty()) {
    throw std::runtime_error("Empty string");
  }
  if (!AllDigits(text)) {
    throw std::runtime_error(std::string(name) + " barcode requires numeric digits only");
  }
  if (text.size() != fullLength && text.size() != fullLength - 1) {
    throw std::runtime_error(std::string(name) + " barcode requires " + std::to_string(fullLength - 1) +
                             " or " + std::to_string(fullLength) + " digits");
  }
  const std::string_view data = text.substr(0, fullLength - 1);
  const char checkDigit = Gs1CheckDigit(data);
  if (text.size() == fullLength && text.back() != checkDigit) {
    throw std::runtime_error("Invalid check digit");
  }
  return std::string(data) + checkDigit;
}

// Guards and digits of a code in two halves, the left one from position `first`, of `half` digits each.
template <class LeftPatterns>
RunVector EncodeHalves(std::string_view code, std::size_t first, std::size_t half,
                       LeftPatterns leftPatterns) {
  ModuleSequence modules;
  AppendSideGuard(modules);
  for (std::size_t i = 0; i < half; ++i) {
    AppendDigit(modules, leftPatterns(i), code[first + i]);
  }
  AppendCentreGuard(modules);
  for (std::size_t i = 0; i < half; ++i) {
    AppendDigit(modules, kRightPatterns, code[first + half + i]);
  }
  AppendSideGuard(modules);
  return RunsOfModules(modules);
}

const DigitPatterns& LeftOdd(std::size_t /*position*/) {
  return kLeftOddPatterns;
}

constexpr std::size_t kUpcAMessageDigits = 11;

// The odd ones of six UPC-E digits, the leftmost in bit 5.
unsigned UpcEOddDigits(std::string_view code, UpcEParityRule rule) {
  constexpr unsigned kLastThree = 0b000111;
  constexpr unsigned kAll = 0b111111;
  const char checkDigit = code[7];
  const unsigned odd = kSixDigitParity[static_cast<std::size_t>(checkDigit - '0')];
  if (rule == UpcEParityRule::kCheckDigitAlone) {
    return odd;
  }
  if (code[0] != '0' && code[0] != '1') {
    throw std::runtime_error("EncodeUPCE: number system must be 0 or 1.");
  }
  const unsigned ofSystem0 = checkDigit == '0' ? kLastThree : odd;
  return code[0] == '0' ? ofSystem0 : ofSystem0 ^ kAll;
}

}  // namespace

void AppendModules(ModuleSequence& modules, unsigned pattern, int count) {
  for (int bit = count - 1; bit >= 0; --bit) {
    modules.push_back(static_cast<std::uint8_t>(pattern >> bit & 1U));
  }
}

void AppendDigit(ModuleSequence& modules, const DigitPatterns& patterns, char digit) {
  AppendModules(modules, patterns[static_cast<std::size_t>(digit - '0')], kDigitModules);
}

void AppendSideGuard(ModuleSequence& modules) {
  AppendModules(modules, 0b101, 3);
}

void AppendCentreGuard(ModuleSequence& modules) {
  AppendModules(modules, 0b01010, 5);
}

RunVector RunsOfModules(const ModuleSequence& modules) {
  RunVector runs;
  std::uint8_t previous = 0;
  for (const std::uint8_t module : modules) {
    if (runs.empty() || module != previous) {
      runs.push_back(0);
    }
    ++runs.back();
    previous = module;
  }
  return runs;
}

std::string CompleteJan13(std::string_view text) {
  return CompleteRetailCode(text, 13, "Jan13");
}

RunVector EncodeJan13(std::string_view text) {
  const std::string code = CompleteJan13(text);
  const int leadingDigit = code[0] - '0';
  return EncodeHalves(code, 1, 6, [&](std::size_t i) -> const DigitPatterns& {
    return ParityBit(leadingDigit, i) ? kLeftEvenPatterns : kLeftOddPatterns;
  });
}

std::string CompleteJan8(std::string_view text) {
  return CompleteRetailCode(text, 8, "Jan8");
}

RunVector EncodeJan8(std::string_view text) {
  return EncodeHalves(CompleteJan8(text), 0, 4, LeftOdd);
}

std::string CompleteUpcA(std::string_view text) {
  return CompleteRetailCode(text, 12, "UPC-A");
}

RunVector EncodeUpcA(std::string_view text) {
  return EncodeHalves(CompleteUpcA(text), 0, 6, LeftOdd);
}

std::string ExpandUpcE(std::string_view digits) {
  const char rule = digits[6];
  const std::size_t dataInFront = rule <= '2' ? 2 : rule == '3' ? 3 : rule == '4' ? 4 : 5;
  std::string message(digits.substr(0, 1 + dataInFront));
  std::string item(digits.substr(1 + dataInFront, 5 - dataInFront));
  if (rule <= '2') {
    message += rule;
  } else if (rule >= '5') {
    item += rule;
  }
  message.append(kUpcAMessageDigits - message.size() - item.size(), '0');
  return message.append(item);
}

std::string CompleteUpcE(std::string_view text) {
  if (text.size() < 6 || text.size() > 8) {
    throw std::runtime_error("Invalid length (must be 6, 7 or 8 digits).");
  }
  if (!AllDigits(text)) {
    throw std::runtime_error("Invalid character (non-digit found).");
  }
  if (text.size() == 8) {
    return std::string(text);
  }
  std::string digits(text.size() == 6 ? "0" : "");
  digits += text;
  return digits + Gs1CheckDigit(ExpandUpcE(digits));
}

RunVector UpcERuns(const ModuleSequence& modules) {
  if (modules.empty() || modules.front() == 0) {
    throw std::runtime_error("EncodeUPCE: internal module sequence error.");
  }
  return RunsOfModules(modules);
}

RunVector EncodeUpcE(std::string_view code, UpcEParityRule rule) {
  if (code.size() != 8) {
    throw std::runtime_error("EncodeUPCE: code must be 8 digits.");
  }
  if (!IsDigit(code[7])) {
    throw std::runtime_error("EncodeUPCE: invalid check digit.");
  }
  const std::string_view data = code.substr(1, 6);
  if (!AllDigits(data)) {
    throw std::runtime_error("EncodeUPCE: non digit in data part.");
  }
  const unsigned odd = UpcEOddDigits(code, rule);
  ModuleSequence modules;
  AppendSideGuard(modules);
  for (std::size_t i = 0; i < data.size(); ++i) {
    AppendDigit(modules, (odd & (32U >> i)) != 0 ? kLeftOddPatterns : kLeftEvenPatterns, data[i]);
  }
  AppendModules(modules, 0b010101, 6);
  return UpcERuns(modules);
}

}  // namespace barcode
