#include "gs1/databar_limited_encoder.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>

#include "base/ascii.h"
#include "base/gs1_check_digit.h"
#include "gs1/databar_characters.h"
#include "gs1/databar_tables.h"

namespace barcode {
namespace {

constexpr std::size_t kFewestDigits = 8;
constexpr std::size_t kInputDigits = 13;
constexpr std::uint64_t kDivisor = 2013571;

// The bar that is not there, a guard, two characters with the check pattern between them, a guard.
constexpr std::size_t kElements = 1 + 2 + 14 + 14 + 14 + 2;
constexpr std::ptrdiff_t kFirstCharacter = 1 + 2;

std::string PadInput(std::string_view text) {
  if (!AllDigits(text)) {
    throw std::invalid_argument("GS1 DataBar Limited requires numeric digits only");
  }
  if (text.size() < kFewestDigits || text.size() > kInputDigits) {
    throw std::invalid_argument("Input must be 8-13 digits");
  }
  std::string digits = std::string(kInputDigits - text.size(), '0').append(text);
  if (digits.front() > '1') {
    throw std::invalid_argument("GS1 DataBar Limited requires leading digit 0 or 1 after padding");
  }
  return digits;
}

}  // namespace

DataBarLimitedSymbol EncodeDataBarLimited(std::string_view text) {
  DataBarLimitedSymbol symbol;
  symbol.digits = PadInput(text);
  std::uint64_t number = 0;
  std::from_chars(symbol.digits.data(), symbol.digits.data() + symbol.digits.size(), number);
  const auto left =
      EncodeDataBarCharacter<14>(kDataBarLimitedCharacters, static_cast<std::uint32_t>(number / kDivisor));
  const auto right =
      EncodeDataBarCharacter<14>(kDataBarLimitedCharacters, static_cast<std::uint32_t>(number % kDivisor));
  const std::span weights(kDataBarLimitedWeights);
  const std::uint32_t sum = DataBarWeightedSum(left, weights.first(left.size())) +
                            DataBarWeightedSum(right, weights.last(right.size()));
  const DataBarCheckPattern& check = kDataBarLimitedChecks[sum % kDataBarLimitedModulus];

  symbol.widths.assign(kElements, 1);  // the two guards keep this
  symbol.widths.front() = 0;
  auto next = symbol.widths.begin() + kFirstCharacter;
  next = std::copy(left.begin(), left.end(), next);
  next = std::copy(check.begin(), check.end(), next);
  std::copy(right.begin(), right.end(), next);
  symbol.digits += Gs1CheckDigit(symbol.digits);
  return symbol;
}

}  // namespace barcode
