#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace barcode {

inline constexpr std::size_t kQrMasks = 8;

// A symbol under all eight masks at once: bit k of a cell is the module's colour under mask k, 1 = dark.
// Stored column by column, like ModuleMatrix, with a border of light cells that the scoring may read.
class MaskCells {
 public:
  static constexpr std::uint8_t kDark = 0xFF;
  static constexpr std::uint8_t kLight = 0x00;

  explicit MaskCells(int size);

  int Size() const { return m_size; }
  std::uint8_t& At(int x, int y) { return m_cells[Index(x, y)]; }
  std::uint8_t At(int x, int y) const { return m_cells[Index(x, y)]; }

  // The cells of column x, from top to bottom; those of the next column follow. Readable from six columns
  // before the first one to eight cells after the last.
  std::uint8_t* Column(int x) { return &m_cells[Index(x, 0)]; }
  const std::uint8_t* Column(int x) const { return &m_cells[Index(x, 0)]; }

 private:
  static constexpr std::size_t kBorderColumns = 6;

  std::size_t Index(int x, int y) const {
    return (kBorderColumns + static_cast<std::size_t>(x)) * static_cast<std::size_t>(m_size) +
           static_cast<std::size_t>(y);
  }

  int m_size;
  std::vector<std::uint8_t> m_cells;
};

// The mask conditions of the modules of one column, from top to bottom. Bit k: whether mask k inverts the
// module.
std::span<const std::uint8_t> MaskConditions(int x);

// Penalty of every mask: runs, blocks, finder-like patterns and balance of dark modules. Three rules
// are simpler than those of ISO/IEC 18004, on purpose, and decide which mask wins: a finder-like pattern
// needs no light margin, the balance relates all dark modules to `dataBits`, the modules of the data region
// alone, and the format and version areas, not yet drawn, count as light.
std::array<unsigned, kQrMasks> MaskPenalties(const MaskCells& cells, int dataBits);

// The mask of the lowest penalty, the lowest number among equals.
int BestMask(const std::array<unsigned, kQrMasks>& penalties);

}  // namespace barcode
