#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/run_vector.h"

namespace barcode {

// The encoders of EAN and UPC symbols (ISO/IEC 15420).

// Digit patterns: seven modules, the leftmost in bit 6, 1 = bar.
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

// JAN-13, JAN-8 and UPC-A, each in two steps. Complete...: the full code of a text with or without its check
// digit, which is checked or appended. Encode...: the symbol of the completed text. Both throw
// std::runtime_error for a text that is no code.

// EAN-13: twelve or thirteen digits. 59 runs of 95 modules; the leading digit is the parity of the left half.
std::string CompleteJan13(std::string_view text);
RunVector EncodeJan13(std::string_view text);

// EAN-8: seven or eight digits. 43 runs of 67 modules.
std::string CompleteJan8(std::string_view text);
RunVector EncodeJan8(std::string_view text);

// UPC-A: eleven or twelve digits. 59 runs of 95 modules.
std::string CompleteUpcA(std::string_view text);
RunVector EncodeUpcA(std::string_view text);

// UPC-E, the zero-suppressed form of UPC-A.

// The UPC-A message, eleven digits, that seven digits of a UPC-E code (number system and data) abbreviate by
// zero suppression. The digits are unchecked.
std::string ExpandUpcE(std::string_view digits);

// The runs of a sequence that begins with a bar; throws std::runtime_error for any other.
RunVector UpcERuns(const ModuleSequence& modules);

// The eight digits of a UPC-E code: six are put behind number system 0, six and seven get the check digit of
// the UPC-A message that they abbreviate, eight are taken as they are, whatever their last digit. Throws
// std::runtime_error.
std::string CompleteUpcE(std::string_view text);

// Which of the six digits are odd.
enum class UpcEParityRule : std::uint8_t {
  // This library's own: the check digit alone selects the parities, by the table of EAN-13 leading digits
  // for check digit 0 too, whose six digits are then even.
  kCheckDigitAlone,
  // The standard: the last three digits for check digit 0; number system 1 has the opposite of 0.
  kStandard,
};

// The symbol of a code of eight digits, 33 runs of 51 modules. Throws std::runtime_error, by the standard's
// rule also for number systems above 1.
RunVector EncodeUpcE(std::string_view code, UpcEParityRule rule = UpcEParityRule::kCheckDigitAlone);

}  // namespace barcode
