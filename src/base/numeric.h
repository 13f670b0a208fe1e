#pragma once

#include <cstdint>
#include <limits>

namespace barcode {

// Conversions that are defined for every input: hosts may pass any size and any scale, NaN and infinity
// included.

// The value truncated toward zero and kept within the range of int; NaN gives 0.
constexpr int TruncToInt(double value) {
  constexpr double kMin = std::numeric_limits<int>::min();
  constexpr double kMax = std::numeric_limits<int>::max();
  if (value != value) {
    return 0;
  }
  if (value <= kMin) {
    return std::numeric_limits<int>::min();
  }
  if (value >= kMax) {
    return std::numeric_limits<int>::max();
  }
  return static_cast<int>(value);
}

// To the nearest whole number, halves away from zero, as std::llround, which is a call of the C library. The
// value lies within the range of the result.
constexpr std::int64_t RoundToInt64(double value) {
  const auto whole = static_cast<std::int64_t>(value);
  const double rest = value - static_cast<double>(whole);
  return whole + (rest >= 0.5 ? 1 : 0) - (rest <= -0.5 ? 1 : 0);
}

// The value kept within the range of int.
constexpr int ClampToInt(std::int64_t value) {
  if (value < std::numeric_limits<int>::min()) {
    return std::numeric_limits<int>::min();
  }
  if (value > std::numeric_limits<int>::max()) {
    return std::numeric_limits<int>::max();
  }
  return static_cast<int>(value);
}

// A double as float: values beyond the range of float become infinite.
constexpr float ToFloat(double value) {
  constexpr double kMax = std::numeric_limits<float>::max();
  if (value > kMax) {
    return std::numeric_limits<float>::infinity();
  }
  if (value < -kMax) {
    return -std::numeric_limits<float>::infinity();
  }
  return static_cast<float>(value);
}

}  // namespace barcode
