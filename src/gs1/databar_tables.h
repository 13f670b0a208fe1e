#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "gs1/databar_characters.h"

// Published tables of ISO/IEC 24724.
namespace barcode {

// ---- GS1 DataBar Omnidirectional ----

// Data characters 1 and 3: 16 modules, values 0 to 2840.
inline constexpr std::array<DataBarGroup, 5> kDataBar14OutsideGroups = {{
    {0, 12, 4, 8, 1, 161, 1},
    {161, 10, 6, 6, 3, 80, 10},
    {961, 8, 8, 4, 5, 31, 34},
    {2015, 6, 10, 3, 6, 10, 70},
    {2715, 4, 12, 1, 8, 1, 126},
}};

// Data characters 2 and 4: 15 modules, values 0 to 1596.
inline constexpr std::array<DataBarGroup, 4> kDataBar14InsideGroups = {{
    {0, 5, 10, 2, 7, 4, 84},
    {336, 7, 8, 4, 5, 20, 35},
    {1036, 9, 6, 6, 3, 48, 10},
    {1516, 11, 4, 8, 1, 81, 1},
}};

inline constexpr DataBarCharacterSet kDataBar14Outside{kDataBar14OutsideGroups, DataBarNarrow::kEven,
                                                       DataBarQuotient::kOdd};
inline constexpr DataBarCharacterSet kDataBar14Inside{kDataBar14InsideGroups, DataBarNarrow::kOdd,
                                                      DataBarQuotient::kEven};

using DataBarFinder = std::array<std::uint8_t, 5>;
inline constexpr std::size_t kDataBarFinderModules = 15;

inline constexpr std::array<DataBarFinder, 9> kDataBar14Finders = {{
    {3, 8, 2, 1, 1},
    {3, 5, 5, 1, 1},
    {3, 3, 7, 1, 1},
    {3, 1, 9, 1, 1},
    {2, 7, 4, 1, 1},
    {2, 5, 6, 1, 1},
    {2, 3, 8, 1, 1},
    {1, 5, 7, 1, 1},
    {1, 3, 9, 1, 1},
}};

inline constexpr std::uint32_t kDataBar14Modulus = 79;
inline constexpr std::array<std::uint8_t, 32> kDataBar14Weights = PowersOfThree<32>(kDataBar14Modulus);

// ---- GS1 DataBar Limited ----

// Both characters: 26 modules, values 0 to 2013570.
inline constexpr std::array<DataBarGroup, 7> kDataBarLimitedGroups = {{
    {0, 17, 9, 6, 3, 6538, 28},
    {183064, 13, 13, 5, 4, 875, 728},
    {820064, 9, 17, 3, 6, 28, 6454},
    {1000776, 15, 11, 5, 4, 2415, 203},
    {1491021, 11, 15, 4, 5, 203, 2408},
    {1979845, 19, 7, 8, 1, 17094, 1},
    {1996939, 7, 19, 1, 8, 1, 16632},
}};

inline constexpr DataBarCharacterSet kDataBarLimitedCharacters{kDataBarLimitedGroups, DataBarNarrow::kEven,
                                                               DataBarQuotient::kOdd};

inline constexpr std::uint32_t kDataBarLimitedModulus = 89;
inline constexpr std::array<std::uint8_t, 28> kDataBarLimitedWeights =
    PowersOfThree<28>(kDataBarLimitedModulus);

// Check patterns by check value: 14 elements, 18 modules.
using DataBarCheckPattern = std::array<std::uint8_t, 14>;
inline constexpr std::array<DataBarCheckPattern, 89> kDataBarLimitedChecks = {{
    {1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 3, 3, 1, 1}, {1, 1, 1, 1, 1, 1, 1, 1, 1, 2, 3, 2, 1, 1},
    {1, 1, 1, 1, 1, 1, 1, 1, 1, 3, 3, 1, 1, 1}, {1, 1, 1, 1, 1, 1, 1, 2, 1, 1, 3, 2, 1, 1},
    {1, 1, 1, 1, 1, 1, 1, 2, 1, 2, 3, 1, 1, 1}, {1, 1, 1, 1, 1, 1, 1, 3, 1, 1, 3, 1, 1, 1},
    {1, 1, 1, 1, 1, 2, 1, 1, 1, 1, 3, 2, 1, 1}, {1, 1, 1, 1, 1, 2, 1, 1, 1, 2, 3, 1, 1, 1},
    {1, 1, 1, 1, 1, 2, 1, 2, 1, 1, 3, 1, 1, 1}, {1, 1, 1, 1, 1, 3, 1, 1, 1, 1, 3, 1, 1, 1},
    {1, 1, 1, 2, 1, 1, 1, 1, 1, 1, 3, 2, 1, 1}, {1, 1, 1, 2, 1, 1, 1, 1, 1, 2, 3, 1, 1, 1},
    {1, 1, 1, 2, 1, 1, 1, 2, 1, 1, 3, 1, 1, 1}, {1, 1, 1, 2, 1, 2, 1, 1, 1, 1, 3, 1, 1, 1},
    {1, 1, 1, 3, 1, 1, 1, 1, 1, 1, 3, 1, 1, 1}, {1, 2, 1, 1, 1, 1, 1, 1, 1, 1, 3, 2, 1, 1},
    {1, 2, 1, 1, 1, 1, 1, 1, 1, 2, 3, 1, 1, 1}, {1, 2, 1, 1, 1, 1, 1, 2, 1, 1, 3, 1, 1, 1},
    {1, 2, 1, 1, 1, 2, 1, 1, 1, 1, 3, 1, 1, 1}, {1, 2, 1, 2, 1, 1, 1, 1, 1, 1, 3, 1, 1, 1},
    {1, 3, 1, 1, 1, 1, 1, 1, 1, 1, 3, 1, 1, 1}, {1, 1, 1, 1, 1, 1, 1, 1, 2, 1, 2, 3, 1, 1},
    {1, 1, 1, 1, 1, 1, 1, 1, 2, 2, 2, 2, 1, 1}, {1, 1, 1, 1, 1, 1, 1, 1, 2, 3, 2, 1, 1, 1},
    {1, 1, 1, 1, 1, 1, 1, 2, 2, 1, 2, 2, 1, 1}, {1, 1, 1, 1, 1, 1, 1, 2, 2, 2, 2, 1, 1, 1},
    {1, 1, 1, 1, 1, 1, 1, 3, 2, 1, 2, 1, 1, 1}, {1, 1, 1, 1, 1, 2, 1, 1, 2, 1, 2, 2, 1, 1},
    {1, 1, 1, 1, 1, 2, 1, 1, 2, 2, 2, 1, 1, 1}, {1, 1, 1, 1, 1, 2, 1, 2, 2, 1, 2, 1, 1, 1},
    {1, 1, 1, 1, 1, 3, 1, 1, 2, 1, 2, 1, 1, 1}, {1, 1, 1, 2, 1, 1, 1, 1, 2, 1, 2, 2, 1, 1},
    {1, 1, 1, 2, 1, 1, 1, 1, 2, 2, 2, 1, 1, 1}, {1, 1, 1, 2, 1, 1, 1, 2, 2, 1, 2, 1, 1, 1},
    {1, 1, 1, 2, 1, 2, 1, 1, 2, 1, 2, 1, 1, 1}, {1, 1, 1, 3, 1, 1, 1, 1, 2, 1, 2, 1, 1, 1},
    {1, 2, 1, 1, 1, 1, 1, 1, 2, 1, 2, 2, 1, 1}, {1, 2, 1, 1, 1, 1, 1, 1, 2, 2, 2, 1, 1, 1},
    {1, 2, 1, 1, 1, 1, 1, 2, 2, 1, 2, 1, 1, 1}, {1, 2, 1, 1, 1, 2, 1, 1, 2, 1, 2, 1, 1, 1},
    {1, 2, 1, 2, 1, 1, 1, 1, 2, 1, 2, 1, 1, 1}, {1, 3, 1, 1, 1, 1, 1, 1, 2, 1, 2, 1, 1, 1},
    {1, 1, 1, 1, 1, 1, 1, 1, 3, 1, 1, 3, 1, 1}, {1, 1, 1, 1, 1, 1, 1, 1, 3, 2, 1, 2, 1, 1},
    {1, 1, 1, 1, 1, 1, 1, 2, 3, 1, 1, 2, 1, 1}, {1, 1, 1, 2, 1, 1, 1, 1, 3, 1, 1, 2, 1, 1},
    {1, 2, 1, 1, 1, 1, 1, 1, 3, 1, 1, 2, 1, 1}, {1, 1, 1, 1, 1, 1, 2, 1, 1, 1, 2, 3, 1, 1},
    {1, 1, 1, 1, 1, 1, 2, 1, 1, 2, 2, 2, 1, 1}, {1, 1, 1, 1, 1, 1, 2, 1, 1, 3, 2, 1, 1, 1},
    {1, 1, 1, 1, 1, 1, 2, 2, 1, 1, 2, 2, 1, 1}, {1, 1, 1, 2, 1, 1, 2, 1, 1, 1, 2, 2, 1, 1},
    {1, 1, 1, 2, 1, 1, 2, 1, 1, 2, 2, 1, 1, 1}, {1, 1, 1, 2, 1, 1, 2, 2, 1, 1, 2, 1, 1, 1},
    {1, 1, 1, 2, 1, 2, 2, 1, 1, 1, 2, 1, 1, 1}, {1, 1, 1, 3, 1, 1, 2, 1, 1, 1, 2, 1, 1, 1},
    {1, 2, 1, 1, 1, 1, 2, 1, 1, 1, 2, 2, 1, 1}, {1, 2, 1, 1, 1, 1, 2, 1, 1, 2, 2, 1, 1, 1},
    {1, 2, 1, 2, 1, 1, 2, 1, 1, 1, 2, 1, 1, 1}, {1, 1, 1, 1, 2, 1, 1, 1, 1, 1, 2, 3, 1, 1},
    {1, 1, 1, 1, 2, 1, 1, 1, 1, 2, 2, 2, 1, 1}, {1, 1, 1, 1, 2, 1, 1, 1, 1, 3, 2, 1, 1, 1},
    {1, 1, 1, 1, 2, 1, 1, 2, 1, 1, 2, 2, 1, 1}, {1, 1, 1, 1, 2, 1, 1, 2, 1, 2, 2, 1, 1, 1},
    {1, 1, 1, 1, 2, 2, 1, 1, 1, 1, 2, 2, 1, 1}, {1, 2, 1, 1, 2, 1, 1, 1, 1, 1, 2, 2, 1, 1},
    {1, 2, 1, 1, 2, 1, 1, 1, 1, 2, 2, 1, 1, 1}, {1, 2, 1, 1, 2, 1, 1, 2, 1, 1, 2, 1, 1, 1},
    {1, 2, 1, 1, 2, 2, 1, 1, 1, 1, 2, 1, 1, 1}, {1, 2, 1, 2, 2, 1, 1, 1, 1, 1, 2, 1, 1, 1},
    {1, 3, 1, 1, 2, 1, 1, 1, 1, 1, 2, 1, 1, 1}, {1, 1, 2, 1, 1, 1, 1, 1, 1, 1, 2, 3, 1, 1},
    {1, 1, 2, 1, 1, 1, 1, 1, 1, 2, 2, 2, 1, 1}, {1, 1, 2, 1, 1, 1, 1, 1, 1, 3, 2, 1, 1, 1},
    {1, 1, 2, 1, 1, 1, 1, 2, 1, 1, 2, 2, 1, 1}, {1, 1, 2, 1, 1, 1, 1, 2, 1, 2, 2, 1, 1, 1},
    {1, 1, 2, 1, 1, 1, 1, 3, 1, 1, 2, 1, 1, 1}, {1, 1, 2, 1, 1, 2, 1, 1, 1, 1, 2, 2, 1, 1},
    {1, 1, 2, 1, 1, 2, 1, 1, 1, 2, 2, 1, 1, 1}, {1, 1, 2, 2, 1, 1, 1, 1, 1, 1, 2, 2, 1, 1},
    {2, 1, 1, 1, 1, 1, 1, 1, 1, 2, 2, 2, 1, 1}, {2, 1, 1, 1, 1, 1, 1, 1, 1, 3, 2, 1, 1, 1},
    {2, 1, 1, 1, 1, 1, 1, 2, 1, 1, 2, 2, 1, 1}, {2, 1, 1, 1, 1, 1, 1, 2, 1, 2, 2, 1, 1, 1},
    {2, 1, 1, 1, 1, 1, 1, 3, 1, 1, 2, 1, 1, 1}, {2, 1, 1, 1, 1, 2, 1, 1, 1, 2, 2, 1, 1, 1},
    {2, 1, 1, 1, 1, 2, 1, 2, 1, 1, 2, 1, 1, 1}, {2, 1, 1, 2, 1, 1, 1, 1, 1, 2, 2, 1, 1, 1},
    {2, 1, 1, 1, 1, 1, 1, 1, 2, 2, 1, 2, 1, 1},
}};

// ---- GS1 DataBar Expanded ----

// Every symbol character: 17 modules, values 0 to 4191.
inline constexpr std::array<DataBarGroup, 5> kDataBarExpandedGroups = {{
    {0, 12, 5, 7, 2, 87, 4},
    {348, 10, 7, 5, 4, 52, 20},
    {1388, 8, 9, 4, 5, 30, 52},
    {2948, 6, 11, 3, 6, 10, 104},
    {3988, 4, 13, 1, 8, 1, 204},
}};

inline constexpr DataBarCharacterSet kDataBarExpandedCharacters{kDataBarExpandedGroups, DataBarNarrow::kOdd,
                                                                DataBarQuotient::kOdd};

// Finder patterns A to F, version 1. Version 2 is the same pattern reversed.
inline constexpr std::array<DataBarFinder, 6> kDataBarExpandedFinders = {{
    {1, 8, 4, 1, 1},  // A
    {3, 6, 4, 1, 1},  // B
    {3, 4, 6, 1, 1},  // C
    {3, 2, 8, 1, 1},  // D
    {2, 6, 5, 1, 1},  // E
    {2, 2, 9, 1, 1},  // F
}};

// kDataBarExpandedSequences[n - 2]: the finders of a symbol with n = 2 to 11 segment pairs, from left to
// right. Those at odd places (counted from 1) are of version 1, those at even places of version 2.
inline constexpr std::array<std::string_view, 10> kDataBarExpandedSequences = {{
    "AA",
    "ABB",
    "ACBD",
    "AEBDC",
    "AEBDDF",
    "AEBDEFF",
    "AABBCCDD",
    "AABBCCDEE",
    "AABBCCDEFF",
    "AABBCDDEEFF",
}};

inline constexpr std::uint32_t kDataBarExpandedModulus = 211;
// 23 rows of eight weights, one after the other.
inline constexpr std::array<std::uint8_t, 184> kDataBarExpandedWeights =
    PowersOfThree<184>(kDataBarExpandedModulus);

}  // namespace barcode
