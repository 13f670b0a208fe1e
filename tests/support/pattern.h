#pragma once

#include <numeric>
#include <string>

#include "base/run_vector.h"

namespace barcode::test {

// A module pattern as digits, one for each element.
inline std::string Digits(const RunVector& pattern) {
  std::string digits;
  for (const std::uint32_t width : pattern) {
    digits += std::to_string(width);
  }
  return digits;
}

inline std::uint32_t Modules(const RunVector& pattern) {
  return std::accumulate(pattern.begin(), pattern.end(), std::uint32_t{0});
}

// The modules of a pattern from left to right, '1' for those of bars.
inline std::string ModuleText(const RunVector& pattern) {
  std::string modules;
  bool isBar = true;
  for (const std::uint32_t width : pattern) {
    modules.append(width, isBar ? '1' : '0');
    isBar = !isBar;
  }
  return modules;
}

}  // namespace barcode::test
