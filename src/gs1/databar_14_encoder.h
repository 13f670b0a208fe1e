#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "gs1/databar_rows.h"

// GS1 DataBar Omnidirectional and its stacked forms (ISO/IEC 24724).
namespace barcode {

enum class DataBar14Type : std::uint8_t { kOmnidirectional = 0, kStacked = 1, kStackedOmnidirectional = 2 };

inline constexpr std::size_t kDataBar14Elements = 46;

struct DataBar14Symbol {
  DataBar14Type type = DataBar14Type::kOmnidirectional;
  std::string digits;                                     // the GTIN with its check digit, 14 digits
  std::array<std::uint8_t, kDataBar14Elements> elements;  // of the one-row symbol
  std::vector<DataBarModuleRow> moduleRows;               // of the stacked forms, 50 modules each
  std::vector<DataBarRow> rows;                           // one, three or five
};

// `text`: at most 13 digits, the GTIN without its check digit; zeros are added on the left. Throws
// std::invalid_argument.
DataBar14Symbol EncodeDataBar14(std::string_view text, DataBar14Type type);

// The check digit of exactly 13 digits, as a text of one character. Throws std::invalid_argument.
std::string CalculateDataBar14CheckDigit(std::string_view digits);

}  // namespace barcode
