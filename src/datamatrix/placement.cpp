#include "datamatrix/placement.h"

#include <array>
#include <cstddef>
#include <utility>
#include <vector>

namespace barcode::datamatrix {
namespace {

struct Cell {
  int row;
  int column;
};

// The eight modules of a codeword, most significant bit first. Rows and columns of the standard shape are
// relative to its anchor; those of the corner shapes are absolute, negative ones counted from the far edge.
using Shape = std::array<Cell, 8>;

constexpr Shape kStandardShape = {
    {{-2, -2}, {-2, -1}, {-1, -2}, {-1, -1}, {-1, 0}, {0, -2}, {0, -1}, {0, 0}}};
constexpr Shape kCorner1 = {{{-1, 0}, {-1, 1}, {-1, 2}, {0, -2}, {0, -1}, {1, -1}, {2, -1}, {3, -1}}};
constexpr Shape kCorner2 = {{{-3, 0}, {-2, 0}, {-1, 0}, {0, -4}, {0, -3}, {0, -2}, {0, -1}, {1, -1}}};
constexpr Shape kCorner3 = {{{-3, 0}, {-2, 0}, {-1, 0}, {0, -2}, {0, -1}, {1, -1}, {2, -1}, {3, -1}}};
constexpr Shape kCorner4 = {{{-1, 0}, {-1, -1}, {0, -3}, {0, -2}, {0, -1}, {1, -3}, {1, -2}, {1, -1}}};

class Placer {
 public:
  Placer(std::span<const std::uint8_t> codewords, int rows, int columns)
      : m_codewords(codewords),
        m_rows(rows),
        m_columns(columns),
        m_taken(static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns)),
        m_mapping(columns, rows) {}

  ModuleMatrix Run() {
    int row = 4;
    int column = 0;
    do {
      PlaceCorners(row, column);
      SweepUp(row, column);
      SweepDown(row, column);
    } while (row < m_rows || column < m_columns);
    FillLowerRight();
    return std::move(m_mapping);
  }

 private:
  void PlaceCorners(int row, int column) {
    if (row == m_rows && column == 0) {
      PlaceCorner(kCorner1);
    }
    if (row == m_rows - 2 && column == 0 && m_columns % 4 != 0) {
      PlaceCorner(kCorner2);
    }
    if (row == m_rows - 2 && column == 0 && m_columns % 8 == 4) {
      PlaceCorner(kCorner3);
    }
    if (row == m_rows + 4 && column == 2 && m_columns % 8 == 0) {
      PlaceCorner(kCorner4);
    }
  }

  void SweepUp(int& row, int& column) {
    do {
      if (row < m_rows && column >= 0 && !Taken({row, column})) {
        PlaceStandard(row, column);
      }
      row -= 2;
      column += 2;
    } while (row >= 0 && column < m_columns);
    row += 1;
    column += 3;
  }

  void SweepDown(int& row, int& column) {
    do {
      if (row >= 0 && column < m_columns && !Taken({row, column})) {
        PlaceStandard(row, column);
      }
      row += 2;
      column -= 2;
    } while (row < m_rows && column >= 0);
    row += 3;
    column += 1;
  }

  void PlaceStandard(int anchorRow, int anchorColumn) {
    PlaceCodeword(kStandardShape, [&](Cell cell) {
      return Wrap({anchorRow + cell.row, anchorColumn + cell.column});
    });
  }

  void PlaceCorner(const Shape& shape) {
    PlaceCodeword(shape, [&](Cell cell) {
      return Cell{(cell.row + m_rows) % m_rows, (cell.column + m_columns) % m_columns};
    });
  }

  // A module beyond the upper or left edge continues at the opposite one, shifted along it.
  Cell Wrap(Cell cell) const {
    if (cell.row < 0) {
      cell.row += m_rows;
      cell.column += 4 - (m_rows + 4) % 8;
    }
    if (cell.column < 0) {
      cell.column += m_columns;
      cell.row += 4 - (m_columns + 4) % 8;
    }
    return cell;
  }

  template <class Locate>
  void PlaceCodeword(const Shape& shape, Locate locate) {
    const unsigned codeword = m_codewords[m_next++];
    unsigned mask = 0x80;
    for (const Cell& relative : shape) {
      Set(locate(relative), (codeword & mask) != 0);
      mask >>= 1U;
    }
  }

  // Four cells are left over in some sizes; they get a fixed pattern.
  void FillLowerRight() {
    if (Taken({m_rows - 1, m_columns - 1})) {
      return;
    }
    Set({m_rows - 1, m_columns - 1}, true);
    Set({m_rows - 2, m_columns - 2}, true);
    Set({m_rows - 1, m_columns - 2}, false);
    Set({m_rows - 2, m_columns - 1}, false);
  }

  void Set(Cell cell, bool dark) {
    m_taken[Index(cell)] = true;
    m_mapping.Set(cell.column, cell.row, dark);
  }

  bool Taken(Cell cell) const { return m_taken[Index(cell)]; }

  std::size_t Index(Cell cell) const {
    return static_cast<std::size_t>(cell.row) * static_cast<std::size_t>(m_columns) +
           static_cast<std::size_t>(cell.column);
  }

  std::span<const std::uint8_t> m_codewords;
  int m_rows;
  int m_columns;
  std::size_t m_next = 0;
  std::vector<bool> m_taken;
  ModuleMatrix m_mapping;
};

// Left and lower border of a region: solid. Upper and right border: alternating, the corner they share light.
bool BorderModule(int column, int row, int lastColumn, int lastRow) {
  if (column == 0 || row == lastRow) {
    return true;
  }
  return column == lastColumn ? row % 2 == 1 : column % 2 == 0;
}

}  // namespace

ModuleMatrix PlaceModules(std::span<const std::uint8_t> codewords, const SymbolSize& size,
                          EncoderLines& lines) {
  if (codewords.size() != size.Codewords()) {
    lines.Add("Error with module placement ECC 200");
    return {};
  }
  return Placer(codewords, size.MappingRows(), size.MappingColumns()).Run();
}

ModuleMatrix FrameRegions(const ModuleMatrix& mapping, const SymbolSize& size) {
  if (mapping.Rows() != size.MappingRows() || mapping.Columns() != size.MappingColumns()) {
    return {};
  }
  const int lastRow = size.regionRows + 1;
  const int lastColumn = size.regionColumns + 1;
  ModuleMatrix symbol(size.columns, size.rows);
  for (int x = 0; x < symbol.Columns(); ++x) {
    const int column = x % (lastColumn + 1);
    const int bordersLeft = 2 * (x / (lastColumn + 1)) + 1;
    for (int y = 0; y < symbol.Rows(); ++y) {
      const int row = y % (lastRow + 1);
      const int bordersAbove = 2 * (y / (lastRow + 1)) + 1;
      const bool border = column == 0 || column == lastColumn || row == 0 || row == lastRow;
      symbol.Set(x, y,
                 border ? BorderModule(column, row, lastColumn, lastRow)
                        : mapping.At(x - bordersLeft, y - bordersAbove));
    }
  }
  return symbol;
}

}  // namespace barcode::datamatrix
