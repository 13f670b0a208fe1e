#pragma once

#include <cstddef>

namespace barcode {

// The columns of the ECC 200 symbol attribute table of ISO/IEC 16022.
enum class SymbolAttribute : int {
  kRows,
  kColumns,
  kRegionRows,     // of one data region, without its border
  kRegionColumns,  // likewise
  kHorizontalRegions,
  kVerticalRegions,
  kInterleavedBlocks,
  kBlockDataCodewords,  // of the longest block: 144x144 has two blocks of one codeword less
  kBlockErrorCodewords,
  kDataCodewords,  // of the whole symbol
};

inline constexpr int kSymbolAttributes = 10;

// Size indices: 0 to 23 square, 24 to 29 rectangular, each smallest first.
inline constexpr int kSquareSizes = 24;
inline constexpr int kSymbolSizes = 30;

// The size option: a size index or one of these.
inline constexpr int kAutomaticSquareSize = -2;
inline constexpr int kAutomaticRectangularSize = -3;

// Result of a selection that found no size.
inline constexpr int kNoSize = -1;

// -1 for an attribute or a size index outside the table.
int LookUpSymbolAttribute(SymbolAttribute attribute, int sizeIndex);

// Size of the mapping matrix: the data regions side by side, without their borders. -1 for no size.
int MappingRows(int sizeIndex);
int MappingColumns(int sizeIndex);

// The sizes that a size option admits, as a range of indices in the order of preference; empty for an option
// that names no size.
struct SizeRange {
  int begin;
  int end;
};
SizeRange AdmittedSizes(int sizeOption);

// The first admitted size that holds the codewords, or kNoSize.
int SelectSize(std::size_t codewordCount, int sizeOption);

}  // namespace barcode
