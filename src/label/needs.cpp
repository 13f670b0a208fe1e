#include "label/needs.h"

#include <algorithm>
#include <cstddef>
#include <variant>
#include <vector>

#include "layout/linear_layout.h"
#include "layout/stacked_layout.h"

namespace barcode::label {
namespace {

// Heights in modules.
constexpr int kLeastBarHeight = 5;
constexpr double kNaturalHeightOfWidth = 0.15;
constexpr int kGuardReach = 5;
constexpr int kLongBarHeight = 6;
constexpr int kFourStatePitch = 2;

// The height at which the lowest sharing row has kLeastBarHeight modules.
std::int64_t LeastStackedHeight(const std::vector<StackedRow>& rows) {
  std::int64_t separators = 0;
  std::int64_t shares = 0;
  int smallestShare = 0;
  for (const StackedRow& row : rows) {
    const int share = ShareOf(row);
    shares += share;
    separators += share == 0 ? *row.height : 0;
    smallestShare = share > 0 && (smallestShare == 0 || share < smallestShare) ? share : smallestShare;
  }
  return separators + (shares * kLeastBarHeight + smallestShare - 1) / std::max(1, smallestShare);
}

double NaturalBars(const TypeInfo& type, std::int64_t columns) {
  if (type.standardHeight > 0) {
    return type.standardHeight;
  }
  return std::max<double>(kNaturalBarHeight, static_cast<double>(columns) * kNaturalHeightOfWidth);
}

Needs NeedsOfModules(const TypeInfo& type, const Request& request, const LinearSymbol& symbol) {
  Needs needs;
  needs.columns = static_cast<std::int64_t>(TotalModules(symbol.pattern));
  needs.leastHeight = kLeastBarHeight;
  needs.naturalHeight = NaturalBars(type, needs.columns);
  needs.guard = symbol.guard;
  needs.guardReach = symbol.guard != nullptr && request.extendedGuard.value_or(true) ? kGuardReach : 0;
  return needs;
}

Needs NeedsOfModules(const TypeInfo& type, const Request& /*request*/, const StackedSymbol& symbol) {
  Needs needs;
  needs.columns = static_cast<std::int64_t>(WidestRow(symbol.rows));
  needs.leastHeight = LeastStackedHeight(symbol.rows);
  needs.naturalHeight = std::max<double>(symbol.defaultHeight, NaturalBars(type, needs.columns));
  return needs;
}

Needs NeedsOfModules(const TypeInfo& /*type*/, const Request& /*request*/, const FourStateBars& symbol) {
  Needs needs;
  needs.columns = static_cast<std::int64_t>(symbol.bars.size()) * kFourStatePitch - 1;
  needs.rows = kLongBarHeight;
  return needs;
}

Needs NeedsOfModules(const TypeInfo& /*type*/, const Request& /*request*/, const MatrixSymbol& symbol) {
  Needs needs;
  needs.columns = symbol.matrix.Columns();
  needs.rows = std::int64_t{symbol.matrix.Rows()} * symbol.rowHeight;
  return needs;
}

}  // namespace

Needs NeedsOf(const TypeInfo& type, const Request& request, const Symbol& symbol) {
  return std::visit([&](const auto& modules) { return NeedsOfModules(type, request, modules); },
                    symbol.modules);
}

bool IsSeparator(const StackedRow& row) {
  return row.height.has_value() && *row.height < kLeastBarHeight;
}

int ShareOf(const StackedRow& row) {
  return IsSeparator(row) ? 0 : row.height.value_or(1);
}

}  // namespace barcode::label
