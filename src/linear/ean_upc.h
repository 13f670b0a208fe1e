#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/run_vector.h"

namespace barcode {

// Digit patterns of EAN and UPC symbols (ISO/IEC 15420): seven modules, the leftmost in bit 6, 1 = bar.
using DigitPatterns = std::array<std::uint8_t, 10>;

inline constexpr DigitPatterns kLeftOddPatterns = {13, 25, 19, 61, 35, 49, 47, 59, 55, 11};
inline constexpr DigitPatterns kLeftEvenPatterns = {39, 51, 27, 33, 29, 57, 5, 17, 9, 23};
inline constexpr DigitPatterns kRightPatterns = {114, 102, 108, 66, 92, 78, 80, 68, 72, 116};

// The parities of six digits that carry a seventh one (the leading digit of an EAN-13 symbol), leftmost in
// bit 5.
inline constexpr std::array<std::uint8_t, 10> kSixDigitParity = {0, 11, 13, 14, 19, 25, 28, 21, 22, 26};

// Whether the parity table marks position 0 to 5 of the six digits that carry `digit`.
constexpr bool ParityBit(int digit, std::size_t position) {
  return (kSixDigitParity[static_cast<std::size_t>(digit)] & (32U >> position)) != 0;
}

// One entry per module, 1 = bar.
using ModuleSequence = std::vector<std::uint8_t>;

// Appends the `count` low bits of a pattern, the highest of them first.
void AppendModules(ModuleSequence& modules, unsigned pattern, int count);
void AppendDigit(ModuleSequence& modules, const DigitPatterns& patterns, char digit);

// The guards: bar space bar at both ends; space bar space bar space in the centre.
void AppendSideGuard(ModuleSequence& modules);
void AppendCentreGuard(ModuleSequence& modules);

// Lengths of the runs of equal modules. The sequence begins with a bar.
RunVector RunsOfModules(const ModuleSequence& modules);

// The full code of a text of digits with or without its check digit: `fullLength` digits, the last one
// checked or appended. Throws std::runtime_error with the message of the symbology called `name`.
std::string CompleteRetailCode(std::string_view text, std::size_t fullLength, std::string_view name);

}  // namespace barcode
