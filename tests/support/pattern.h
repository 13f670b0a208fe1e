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

}  // namespace barcode::test
