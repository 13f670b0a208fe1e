#include "linear/ean_upc.h"

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

}  // namespace barcode
