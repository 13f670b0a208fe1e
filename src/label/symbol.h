#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "base/four_state.h"
#include "base/module_matrix.h"
#include "base/run_vector.h"
#include "base/stacked_row.h"
#include "label/error.h"
#include "label/request.h"
#include "layout/guard_bar_layout.h"

// A request's symbol, in modules.
namespace barcode::label {

// No valid text of any type has more bytes: what is longer is refused before it is looked at. It is also the
// limit of the linear symbologies that have none of their own.
inline constexpr std::size_t kMostTextBytes = 10'000;

// One row of bars. Begins with a bar, of no modules where the symbol begins with a space.
struct LinearSymbol {
  RunVector pattern;
  const GuardBarStyle* guard = nullptr;  // EAN and UPC: which runs are guards, where the digits stand
};

// GS1 DataBar in rows, separators included; rows without a height share what is left.
struct StackedSymbol {
  std::vector<StackedRow> rows;
  int defaultHeight = 0;  // modules of all rows in the standard's proportions
};

// 67 bars of one module at a pitch of two; long bars are six modules high.
struct FourStateBars {
  std::vector<FourState> bars;
};

struct MatrixSymbol {
  ModuleMatrix matrix;
  int rowHeight = 1;  // modules; PDF417's rows are higher than its modules are wide
};

struct Symbol {
  std::variant<LinearSymbol, StackedSymbol, FourStateBars, MatrixSymbol> modules;
  std::string text;                // as encoded, check digit included, UTF-8; GS1: with parentheses. Bytes
                                   // that are no UTF-8 are shown as U+FFFD
  std::vector<std::string> lines;  // the human-readable text, UTF-8: one line, or the payment slip's two; of
                                   // EAN and UPC the digits. None for matrix and postal codes
  std::vector<Warning> warnings;   // kGs1Association
};

// Encodes the request's text by the standards. The request has been validated (fields.h). Throws LabelError
// with kBadText and kTooLong on the field of the text, and std::bad_alloc.
Symbol EncodeSymbol(Type type, const Request& request);

}  // namespace barcode::label
