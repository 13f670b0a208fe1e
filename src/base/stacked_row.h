#pragma once

#include <optional>

#include "base/run_vector.h"

namespace barcode {

// One row of a stacked symbol. Its widths begin with a bar; 0 is an element that is not there, so that a row
// can begin with a space (0, 1, ...) and a run of ten or more modules can be drawn, and adjusted, in parts
// (9, 0, 3 are twelve).
struct StackedRow {
  RunVector widths;
  std::optional<int> height;  // in modules; without one the row shares what the others leave

  bool operator==(const StackedRow&) const = default;
};

}  // namespace barcode
