#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace barcode::tool {

// The cells of one row of a table (RFC 4180), without quotes around them.
struct TableRow {
  std::vector<std::string> cells;
  // What is wrong with it, one sentence; the cells are then those before.
  std::optional<std::string> problem;
};

TableRow CellsOf(std::string_view row);

}  // namespace barcode::tool
