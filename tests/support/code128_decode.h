#pragma once

#include <algorithm>
#include <array>
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

// The number of values, start included and without check and stop, of a shortest symbol by the standard that
// neither shifts nor extends the sets. 0xF1 stands for FNC1; every other byte is below 0x80.
inline std::size_t FewestCode128Values(const std::string& text) {
  constexpr std::size_t kNever = 1'000'000;
  const auto digit = [&](std::size_t pos) {
    return pos < text.size() && text[pos] >= '0' && text[pos] <= '9';
  };
  // By position and set, what the rest takes.
  std::vector<std::array<std::size_t, 3>> rest(text.size() + 1, {kNever, kNever, kNever});
  rest.back() = {0, 0, 0};
  for (std::size_t pos = text.size(); pos-- > 0;) {
    const int byte = static_cast<unsigned char>(text[pos]);
    std::array<std::size_t, 3>& here = rest[pos];
    for (std::size_t set = 0; set < 3; ++set) {
      const bool held = byte == 0xF1 || (set == 0 && byte < 96) || (set == 1 && byte >= 32 && byte < 128);
      if (held) {
        here[set] = 1 + rest[pos + 1][set];
      } else if (set == 2 && digit(pos) && digit(pos + 1)) {
        here[set] = 1 + rest[pos + 2][set];
      }
    }
    const std::size_t best = *std::min_element(here.begin(), here.end());
    for (std::size_t& cost : here) {
      cost = std::min(cost, best + 1);  // by way of a switch
    }
  }
  return 1 + *std::min_element(rest.front().begin(), rest.front().end());
}

}  // namespace barcode::test
