#include "datamatrix/symbol_sizes.h"

#include <gtest/gtest.h>

namespace barcode::datamatrix {
namespace {

TEST(SymbolSizes, RowsOfTheStandard) {
  struct Row {
    std::size_t place;
    int rows, columns, regionRows, regionColumns, across, down;
    std::size_t blocks, blockData, blockError, data;
  };
  constexpr Row kRows[] = {
      {0, 10, 10, 8, 8, 1, 1, 1, 3, 5, 3},
      {9, 32, 32, 14, 14, 2, 2, 1, 62, 36, 62},
      {23, 144, 144, 22, 22, 6, 6, 10, 156, 62, 1558},
      {24, 8, 18, 6, 16, 1, 1, 1, 5, 7, 5},
      {29, 16, 48, 14, 22, 2, 1, 1, 49, 28, 49},
  };
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.place);
    const SymbolSize& size = kSymbolSizes[row.place];
    EXPECT_EQ(size.rows, row.rows);
    EXPECT_EQ(size.columns, row.columns);
    EXPECT_EQ(size.regionRows, row.regionRows);
    EXPECT_EQ(size.regionColumns, row.regionColumns);
    EXPECT_EQ(size.horizontalRegions, row.across);
    EXPECT_EQ(size.verticalRegions, row.down);
    EXPECT_EQ(size.blocks, row.blocks);
    EXPECT_EQ(size.blockDataCodewords, row.blockData);
    EXPECT_EQ(size.blockErrorCodewords, row.blockError);
    EXPECT_EQ(size.dataCodewords, row.data);
  }
}

TEST(SymbolSizes, SquaresFirstThenRectanglesOfOneRowOfRegions) {
  for (std::size_t place = 0; place < kSymbolSizes.size(); ++place) {
    SCOPED_TRACE(place);
    const SymbolSize& size = kSymbolSizes[place];
    EXPECT_EQ(size.rows == size.columns, place < kSquareSizes);
    EXPECT_TRUE(place < kSquareSizes || size.verticalRegions == 1);
  }
}

TEST(FindSize, NoCodewordsNoSize) {
  EXPECT_EQ(FindSize(AdmittedSizes({}), 0), nullptr);
  EXPECT_EQ(FindSize(AdmittedSizes(5), 0), nullptr);
}

TEST(FindSize, FixedSizeHoldsItsCapacity) {
  for (std::size_t place = 0; place < kSymbolSizes.size(); ++place) {
    const std::size_t capacity = kSymbolSizes[place].dataCodewords;
    EXPECT_EQ(FindSize(AdmittedSizes(place), 1), &kSymbolSizes[place]);
    EXPECT_EQ(FindSize(AdmittedSizes(place), capacity), &kSymbolSizes[place]);
    EXPECT_EQ(FindSize(AdmittedSizes(place), capacity + 1), nullptr);
  }
}

TEST(FindSize, AutomaticTakesTheSmallestSquare) {
  std::size_t count = 1;
  for (std::size_t place = 0; place < kSquareSizes; ++place) {
    for (; count <= kSymbolSizes[place].dataCodewords; ++count) {
      ASSERT_EQ(FindSize(AdmittedSizes({}), count), &kSymbolSizes[place]) << count;
    }
  }
  EXPECT_EQ(FindSize(AdmittedSizes({}), count), nullptr);
}

}  // namespace
}  // namespace barcode::datamatrix
