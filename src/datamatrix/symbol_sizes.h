#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <span>

namespace barcode::datamatrix {

// A row of the ECC 200 symbol attribute table of ISO/IEC 16022.
struct SymbolSize {
  int rows;
  int columns;
  int regionRows;     // of one data region, without its border
  int regionColumns;  // likewise
  int horizontalRegions;
  int verticalRegions;
  std::size_t blocks;               // interleaved for error correction
  std::size_t blockDataCodewords;   // of the longest block: 144x144 has two blocks of one codeword less
  std::size_t blockErrorCodewords;  // of every block
  std::size_t dataCodewords;        // of the whole symbol

  // The mapping matrix: the data regions side by side, without their borders.
  constexpr int MappingRows() const { return regionRows * verticalRegions; }
  constexpr int MappingColumns() const { return regionColumns * horizontalRegions; }

  // Data and error correction of the whole symbol.
  constexpr std::size_t Codewords() const { return dataCodewords + blocks * blockErrorCodewords; }
};

// The square sizes, then the rectangular ones, smallest first.
inline constexpr std::array<SymbolSize, 30> kSymbolSizes = {{
    {10, 10, 8, 8, 1, 1, 1, 3, 5, 3},           {12, 12, 10, 10, 1, 1, 1, 5, 7, 5},
    {14, 14, 12, 12, 1, 1, 1, 8, 10, 8},        {16, 16, 14, 14, 1, 1, 1, 12, 12, 12},
    {18, 18, 16, 16, 1, 1, 1, 18, 14, 18},      {20, 20, 18, 18, 1, 1, 1, 22, 18, 22},
    {22, 22, 20, 20, 1, 1, 1, 30, 20, 30},      {24, 24, 22, 22, 1, 1, 1, 36, 24, 36},
    {26, 26, 24, 24, 1, 1, 1, 44, 28, 44},      {32, 32, 14, 14, 2, 2, 1, 62, 36, 62},
    {36, 36, 16, 16, 2, 2, 1, 86, 42, 86},      {40, 40, 18, 18, 2, 2, 1, 114, 48, 114},
    {44, 44, 20, 20, 2, 2, 1, 144, 56, 144},    {48, 48, 22, 22, 2, 2, 1, 174, 68, 174},
    {52, 52, 24, 24, 2, 2, 2, 102, 42, 204},    {64, 64, 14, 14, 4, 4, 2, 140, 56, 280},
    {72, 72, 16, 16, 4, 4, 4, 92, 36, 368},     {80, 80, 18, 18, 4, 4, 4, 114, 48, 456},
    {88, 88, 20, 20, 4, 4, 4, 144, 56, 576},    {96, 96, 22, 22, 4, 4, 4, 174, 68, 696},
    {104, 104, 24, 24, 4, 4, 6, 136, 56, 816},  {120, 120, 18, 18, 6, 6, 6, 175, 68, 1050},
    {132, 132, 20, 20, 6, 6, 8, 163, 62, 1304}, {144, 144, 22, 22, 6, 6, 10, 156, 62, 1558},
    {8, 18, 6, 16, 1, 1, 1, 5, 7, 5},           {8, 32, 6, 14, 2, 1, 1, 10, 11, 10},
    {12, 26, 10, 24, 1, 1, 1, 16, 14, 16},      {12, 36, 10, 16, 2, 1, 1, 22, 18, 22},
    {16, 36, 14, 16, 2, 1, 1, 32, 24, 32},      {16, 48, 14, 22, 2, 1, 1, 49, 28, 49},
}};

inline constexpr std::size_t kSquareSizes = 24;

static_assert(std::all_of(kSymbolSizes.begin(), kSymbolSizes.end(), [](const SymbolSize& size) {
  return size.rows == size.MappingRows() + 2 * size.verticalRegions &&
         size.columns == size.MappingColumns() + 2 * size.horizontalRegions &&
         size.Codewords() == static_cast<std::size_t>(size.MappingRows() * size.MappingColumns() / 8) &&
         size.blockDataCodewords == (size.dataCodewords + size.blocks - 1) / size.blocks;
}));

// The sizes that a text may be given, in the order of preference: the one at that place in the table, which
// must be there, or all squares.
constexpr std::span<const SymbolSize> AdmittedSizes(std::optional<std::size_t> place) {
  const std::span<const SymbolSize> sizes = kSymbolSizes;
  return place ? sizes.subspan(*place, 1) : sizes.first(kSquareSizes);
}

// The first of the sizes that holds the codewords; null when none does and for no codewords.
constexpr const SymbolSize* FindSize(std::span<const SymbolSize> sizes, std::size_t codewordCount) {
  for (const SymbolSize& size : sizes) {
    if (codewordCount > 0 && codewordCount <= size.dataCodewords) {
      return &size;
    }
  }
  return nullptr;
}

}  // namespace barcode::datamatrix
