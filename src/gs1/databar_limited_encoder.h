#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// GS1 DataBar Limited (ISO/IEC 24724).
namespace barcode {

inline constexpr std::size_t kDataBarLimitedElements = 46;
inline constexpr std::size_t kDataBarLimitedModules = 74;

struct DataBarLimitedSymbol {
  std::string digits;                                          // the GTIN with its check digit, 14 digits
  std::array<std::uint8_t, kDataBarLimitedElements> elements;  // the first one is a space
};

// `text`: 8 to 13 digits, the GTIN without its check digit; zeros are added on the left, and the first of the
// 13 digits must then be 0 or 1. Throws std::invalid_argument.
DataBarLimitedSymbol EncodeDataBarLimited(std::string_view text);

}  // namespace barcode
