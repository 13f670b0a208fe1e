#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "label/symbol.h"
#include "support/image.h"
#include "support/pattern.h"

namespace barcode::label {

// The rows of a symbol, each as its modules ('1' dark) and its height in modules.
struct ModuleRow {
  std::string modules;
  int height = 1;
};

inline std::vector<ModuleRow> ModuleRowsOf(const Symbol& symbol) {
  constexpr int kBarHeight = 40;
  std::vector<ModuleRow> rows;
  if (const auto* linear = std::get_if<LinearSymbol>(&symbol.modules)) {
    rows.push_back({test::ModuleText(linear->pattern), kBarHeight});
  } else if (const auto* stacked = std::get_if<StackedSymbol>(&symbol.modules)) {
    for (const auto& [widths, height] : stacked->rows) {
      rows.push_back({test::ModuleText(widths), height.value_or(kBarHeight)});
    }
  } else if (const auto* matrix = std::get_if<MatrixSymbol>(&symbol.modules)) {
    for (int y = 0; y < matrix->matrix.Rows(); ++y) {
      ModuleRow& row = rows.emplace_back(ModuleRow{{}, matrix->rowHeight});
      for (int x = 0; x < matrix->matrix.Columns(); ++x) {
        row.modules += matrix->matrix.At(x, y) ? '1' : '0';
      }
    }
  }
  return rows;
}

// The symbol in its colours, black on white, `scale` pixels a module, with light ground of twelve modules all
// round.
inline test::GreyImage PictureOf(const Symbol& symbol, int scale = 3) {
  constexpr int kQuiet = 12;
  const std::vector<ModuleRow> rows = ModuleRowsOf(symbol);
  std::size_t columns = 0;
  int height = 2 * kQuiet;
  for (const ModuleRow& row : rows) {
    columns = std::max(columns, row.modules.size());
    height += row.height;
  }
  const int width = static_cast<int>(columns) + 2 * kQuiet;
  test::GreyImage image{width * scale, height * scale, {}};
  image.pixels.assign(static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height), 255);
  int top = kQuiet * scale;
  for (const ModuleRow& row : rows) {
    for (int y = top; y < top + row.height * scale; ++y) {
      for (std::size_t x = 0; x < row.modules.size() * static_cast<std::size_t>(scale); ++x) {
        const std::size_t left = static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width);
        const bool dark = row.modules[x / static_cast<std::size_t>(scale)] == '1';
        image.pixels[left + static_cast<std::size_t>(kQuiet * scale) + x] = dark ? 0 : 255;
      }
    }
    top += row.height * scale;
  }
  return image;
}

}  // namespace barcode::label
