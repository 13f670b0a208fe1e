#include "datamatrix/symbol_attributes.h"

#include <array>

namespace barcode {
namespace {

using AttributeRow = std::array<int, kSymbolAttributes>;

// ISO/IEC 16022, ECC 200 symbol attributes, in the order of SymbolAttribute.
constexpr std::array<AttributeRow, kSymbolSizes> kTable = {{
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

constexpr int At(const AttributeRow& row, SymbolAttribute attribute) {
  return row[static_cast<std::size_t>(attribute)];
}

constexpr bool Consistent(const AttributeRow& row) {
  const int mappingRows = At(row, SymbolAttribute::kRegionRows) * At(row, SymbolAttribute::kVerticalRegions);
  const int mappingColumns =
      At(row, SymbolAttribute::kRegionColumns) * At(row, SymbolAttribute::kHorizontalRegions);
  const int blocks = At(row, SymbolAttribute::kInterleavedBlocks);
  const int data = At(row, SymbolAttribute::kDataCodewords);
  const int blockData = At(row, SymbolAttribute::kBlockDataCodewords);
  return At(row, SymbolAttribute::kRows) == mappingRows + 2 * At(row, SymbolAttribute::kVerticalRegions) &&
         At(row, SymbolAttribute::kColumns) ==
             mappingColumns + 2 * At(row, SymbolAttribute::kHorizontalRegions) &&
         data + blocks * At(row, SymbolAttribute::kBlockErrorCodewords) == mappingRows * mappingColumns / 8 &&
         blockData == (data + blocks - 1) / blocks;
}

constexpr bool AllConsistent() {
  for (const AttributeRow& row : kTable) {
    if (!Consistent(row)) {
      return false;
    }
  }
  return true;
}
static_assert(AllConsistent());

}  // namespace

int LookUpSymbolAttribute(SymbolAttribute attribute, int sizeIndex) {
  const int column = static_cast<int>(attribute);
  if (sizeIndex < 0 || sizeIndex >= kSymbolSizes || column < 0 || column >= kSymbolAttributes) {
    return -1;
  }
  return At(kTable[static_cast<std::size_t>(sizeIndex)], attribute);
}

int MappingRows(int sizeIndex) {
  const int rows = LookUpSymbolAttribute(SymbolAttribute::kRegionRows, sizeIndex);
  return rows < 0 ? -1 : rows * LookUpSymbolAttribute(SymbolAttribute::kVerticalRegions, sizeIndex);
}

int MappingColumns(int sizeIndex) {
  const int columns = LookUpSymbolAttribute(SymbolAttribute::kRegionColumns, sizeIndex);
  return columns < 0 ? -1 : columns * LookUpSymbolAttribute(SymbolAttribute::kHorizontalRegions, sizeIndex);
}

SizeRange AdmittedSizes(int sizeOption) {
  if (sizeOption == kAutomaticSquareSize) {
    return {0, kSquareSizes};
  }
  if (sizeOption == kAutomaticRectangularSize) {
    return {kSquareSizes, kSymbolSizes};
  }
  if (sizeOption >= 0 && sizeOption < kSymbolSizes) {
    return {sizeOption, sizeOption + 1};
  }
  return {0, 0};
}

int SelectSize(std::size_t codewordCount, int sizeOption) {
  if (codewordCount < 1) {
    return kNoSize;
  }
  const SizeRange sizes = AdmittedSizes(sizeOption);
  for (int size = sizes.begin; size < sizes.end; ++size) {
    if (codewordCount <=
        static_cast<std::size_t>(LookUpSymbolAttribute(SymbolAttribute::kDataCodewords, size))) {
      return size;
    }
  }
  return kNoSize;
}

}  // namespace barcode
