#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

// Symbol characters of the GS1 DataBar family (ISO/IEC 24724): a character value is placed in a group, the
// rest is split into an odd and an even sub-value, and each sub-value becomes the widths of every second
// element.
namespace barcode {

// Values from firstValue up to the next group's. Elements 1, 3, 5, ... together are oddModules wide, none
// above oddWidest; oddCount is the number of odd sub-values. The same for the even elements.
struct DataBarGroup {
  std::uint32_t firstValue;
  std::uint8_t oddModules;
  std::uint8_t evenModules;
  std::uint8_t oddWidest;
  std::uint8_t evenWidest;
  std::uint32_t oddCount;
  std::uint32_t evenCount;
};

// In every set one half of the elements always contains a one-module element and the other half need not.
enum class DataBarNarrow : std::uint8_t { kOdd, kEven };

// Which sub-value is the quotient; the other one is the remainder.
enum class DataBarQuotient : std::uint8_t { kOdd, kEven };

struct DataBarCharacterSet {
  std::span<const DataBarGroup> groups;
  DataBarNarrow narrow;
  DataBarQuotient quotient;
};

inline constexpr std::size_t kDataBarMaxModules = 19;
inline constexpr std::size_t kDataBarMaxHalf = 7;
inline constexpr std::size_t kDataBarMaxWidest = 8;

// kDataBarWidthCounts[widest][elements][modules]: in how many ways the modules split into that many elements
// of 1 to `widest` modules each.
using DataBarWidthCounts =
    std::array<std::array<std::array<std::uint32_t, kDataBarMaxModules + 1>, kDataBarMaxHalf + 1>,
               kDataBarMaxWidest + 1>;

constexpr DataBarWidthCounts MakeDataBarWidthCounts() {
  DataBarWidthCounts counts{};
  for (std::size_t widest = 0; widest <= kDataBarMaxWidest; ++widest) {
    counts[widest][0][0] = 1;
    for (std::size_t elements = 1; elements <= kDataBarMaxHalf; ++elements) {
      for (std::size_t modules = 1; modules <= kDataBarMaxModules; ++modules) {
        for (std::size_t first = 1; first <= widest && first <= modules; ++first) {
          counts[widest][elements][modules] += counts[widest][elements - 1][modules - first];
        }
      }
    }
  }
  return counts;
}

inline constexpr DataBarWidthCounts kDataBarWidthCounts = MakeDataBarWidthCounts();

// The same count; with needsNarrow only those with at least one element of one module. (Those without one are
// the splits of one module less per element.)
constexpr std::uint32_t CountDataBarWidths(std::size_t modules, std::size_t elements, std::size_t widest,
                                           bool needsNarrow) {
  const std::uint32_t all = kDataBarWidthCounts[widest][elements][modules];
  if (!needsNarrow) {
    return all;
  }
  return modules < elements || widest == 0
             ? all
             : all - kDataBarWidthCounts[widest - 1][elements][modules - elements];
}

// The widths with number `index` (from 0) in ascending lexicographic order of all splits of `modules` into
// widths.size() elements of at most `widest`, splits without a one-module element left out when needsNarrow.
constexpr void DataBarElementWidths(std::uint32_t index, std::size_t modules, std::size_t widest,
                                    bool needsNarrow, std::span<std::uint8_t> widths) {
  for (std::size_t i = 0; i < widths.size(); ++i) {
    const std::size_t following = widths.size() - 1 - i;
    std::size_t width = 1;
    for (; width < widest; ++width) {
      const std::uint32_t count =
          CountDataBarWidths(modules - width, following, widest, needsNarrow && width != 1);
      if (index < count) {
        break;
      }
      index -= count;
    }
    widths[i] = static_cast<std::uint8_t>(width);
    modules -= width;
    needsNarrow = needsNarrow && width != 1;
  }
}

// The index of the group that a value belongs to.
constexpr std::size_t DataBarGroupOf(const DataBarCharacterSet& set, std::uint32_t value) {
  std::size_t group = set.groups.size() - 1;
  while (value < set.groups[group].firstValue) {
    --group;
  }
  return group;
}

struct DataBarSubValues {
  std::uint32_t odd;
  std::uint32_t even;
};

constexpr DataBarSubValues SplitDataBarValue(const DataBarCharacterSet& set, std::uint32_t value) {
  const DataBarGroup& group = set.groups[DataBarGroupOf(set, value)];
  const std::uint32_t rest = value - group.firstValue;
  if (set.quotient == DataBarQuotient::kOdd) {
    return {rest / group.evenCount, rest % group.evenCount};
  }
  return {rest % group.oddCount, rest / group.oddCount};
}

// The element widths of one character; Elements is 8, or 14 in DataBar Limited.
template <std::size_t Elements>
constexpr std::array<std::uint8_t, Elements> EncodeDataBarCharacter(const DataBarCharacterSet& set,
                                                                    std::uint32_t value) {
  const DataBarGroup& group = set.groups[DataBarGroupOf(set, value)];
  const DataBarSubValues sub = SplitDataBarValue(set, value);
  std::array<std::uint8_t, Elements / 2> odd{};
  std::array<std::uint8_t, Elements / 2> even{};
  DataBarElementWidths(sub.odd, group.oddModules, group.oddWidest, set.narrow == DataBarNarrow::kOdd, odd);
  DataBarElementWidths(sub.even, group.evenModules, group.evenWidest, set.narrow == DataBarNarrow::kEven,
                       even);
  std::array<std::uint8_t, Elements> widths{};
  for (std::size_t i = 0; i < Elements / 2; ++i) {
    widths[2 * i] = odd[i];
    widths[2 * i + 1] = even[i];
  }
  return widths;
}

// Checksum weights: 3^0, 3^1, 3^2, ... modulo a prime.
template <std::size_t Count>
constexpr std::array<std::uint8_t, Count> PowersOfThree(std::uint32_t modulus) {
  std::array<std::uint8_t, Count> powers{};
  std::uint32_t power = 1;
  for (std::uint8_t& entry : powers) {
    entry = static_cast<std::uint8_t>(power);
    power = power * 3 % modulus;
  }
  return powers;
}

constexpr std::uint32_t DataBarWeightedSum(std::span<const std::uint8_t> widths,
                                           std::span<const std::uint8_t> weights) {
  std::uint32_t sum = 0;
  for (std::size_t i = 0; i < widths.size(); ++i) {
    sum += std::uint32_t{widths[i]} * weights[i];
  }
  return sum;
}

}  // namespace barcode
