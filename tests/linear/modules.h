#pragma once

#include <string>

#include "base/run_vector.h"

namespace barcode {

// The modules of a linear pattern as a text, 1 = bar.
inline std::string Modules(const RunVector& runs) {
  std::string modules;
  for (std::size_t i = 0; i < runs.size(); ++i) {
    modules.append(runs[i], i % 2 == 0 ? '1' : '0');
  }
  return modules;
}

}  // namespace barcode
