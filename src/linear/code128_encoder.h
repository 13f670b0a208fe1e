#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "base/keywords.h"
#include "base/run_vector.h"
#include "linear/code128_tables.h"

namespace barcode {

enum class Code128Set : std::uint8_t { kA, kB, kC };
inline constexpr std::array kCode128Sets = {Code128Set::kA, Code128Set::kB, Code128Set::kC};

// How the code sets of a symbol are chosen: one fixed set, or those that take the fewest values.
enum class Code128Mode : std::uint8_t { kA, kB, kC, kAuto };

inline constexpr Keywords<Code128Mode, 4> kCode128ModeKeywords = {
    {{"A", Code128Mode::kA}, {"B", Code128Mode::kB}, {"C", Code128Mode::kC}, {"AUTO", Code128Mode::kAuto}}};

// What the values of a text are.
enum class Code128Rule : std::uint8_t {
  // This library's own: in set A the byte is its own value, 0 to 95, and DEL is in no set.
  kByteValues,
  // ISO/IEC 15417: set A begins with the space, and NUL to US follow the underscore; DEL is in set B.
  kStandard,
};

// FNC1 in the texts of EncodeValuesWithFnc1: a byte that no set holds.
inline constexpr char kCode128Fnc1Mark = '\xF1';

// Symbol values, 0 to 106, in reading order.
using Code128Values = std::vector<int>;

constexpr int StartValue(Code128Set set) {
  return kCode128StartA + static_cast<int>(set);
}

// The value that switches to a set from another one.
constexpr int SwitchValue(Code128Set set) {
  return kCode128SwitchA - static_cast<int>(set);
}

// Bytes of text that one value of a set holds.
constexpr std::size_t BytesPerValue(Code128Set set) {
  return set == Code128Set::kC ? 2 : 1;
}

// The value of the byte (set C: the two digits) at pos in one code set, or -1.
int CharValue(Code128Set set, std::string_view text, std::size_t pos,
              Code128Rule rule = Code128Rule::kByteValues);

// Start value, data, check value and stop value of a text in a mode. Throws std::runtime_error for an empty
// text and for bytes that the mode cannot encode.
Code128Values EncodeValues(std::string_view text, Code128Mode mode,
                           Code128Rule rule = Code128Rule::kByteValues);

// The same by the standard, in the sets that take the fewest values, of a text in which kCode128Fnc1Mark
// stands for the character FNC1.
Code128Values EncodeValuesWithFnc1(std::string_view text);

// The modulo-103 check value of a start value and the values after it.
int CheckValue(const Code128Values& values);

// Closes a symbol: check value and stop value.
void AppendCheckAndStop(Code128Values& values);

// The module pattern: 11 (n - 1) + 13 modules for n values. A value that is none throws std::out_of_range.
RunVector ValuesToPattern(const Code128Values& values);

// Code 128 (ISO/IEC 15417) of a text; throws as EncodeValues does.
RunVector EncodeCode128(std::string_view text, Code128Mode mode, Code128Rule rule = Code128Rule::kByteValues);

}  // namespace barcode
