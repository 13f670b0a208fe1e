#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "base/run_vector.h"
#include "linear/code128_tables.h"

namespace barcode {

enum class Code128Set : std::uint8_t { kA, kB, kC };
inline constexpr std::array kCode128Sets = {Code128Set::kA, Code128Set::kB, Code128Set::kC};

// How the code sets of a symbol are chosen: one fixed set (0 A, 1 B, 2 C), or automatically.
inline constexpr std::int32_t kCode128ModeAuto = 3;

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

// The value of the byte (set C: the two digits) at pos in one code set, or -1. In set A the byte is its own
// value, 0 to 95: this symbology does not apply the standard's order, in which space comes first.
int CharValue(Code128Set set, std::string_view text, std::size_t pos);

// Start value, data, check value and stop value of a text in a mode. Throws a standard exception for an empty
// text, an unknown mode and for bytes that the mode cannot encode.
Code128Values EncodeValues(std::string_view text, std::int32_t mode);

// The modulo-103 check value of a start value and the values after it.
int CheckValue(const Code128Values& values);

// Closes a symbol: check value and stop value.
void AppendCheckAndStop(Code128Values& values);

// The module pattern. A value above 106 throws std::out_of_range with the message.
RunVector ValuesToPattern(const Code128Values& values, const char* invalidMessage = "Invalid code value");

}  // namespace barcode
