#include "datamatrix/symbol_attributes.h"

#include <gtest/gtest.h>

namespace barcode {
namespace {

int DataCodewords(int size) {
  return LookUpSymbolAttribute(SymbolAttribute::kDataCodewords, size);
}

TEST(SymbolAttributes, OutsideTheTableIsMinusOne) {
  EXPECT_EQ(LookUpSymbolAttribute(SymbolAttribute::kRows, -1), -1);
  EXPECT_EQ(LookUpSymbolAttribute(SymbolAttribute::kRows, 30), -1);
  EXPECT_EQ(LookUpSymbolAttribute(SymbolAttribute::kDataCodewords, kAutomaticSquareSize), -1);
  EXPECT_EQ(LookUpSymbolAttribute(static_cast<SymbolAttribute>(-1), 0), -1);
  EXPECT_EQ(LookUpSymbolAttribute(static_cast<SymbolAttribute>(kSymbolAttributes), 0), -1);
  EXPECT_EQ(MappingRows(30), -1);
  EXPECT_EQ(MappingColumns(-1), -1);
}

TEST(SymbolAttributes, RowsOfTheStandard) {
  struct Row {
    int size, rows, columns, regionRows, regionColumns, across, down, blocks, blockData, blockError, data;
  };
  constexpr Row kRows[] = {
      {0, 10, 10, 8, 8, 1, 1, 1, 3, 5, 3},
      {9, 32, 32, 14, 14, 2, 2, 1, 62, 36, 62},
      {23, 144, 144, 22, 22, 6, 6, 10, 156, 62, 1558},
      {24, 8, 18, 6, 16, 1, 1, 1, 5, 7, 5},
      {29, 16, 48, 14, 22, 2, 1, 1, 49, 28, 49},
  };
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.size);
    EXPECT_EQ(LookUpSymbolAttribute(SymbolAttribute::kRows, row.size), row.rows);
    EXPECT_EQ(LookUpSymbolAttribute(SymbolAttribute::kColumns, row.size), row.columns);
    EXPECT_EQ(LookUpSymbolAttribute(SymbolAttribute::kRegionRows, row.size), row.regionRows);
    EXPECT_EQ(LookUpSymbolAttribute(SymbolAttribute::kRegionColumns, row.size), row.regionColumns);
    EXPECT_EQ(LookUpSymbolAttribute(SymbolAttribute::kHorizontalRegions, row.size), row.across);
    EXPECT_EQ(LookUpSymbolAttribute(SymbolAttribute::kVerticalRegions, row.size), row.down);
    EXPECT_EQ(LookUpSymbolAttribute(SymbolAttribute::kInterleavedBlocks, row.size), row.blocks);
    EXPECT_EQ(LookUpSymbolAttribute(SymbolAttribute::kBlockDataCodewords, row.size), row.blockData);
    EXPECT_EQ(LookUpSymbolAttribute(SymbolAttribute::kBlockErrorCodewords, row.size), row.blockError);
    EXPECT_EQ(DataCodewords(row.size), row.data);
  }
}

TEST(SymbolAttributes, RectangularSizesHaveOneRowOfRegions) {
  for (int size = kSquareSizes; size < kSymbolSizes; ++size) {
    EXPECT_EQ(LookUpSymbolAttribute(SymbolAttribute::kVerticalRegions, size), 1);
  }
}

TEST(SelectSize, NoCodewordsNoSize) {
  EXPECT_EQ(SelectSize(0, kAutomaticSquareSize), kNoSize);
  EXPECT_EQ(SelectSize(0, 5), kNoSize);
}

TEST(SelectSize, FixedSizeHoldsItsCapacity) {
  for (int size = 0; size < kSymbolSizes; ++size) {
    const auto capacity = static_cast<std::size_t>(DataCodewords(size));
    EXPECT_EQ(SelectSize(1, size), size);
    EXPECT_EQ(SelectSize(capacity, size), size);
    EXPECT_EQ(SelectSize(capacity + 1, size), kNoSize);
  }
}

TEST(SelectSize, AutomaticTakesTheSmallestOfItsShape) {
  for (const int option : {kAutomaticSquareSize, kAutomaticRectangularSize}) {
    const int begin = option == kAutomaticSquareSize ? 0 : kSquareSizes;
    const int end = option == kAutomaticSquareSize ? kSquareSizes : kSymbolSizes;
    std::size_t count = 1;
    for (int size = begin; size < end; ++size) {
      for (; count <= static_cast<std::size_t>(DataCodewords(size)); ++count) {
        ASSERT_EQ(SelectSize(count, option), size) << count;
      }
    }
    EXPECT_EQ(SelectSize(count, option), kNoSize);
  }
}

TEST(SelectSize, OtherOptionsSelectNothing) {
  for (const int option : {-1, -4, 30, 1000}) {
    EXPECT_EQ(SelectSize(1, option), kNoSize) << option;
  }
}

}  // namespace
}  // namespace barcode
