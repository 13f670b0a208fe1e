#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace barcode {

// ASCII only, independent of the locale: bytes above 0x7F are never letters or digits.
constexpr bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

constexpr char ToUpper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

inline std::string ToUpper(std::string_view text) {
  std::string upper(text);
  std::transform(upper.begin(), upper.end(), upper.begin(), [](char c) { return ToUpper(c); });
  return upper;
}

constexpr bool AllDigits(std::string_view text) {
  return std::all_of(text.begin(), text.end(), IsDigit);
}

}  // namespace barcode
