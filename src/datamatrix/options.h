#pragma once

#include <cstddef>
#include <optional>

#include "base/keywords.h"
#include "datamatrix/schemes.h"
#include "datamatrix/symbol_sizes.h"

namespace barcode::datamatrix {

struct Options {
  // The scheme of the whole text; nothing: the schemes that take the fewest codewords.
  std::optional<Scheme> scheme = Scheme::kAscii;
  // A place in kSymbolSizes; nothing: the smallest square that holds the text.
  std::optional<std::size_t> size = std::nullopt;
};

inline constexpr Keywords<Scheme, kSchemes.size()> kSchemeKeywords = {{{"ASCII", Scheme::kAscii},
                                                                       {"C40", Scheme::kC40},
                                                                       {"TEXT", Scheme::kText},
                                                                       {"X12", Scheme::kX12},
                                                                       {"EDIFACT", Scheme::kEdifact},
                                                                       {"BASE256", Scheme::kBase256}}};

// Rows by columns.
inline constexpr Keywords<std::size_t, kSymbolSizes.size()> kSizeKeywords = {
    {{"10x10", 0},  {"12x12", 1},  {"14x14", 2},    {"16x16", 3},    {"18x18", 4},    {"20x20", 5},
     {"22x22", 6},  {"24x24", 7},  {"26x26", 8},    {"32x32", 9},    {"36x36", 10},   {"40x40", 11},
     {"44x44", 12}, {"48x48", 13}, {"52x52", 14},   {"64x64", 15},   {"72x72", 16},   {"80x80", 17},
     {"88x88", 18}, {"96x96", 19}, {"104x104", 20}, {"120x120", 21}, {"132x132", 22}, {"144x144", 23},
     {"8x18", 24},  {"8x32", 25},  {"12x26", 26},   {"12x36", 27},   {"16x36", 28},   {"16x48", 29}}};

}  // namespace barcode::datamatrix
