#pragma once

#include <cstdint>
#include <string_view>

#include "base/run_vector.h"

namespace barcode {

// Appends the elements of a character that is written as decimal digits, one digit per element width.
inline void AppendWidths(RunVector& pattern, std::string_view widths) {
  for (const char digit : widths) {
    pattern.push_back(static_cast<std::uint32_t>(digit - '0'));
  }
}

// Modules of a width string.
constexpr unsigned ModuleCount(std::string_view widths) {
  unsigned modules = 0;
  for (const char digit : widths) {
    modules += static_cast<unsigned>(digit - '0');
  }
  return modules;
}

}  // namespace barcode
