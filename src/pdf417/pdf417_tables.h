#pragma once

#include <array>
#include <cstdint>

namespace barcode {

inline constexpr int kPDF417CodewordValues = 929;

// The 17-module symbol characters of the codeword values 0 to 928, first module in bit 16, 1 = dark: one
// table for each cluster (0, 3 and 6), which is that of the rows with row mod 3 = 0, 1 and 2.
using PDF417Clusters = std::array<std::array<std::uint32_t, kPDF417CodewordValues>, 3>;

// ISO/IEC 15438, symbol character bar-space patterns.
extern const PDF417Clusters kPDF417Clusters;

// ISO/IEC 15438: the patterns that open and close every row, first module in the highest bit.
inline constexpr std::uint32_t kPDF417StartPattern = 0b11111111010101000;
inline constexpr int kPDF417StartModules = 17;
inline constexpr std::uint32_t kPDF417StopPattern = 0b111111101000101001;
inline constexpr int kPDF417StopModules = 18;

}  // namespace barcode
