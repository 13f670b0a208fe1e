#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace barcode {

// The modules of a two-dimensional symbol without quiet zone, true = dark. Stored column by column: column x
// holds its modules from top (y = 0) to bottom. A matrix of zero columns or rows is empty.
class ModuleMatrix {
 public:
  ModuleMatrix() = default;
  ModuleMatrix(int columns, int rows)
      : m_columns(columns),
        m_rows(rows),
        m_modules(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows)) {}

  int Columns() const { return m_columns; }
  int Rows() const { return m_rows; }
  bool Empty() const { return m_modules.empty(); }

  // Unchecked: 0 <= x < Columns(), 0 <= y < Rows().
  bool At(int x, int y) const { return m_modules[Index(x, y)] != 0; }
  void Set(int x, int y, bool dark) { m_modules[Index(x, y)] = dark ? 1 : 0; }

  // The modules of column x from top to bottom, 1 = dark, 0 = light.
  std::span<std::uint8_t> Column(int x) {
    return std::span(m_modules).subspan(Index(x, 0), static_cast<std::size_t>(m_rows));
  }
  std::span<const std::uint8_t> Column(int x) const {
    return std::span(m_modules).subspan(Index(x, 0), static_cast<std::size_t>(m_rows));
  }

  std::size_t CountDark() const {
    return static_cast<std::size_t>(std::count(m_modules.begin(), m_modules.end(), std::uint8_t{1}));
  }

  bool operator==(const ModuleMatrix&) const = default;

 private:
  std::size_t Index(int x, int y) const {
    return static_cast<std::size_t>(x) * static_cast<std::size_t>(m_rows) + static_cast<std::size_t>(y);
  }

  int m_columns = 0;
  int m_rows = 0;
  std::vector<std::uint8_t> m_modules;
};

}  // namespace barcode
