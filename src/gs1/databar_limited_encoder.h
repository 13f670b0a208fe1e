#pragma once

#include <string>
#include <string_view>

#include "base/run_vector.h"

// GS1 DataBar Limited (ISO/IEC 24724).
namespace barcode {

struct DataBarLimitedSymbol {
  std::string digits;  // the GTIN with its check digit, 14 digits
  RunVector widths;    // 74 modules; begins with a bar of no modules, since the symbol begins with a space
};

// `text`: 8 to 13 digits, the GTIN without its check digit; zeros are added on the left, and the first of the
// 13 digits must then be 0 or 1. Throws std::invalid_argument.
DataBarLimitedSymbol EncodeDataBarLimited(std::string_view text);

}  // namespace barcode
