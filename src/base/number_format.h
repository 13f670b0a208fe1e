#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace barcode {

// Appends numbers to a text as C's printf would in the C locale, whatever the locale of the host.

// Decimal integer.
void AppendInt(std::string& out, std::int64_t value);

// Longest "%.2f" of a double: sign, 309 digits, point, two decimals.
inline constexpr std::size_t kLongestFixed2 = 320;

// The same as AppendFixed2 into kLongestFixed2 bytes at `out`; returns the end.
char* WriteFixed2(char* out, double value);

// "%.2f": two decimals, exact ties to even, "inf"/"nan" as printf writes them.
void AppendFixed2(std::string& out, double value);

// "%.<precision>g".
void AppendGeneral(std::string& out, double value, int precision = 6);

// Not as printf: at most so many decimals, rounded, without zeros at its ends (".5", "-2", "0"). The value
// with its decimals is to fit 63 bits.
void AppendDecimal(std::string& out, double value, int decimals);
using DecimalRoom = std::array<char, 24>;
std::string_view WriteDecimal(DecimalRoom& room, double value, int decimals);  // the same into the room

}  // namespace barcode
