#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

namespace barcode::test {

// What a reader makes of a start value and data by the standard's tables (ISO/IEC 15417); fnc1: what it
// writes for FNC1. Throws std::runtime_error for a value that has no meaning where it stands.
inline std::string DecodeCode128(const std::vector<int>& values, const std::string& fnc1) {
  std::string text;
  int set = values.front() - 103;
  for (std::size_t i = 1; i < values.size(); ++i) {
    const int value = values[i];
    if (value == 102) {
      text += fnc1;
    } else if (set == 2 && value < 100) {
      text += static_cast<char>('0' + value / 10);
      text += static_cast<char>('0' + value % 10);
    } else if (value < 96) {
      text += static_cast<char>(set == 0 && value >= 64 ? value - 64 : value + 32);
    } else if (value >= 99 && value <= 101 && set != 101 - value) {
      set = 101 - value;
    } else {
      throw std::runtime_error("a value without a meaning: " + std::to_string(value));
    }
  }
  return text;
}

}  // namespace barcode::test
