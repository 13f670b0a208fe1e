#pragma once

#include <string_view>

namespace barcode {

// GS1 modulo-10 check digit of a string of decimal digits (unchecked): weights 3 and 1 alternate with 3 on
// the rightmost digit; the digit that completes the sum to a multiple of ten, as a character '0' to '9'.
constexpr char Gs1CheckDigit(std::string_view digits) {
  unsigned sum = 0;
  unsigned weight = 3;
  for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit) {
    sum = (sum + weight * static_cast<unsigned>(*digit - '0')) % 10;
    weight = 4 - weight;
  }
  return static_cast<char>('0' + (10 - sum) % 10);
}

}  // namespace barcode
