#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "datamatrix/scheme_optimizer.h"

namespace barcode::datamatrix {

// The plans that may take fewer codewords than `limit`; among them, if any plan does, is one that takes the
// fewest. asciiLengths: see AsciiLengths. Time and memory are linear.
std::vector<SchemePlan> ShortestPlans(std::string_view text, const std::vector<std::size_t>& asciiLengths,
                                      std::size_t limit);

}  // namespace barcode::datamatrix
