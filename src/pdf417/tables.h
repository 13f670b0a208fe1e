#pragma once

#include <array>
#include <cstdint>

namespace barcode::pdf417 {

inline constexpr int kCodewordValues = 929;

inline constexpr int kModulesPerCodeword = 17;

// The 17-module symbol characters of the codeword values 0 to 928, first module in bit 16, 1 = dark: one
// table for each cluster (0, 3 and 6), which is that of the rows with row mod 3 = 0, 1 and 2.
using Clusters = std::array<std::array<std::uint32_t, kCodewordValues>, 3>;

// ISO/IEC 15438, symbol character bar-space patterns.
extern const Clusters kClusters;

// ISO/IEC 15438: the patterns that open and close every row, first module in the highest bit.
inline constexpr std::uint32_t kStartPattern = 0b11111111010101000;
inline constexpr int kStartModules = 17;
inline constexpr std::uint32_t kStopPattern = 0b111111101000101001;
inline constexpr int kStopModules = 18;

}  // namespace barcode::pdf417
