#include "gs1/databar_14_encoder.h"

#include <algorithm>
#include <charconv>
#include <span>
#include <stdexcept>

#include "base/ascii.h"
#include "base/gs1_check_digit.h"
#include "gs1/databar_characters.h"
#include "gs1/databar_tables.h"

namespace barcode {
namespace {

constexpr std::size_t kInputDigits = 13;
constexpr std::uint64_t kPairDivisor = 4537077;
constexpr std::uint64_t kCharacterDivisor = 1597;

constexpr std::size_t kStackedModules = 50;
constexpr std::array<std::uint8_t, 2> kGuard = {1, 1};

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

std::array<std::uint8_t, kDataBar14Elements> OneRowElements(const Parts14& parts) {
  const auto& [one, two, three, four] = parts.characters;
  const DataBarFinder& left = kDataBar14Finders[parts.leftFinder];
  const DataBarFinder& right = kDataBar14Finders[parts.rightFinder];
  std::array<std::uint8_t, kDataBar14Elements> elements{};
  auto next = elements.begin();
  next = std::copy(kGuard.begin(), kGuard.end(), next);
  next = std::copy(one.begin(), one.end(), next);
  next = std::copy(left.begin(), left.end(), next);
  next = std::copy(two.rbegin(), two.rend(), next);
  next = std::copy(four.begin(), four.end(), next);
  next = std::copy(right.rbegin(), right.rend(), next);
  next = std::copy(three.rbegin(), three.rend(), next);
  std::copy(kGuard.begin(), kGuard.end(), next);
  return elements;
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
  DataBarModuleRow separator(kStackedModules, '0');
  for (std::size_t i = kSeparatorMargin; i < kStackedModules - kSeparatorMargin; ++i) {
    const char other = top[i] == bottom[i] ? top[i] : separator[i - 1];
    separator[i] = other == '1' ? '0' : '1';
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

std::vector<DataBarModuleRow> StackedRows(const Parts14& parts, DataBar14Type type) {
  const DataBarModuleRow top = TopRow(parts);
  const DataBarModuleRow bottom = BottomRow(parts);
  if (type == DataBar14Type::kStacked) {
    return {top, StackedSeparator(top, bottom), bottom};
  }
  return {top, AdjacentSeparator(top, std::array{kTopWideFinder}), MiddleSeparator(kStackedModules),
          LowerSeparator(bottom, parts.rightFinder), bottom};
}

std::vector<int> RowUnits(DataBar14Type type) {
  switch (type) {
    case DataBar14Type::kStacked:
      return {5, 1, 7};
    case DataBar14Type::kStackedOmnidirectional:
      return {kSharedHeight, 1, 1, 1, kSharedHeight};
    case DataBar14Type::kOmnidirectional:
      break;
  }
  return {kSharedHeight};
}

}  // namespace

DataBar14Symbol EncodeDataBar14(std::string_view text, DataBar14Type type) {
  DataBar14Symbol symbol;
  symbol.type = type;
  symbol.digits = PadInput(text);
  const Parts14 parts = MakeParts(NumberOf(symbol.digits));
  symbol.digits += Gs1CheckDigit(symbol.digits);
  symbol.elements = OneRowElements(parts);
  const std::vector<int> units = RowUnits(type);
  if (type == DataBar14Type::kOmnidirectional) {
    symbol.rows.push_back({WidthDigits(symbol.elements), units.front()});
    return symbol;
  }
  symbol.moduleRows = StackedRows(parts, type);
  for (std::size_t row = 0; row < units.size(); ++row) {
    symbol.rows.push_back({WidthDigits(symbol.moduleRows[row]), units[row]});
  }
  return symbol;
}

std::string CalculateDataBar14CheckDigit(std::string_view digits) {
  if (digits.size() != kInputDigits || !AllDigits(digits)) {
    throw std::invalid_argument("CalculateCheckDigit requires exactly 13 digits");
  }
  return {Gs1CheckDigit(digits)};
}

}  // namespace barcode
