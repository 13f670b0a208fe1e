#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/encoder_lines.h"
#include "base/stacked_row.h"

// GS1 DataBar Omnidirectional and its stacked forms (ISO/IEC 24724).
namespace barcode {

enum class DataBar14Type : std::uint8_t { kOmnidirectional = 0, kStacked = 1, kStackedOmnidirectional = 2 };

// What the symbol of one row begins with; the stacked forms always have the standard's colours.
enum class DataBar14Start : std::uint8_t {
  kBar,    // this library's own: the standard's symbol with the colours exchanged
  kSpace,  // ISO/IEC 24724: a bar of no modules stands in front
};

struct DataBar14Symbol {
  DataBar14Type type = DataBar14Type::kOmnidirectional;
  std::string digits;            // the GTIN with its check digit, 14 digits
  std::vector<StackedRow> rows;  // one, three or five; 96 modules in one row, 50 in each of several
};

// `text`: at most 13 digits, the GTIN without its check digit; zeros are added on the left. Throws
// std::invalid_argument.
DataBar14Symbol EncodeDataBar14(std::string_view text, DataBar14Type type,
                                DataBar14Start start = DataBar14Start::kBar);

// The same; `lines` describe the symbol.
DataBar14Symbol EncodeDataBar14(std::string_view text, DataBar14Type type, EncoderLines& lines);

// The check digit of exactly 13 digits, as a text of one character. Throws std::invalid_argument.
std::string CalculateDataBar14CheckDigit(std::string_view digits);

}  // namespace barcode
