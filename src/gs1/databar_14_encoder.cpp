#include "gs1/databar_14_encoder.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <optional>
#include <span>
#include <stdexcept>

#include "base/ascii.h"
#include "base/gs1_check_digit.h"
#include "gs1/databar_14_diagnostics.h"
#include "gs1/databar_characters.h"
#include "gs1/databar_rows.h"
#include "gs1/databar_tables.h"

namespace barcode {
namespace {

constexpr std::size_t kInputDigits = 13;
constexpr std::uint64_t kPairDivisor = 4537077;
constexpr std::uint64_t kCharacterDivisor = 1597;

constexpr std::size_t kStackedModules = 50;
constexpr std::size_t kOneRowElements = 46;
constexpr std::ptrdiff_t kGuardElements = 2;

// Where the wide finder elements begin: after guard and outside character in the top row, after guard, inside
// character and the two narrow finder elements in the bottom row.
constexpr std::size_t kTopWideFinder = 2 + 16;
constexpr std::size_t kBottomWideFinder = 2 + 15 + 2;

using Character = std::array<std::uint8_t, 8>;

// The parts of a symbol, data characters 1 to 4 in their own element order.
struct Parts14 {
  std::array<Character, 4> characters;
  std::size_t leftFinder;
  std::size_t rightFinder;
};

std::string PadInput(std::string_view text) {
  if (!AllDigits(text)) {
    throw std::invalid_argument("GS1 DataBar requires numeric digits only");
  }
  if (text.size() > kInputDigits) {
    throw std::invalid_argument("Input too long (max 13 digits)");
  }
  return std::string(kInputDigits - text.size(), '0').append(text);
}

std::uint64_t NumberOf(std::string_view digits) {
  std::uint64_t number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return number;
}

// The finders carry the checksum. The values 8 and 72, the finder pairs (0, 8) and (8, 0), are not used.
void ChooseFinders(Parts14& parts) {
  std::uint32_t sum = 0;
  for (std::size_t i = 0; i < parts.characters.size(); ++i) {
    sum += DataBarWeightedSum(parts.characters[i], std::span(kDataBar14Weights).subspan(8 * i, 8));
  }
  std::uint32_t check = sum % kDataBar14Modulus;
  if (check >= 8) {
    ++check;
  }
  if (check >= 72) {
    ++check;
  }
  parts.leftFinder = check / kDataBar14Finders.size();
  parts.rightFinder = check % kDataBar14Finders.size();
}

Parts14 MakeParts(std::uint64_t number) {
  const std::uint64_t left = number / kPairDivisor;
  const std::uint64_t right = number % kPairDivisor;
  const auto outside = [](std::uint64_t pair) {
    return EncodeDataBarCharacter<8>(kDataBar14Outside, static_cast<std::uint32_t>(pair / kCharacterDivisor));
  };
  const auto inside = [](std::uint64_t pair) {
    return EncodeDataBarCharacter<8>(kDataBar14Inside, static_cast<std::uint32_t>(pair % kCharacterDivisor));
  };
  Parts14 parts{{outside(left), inside(left), outside(right), inside(right)}, 0, 0};
  ChooseFinders(parts);
  return parts;
}

// The first element is the standard's first space. Taken as a bar, as this library's own symbols do, it
// gives the standard's symbol with the colours exchanged. This is intended.
RunVector OneRowWidths(const Parts14& parts, DataBar14Start start) {
  const auto& [one, two, three, four] = parts.characters;
  const DataBarFinder& left = kDataBar14Finders[parts.leftFinder];
  const DataBarFinder& right = kDataBar14Finders[parts.rightFinder];
  RunVector widths(kOneRowElements, 1);  // the two guards keep this
  auto next = widths.begin() + kGuardElements;
  next = std::copy(one.begin(), one.end(), next);
  next = std::copy(left.begin(), left.end(), next);
  next = std::copy(two.rbegin(), two.rend(), next);
  next = std::copy(four.begin(), four.end(), next);
  next = std::copy(right.rbegin(), right.rend(), next);
  std::copy(three.rbegin(), three.rend(), next);
  if (start == DataBar14Start::kSpace) {
    widths.insert(widths.begin(), 0);
  }
  return widths;
}

DataBarModuleRow TopRow(const Parts14& parts) {
  return DataBarRowBuilder(false)
      .AddGuard()
      .Add(parts.characters[0])
      .Add(kDataBar14Finders[parts.leftFinder])
      .AddReversed(parts.characters[1])
      .AddGuard()
      .Row();
}

DataBarModuleRow BottomRow(const Parts14& parts) {
  return DataBarRowBuilder(true)
      .AddGuard()
      .Add(parts.characters[3])
      .AddReversed(kDataBar14Finders[parts.rightFinder])
      .AddReversed(parts.characters[2])
      .AddGuard()
      .Row();
}

// The single separator of the stacked form: where both rows agree it is their opposite, elsewhere it differs
// from its own module to the left. Its ends are light, also for the module that begins the chain.
DataBarModuleRow StackedSeparator(const DataBarModuleRow& top, const DataBarModuleRow& bottom) {
  DataBarModuleRow separator(kStackedModules, 0);
  for (std::size_t i = kSeparatorMargin; i < kStackedModules - kSeparatorMargin; ++i) {
    const std::uint8_t other = top[i] == bottom[i] ? top[i] : separator[i - 1];
    separator[i] = other ^ 1U;
  }
  return separator;
}

DataBarModuleRow LowerSeparator(const DataBarModuleRow& bottom, std::size_t rightFinder) {
  DataBarModuleRow separator = AdjacentSeparator(bottom, std::array{kBottomWideFinder});
  // Finder 3 has a space of a single module there; the standard moves its one dark separator module to the
  // right.
  constexpr std::size_t kMovedFinder = 3;
  constexpr std::size_t kLoneSpace = kBottomWideFinder + 9;
  if (rightFinder == kMovedFinder) {
    std::swap(separator[kLoneSpace], separator[kLoneSpace + 1]);
  }
  return separator;
}

std::vector<StackedRow> MakeRows(const Parts14& parts, DataBar14Type type, DataBar14Start start) {
  if (type == DataBar14Type::kOmnidirectional) {
    return {{OneRowWidths(parts, start), std::nullopt}};
  }
  const DataBarModuleRow top = TopRow(parts);
  const DataBarModuleRow bottom = BottomRow(parts);
  std::vector<StackedRow> rows;
  const auto add = [&](const DataBarModuleRow& row, std::optional<int> height) {
    rows.push_back({ElementWidths(row), height});
  };
  if (type == DataBar14Type::kStacked) {
    add(top, 5);
    add(StackedSeparator(top, bottom), 1);
    add(bottom, 7);
    return rows;
  }
  add(top, std::nullopt);
  add(AdjacentSeparator(top, std::array{kTopWideFinder}), 1);
  add(MiddleSeparator(kStackedModules), 1);
  add(LowerSeparator(bottom, parts.rightFinder), 1);
  add(bottom, std::nullopt);
  return rows;
}

}  // namespace

DataBar14Symbol EncodeDataBar14(std::string_view text, DataBar14Type type, DataBar14Start start) {
  DataBar14Symbol symbol{.type = type, .digits = PadInput(text), .rows = {}};
  symbol.rows = MakeRows(MakeParts(NumberOf(symbol.digits)), type, start);
  symbol.digits += Gs1CheckDigit(symbol.digits);
  return symbol;
}

DataBar14Symbol EncodeDataBar14(std::string_view text, DataBar14Type type, EncoderLines& lines) {
  DataBar14Symbol symbol = EncodeDataBar14(text, type);
  DescribeDataBar14(symbol, lines);
  return symbol;
}

std::string CalculateDataBar14CheckDigit(std::string_view digits) {
  if (digits.size() != kInputDigits || !AllDigits(digits)) {
    throw std::invalid_argument("CalculateCheckDigit requires exactly 13 digits");
  }
  return {Gs1CheckDigit(digits)};
}

}  // namespace barcode
