#include "datamatrix/placement.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

namespace barcode::datamatrix {
namespace {

using ::testing::ElementsAre;

using Codewords = std::vector<std::uint8_t>;

ModuleMatrix Place(const Codewords& codewords, const SymbolSize& size) {
  EncoderLines lines;
  ModuleMatrix mapping = PlaceModules(codewords, size, lines);
  EXPECT_TRUE(lines.Empty());
  return mapping;
}

// The cells that hold bit `bit` (1 = most significant) of codeword `number` (1 = first).
std::vector<std::pair<int, int>> CellsOf(std::size_t number, unsigned bit, const SymbolSize& size) {
  Codewords codewords(size.Codewords());
  const ModuleMatrix light = Place(codewords, size);
  codewords[number - 1] = static_cast<std::uint8_t>(0x80U >> (bit - 1));
  const ModuleMatrix mapping = Place(codewords, size);
  std::vector<std::pair<int, int>> cells;
  for (int y = 0; y < mapping.Rows(); ++y) {
    for (int x = 0; x < mapping.Columns(); ++x) {
      if (mapping.At(x, y) != light.At(x, y)) {
        cells.emplace_back(y, x);
      }
    }
  }
  return cells;
}

TEST(PlaceModules, MapOfThe10x10Symbol) {
  // ISO/IEC 16022 annex F: codeword and bit of each cell, 21 = codeword 2, bit 1.
  constexpr int kMap[8][8] = {{21, 22, 36, 37, 38, 43, 44, 45}, {23, 24, 25, 51, 52, 46, 47, 48},
                              {26, 27, 28, 53, 54, 55, 11, 12}, {15, 61, 62, 56, 57, 58, 13, 14},
                              {18, 63, 64, 65, 81, 82, 16, 17}, {72, 66, 67, 68, 83, 84, 85, 71},
                              {74, 75, 31, 32, 86, 87, 88, 73}, {77, 78, 33, 34, 35, 41, 42, 76}};
  for (int row = 0; row < 8; ++row) {
    for (int column = 0; column < 8; ++column) {
      const int cell = kMap[row][column];
      EXPECT_THAT(
          CellsOf(static_cast<std::size_t>(cell / 10), static_cast<unsigned>(cell % 10), kSymbolSizes[0]),
          ElementsAre(std::pair(row, column)));
    }
  }
}

TEST(PlaceModules, EveryBitOfEverySizeHasItsOwnCell) {
  for (const SymbolSize& size : kSymbolSizes) {
    SCOPED_TRACE(size.dataCodewords);
    // Numbering the bits in binary, one symbol per binary digit, tells where each bit went.
    const std::size_t bits = size.Codewords() * 8;
    std::vector<std::size_t> bitAt(static_cast<std::size_t>(size.MappingRows() * size.MappingColumns()));
    for (std::size_t digit = 1; digit <= bits; digit <<= 1U) {
      Codewords codewords(size.Codewords());
      for (std::size_t bit = 0; bit < bits; ++bit) {
        if (((bit + 1) & digit) != 0) {
          codewords[bit / 8] |= static_cast<std::uint8_t>(0x80U >> bit % 8);
        }
      }
      const ModuleMatrix mapping = Place(codewords, size);
      const ModuleMatrix light = Place(Codewords(size.Codewords()), size);
      for (std::size_t cell = 0; cell < bitAt.size(); ++cell) {
        const int x = static_cast<int>(cell) % mapping.Columns();
        const int y = static_cast<int>(cell) / mapping.Columns();
        bitAt[cell] |= mapping.At(x, y) != light.At(x, y) ? digit : 0;
      }
    }
    std::vector<int> uses(bits + 1);
    for (const std::size_t bit : bitAt) {
      ++uses[bit];
    }
    EXPECT_EQ(uses[0], static_cast<int>(bitAt.size() - bits));  // the fixed cells
    EXPECT_EQ(std::count(uses.begin() + 1, uses.end(), 1), static_cast<std::ptrdiff_t>(bits));
  }
}

TEST(PlaceModules, FixedCellsOfTheLowerRightCorner) {
  // 12x12: 100 cells, 12 codewords.
  const ModuleMatrix mapping = Place(Codewords(12), kSymbolSizes[1]);
  EXPECT_TRUE(mapping.At(9, 9));
  EXPECT_TRUE(mapping.At(8, 8));
  EXPECT_FALSE(mapping.At(8, 9));
  EXPECT_FALSE(mapping.At(9, 8));
  const ModuleMatrix dark = Place(Codewords(12, 255), kSymbolSizes[1]);
  EXPECT_FALSE(dark.At(8, 9));
  EXPECT_FALSE(dark.At(9, 8));
}

TEST(PlaceModules, CornerCases) {
  // The codeword that a corner condition places, recognised by its most significant bit.
  struct Corner {
    const char* name;
    std::size_t size;
    std::pair<int, int> first;
    std::pair<int, int> last;
  };
  constexpr std::array<Corner, 4> kCorners = {{
      {"corner 1, mapping 12x12", 2, {11, 0}, {3, 11}},
      {"corner 2, mapping 14x14", 3, {11, 0}, {1, 13}},
      {"corner 3, mapping 6x28", 25, {3, 0}, {3, 27}},
      {"corner 4, mapping 14x32", 28, {13, 0}, {1, 31}},
  }};
  for (const Corner& corner : kCorners) {
    SCOPED_TRACE(corner.name);
    bool found = false;
    for (std::size_t number = 1; number <= kSymbolSizes[corner.size].Codewords(); ++number) {
      found = found || (CellsOf(number, 1, kSymbolSizes[corner.size]).front() == corner.first &&
                        CellsOf(number, 8, kSymbolSizes[corner.size]).front() == corner.last);
    }
    EXPECT_TRUE(found);
  }
}

TEST(PlaceModules, WrongNumberOfCodewordsIsTold) {
  EncoderLines lines;
  EXPECT_TRUE(PlaceModules(Codewords(7), kSymbolSizes[0], lines).Empty());
  EXPECT_TRUE(PlaceModules(Codewords(9), kSymbolSizes[0], lines).Empty());
  EXPECT_EQ(lines.Text(),
            "Error with module placement ECC 200\n"
            "Error with module placement ECC 200\n");
}

TEST(FrameRegions, EveryRegionOfEverySizeIsFramed) {
  for (const SymbolSize& size : kSymbolSizes) {
    SCOPED_TRACE(size.dataCodewords);
    const ModuleMatrix mapping = Place(Codewords(size.Codewords(), 0xA5), size);
    const ModuleMatrix symbol = FrameRegions(mapping, size);
    ASSERT_EQ(symbol.Columns(), size.columns);
    ASSERT_EQ(symbol.Rows(), size.rows);
    const int width = size.columns / size.horizontalRegions;
    const int height = size.rows / size.verticalRegions;
    for (int x = 0; x < symbol.Columns(); ++x) {
      for (int y = 0; y < symbol.Rows(); ++y) {
        const int column = x % width;
        const int row = y % height;
        bool expected = false;
        if (column == 0 || row == height - 1) {
          expected = true;
        } else if (row == 0) {
          expected = column % 2 == 0;
        } else if (column == width - 1) {
          expected = (height - 1 - row) % 2 == 0;
        } else {
          expected = mapping.At(x - 1 - 2 * (x / width), y - 1 - 2 * (y / height));
        }
        ASSERT_EQ(symbol.At(x, y), expected) << x << ", " << y;
      }
    }
  }
}

TEST(FrameRegions, OtherMatricesGiveNothing) {
  EXPECT_TRUE(FrameRegions(ModuleMatrix(), kSymbolSizes[0]).Empty());
  EXPECT_TRUE(FrameRegions(ModuleMatrix(8, 8), kSymbolSizes[1]).Empty());
  EXPECT_TRUE(FrameRegions(ModuleMatrix(16, 6), kSymbolSizes[0]).Empty());
}

}  // namespace
}  // namespace barcode::datamatrix
