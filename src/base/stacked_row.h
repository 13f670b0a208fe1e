#pragma once

#include <cstddef>
#include <string>

namespace barcode {

// A row that shares the height left over by the others.
inline constexpr int kSharedHeight = -1;

// One row of a symbol. `widths` holds element widths in modules as digits '0' to '9', bars and spaces in
// turn, first a bar; '0' is an element that is not there, so that a row can begin with a space ("01...") and
// a run of ten or more modules can be written ("903" is twelve).
struct DataBarRow {
  std::string widths;
  int height;  // in modules, or kSharedHeight

  bool operator==(const DataBarRow&) const = default;
};

// The sum of a row's digits.
inline std::size_t DataBarRowModules(const std::string& widths) {
  std::size_t modules = 0;
  for (const char digit : widths) {
    modules += static_cast<std::size_t>(digit - '0');
  }
  return modules;
}

}  // namespace barcode
