#pragma once

#include <cstdint>

#include "base/stacked_row.h"
#include "label/request.h"
#include "label/symbol.h"
#include "label/types.h"
#include "layout/guard_bar_layout.h"

namespace barcode::label {

// Height in modules of bars for which neither request nor standard has one.
inline constexpr int kNaturalBarHeight = 30;

// What a symbol needs of its picture, in modules.
struct Needs {
  std::int64_t columns = 0;
  // The rows of a symbol whose height follows from its modules; 0 for bars as high as one likes.
  std::int64_t rows = 0;
  std::int64_t leastHeight = 0;  // of the bars
  double naturalHeight = 0;      // of the bars
  std::int64_t guardReach = 0;   // of the guard bars below the others
  const GuardBarStyle* guard = nullptr;

  bool OwnHeight() const { return rows > 0; }
};

Needs NeedsOf(const TypeInfo& type, const Request& request, const Symbol& symbol);

// A row of a stacked symbol that separates others is as high as its modules say.
bool IsSeparator(const StackedRow& row);

// The share of any other row in the height that the separators leave; 0 for separators.
int ShareOf(const StackedRow& row);

}  // namespace barcode::label
