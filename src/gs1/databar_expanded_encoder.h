#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/stacked_row.h"
#include "gs1/databar_general_field.h"

// GS1 DataBar Expanded and Expanded Stacked (ISO/IEC 24724).
namespace barcode {

// Segment pairs per row of the symbol that is not stacked.
inline constexpr std::size_t kUnstacked = 0;

struct DataBarExpandedSymbol {
  std::vector<StackedRow> rows;  // one, or with the separators 4 R - 3 for R rows of pairs
  std::string humanReadable;
};

// `text`: a GS1 element string without parentheses; "{FNC1}" or the byte 0x1D ends a field of variable
// length, "{AI}" marks an AI for the human-readable text only. pairsPerRow: kUnstacked, or 1 to 10. Nothing
// when there is nothing to encode. Throws std::invalid_argument for characters that the symbology lacks and
// std::length_error for more data than a symbol holds.
std::optional<DataBarExpandedSymbol> EncodeDataBarExpanded(std::string_view text, std::size_t pairsPerRow);

// The bits of its data characters, twelve for each. `elements`: an element string without markers, not empty,
// of the symbology's characters. Throws std::length_error.
BitText DataBarExpandedBits(std::string_view elements, std::size_t pairsPerRow);

}  // namespace barcode
