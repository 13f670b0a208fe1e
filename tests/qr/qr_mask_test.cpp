#include "qr/qr_mask.h"

#include <gtest/gtest.h>

#include <random>

#include "qr/qr_reference.h"

namespace barcode {
namespace {

ModuleMatrix UnderMask(const MaskCells& cells, std::size_t mask) {
  ModuleMatrix matrix(cells.Size(), cells.Size());
  for (int x = 0; x < cells.Size(); ++x) {
    for (int y = 0; y < cells.Size(); ++y) {
      matrix.Set(x, y, (cells.Column(x)[y] >> mask & 1) != 0);
    }
  }
  return matrix;
}

MaskCells AllLight(int size) {
  return MaskCells(size);
}

// Penalty of mask 0 beyond that of a light symbol of the same size, balance left out.
int Extra(const MaskCells& cells) {
  const MaskCells light = AllLight(cells.Size());
  constexpr int kBalanced = 1'000'000;  // so many data bits that no dark module counts
  return static_cast<int>(MaskPenalties(cells, kBalanced)[0]) -
         static_cast<int>(MaskPenalties(light, kBalanced)[0]);
}

TEST(MaskConditions, OfEveryModule) {
  for (int x = 0; x < 177; ++x) {
    for (int y = 0; y < 177; ++y) {
      for (int mask = 0; mask < 8; ++mask) {
        ASSERT_EQ((MaskConditions(x)[static_cast<std::size_t>(y)] >> mask & 1) != 0,
                  qr_reference::Inverts(mask, x, y))
            << x << ' ' << y << ' ' << mask;
      }
    }
  }
}

TEST(MaskPenalties, EqualTheNaiveScoreOfEachMaskAlone) {
  std::mt19937 random(5);
  for (int size = 21; size <= 177; size += 4) {
    for (const unsigned darkness :
         {1U, 2U, 3U, 5U}) {  // of 4 random bits, 1 to 3 must be set; 5: coarse stripes
      MaskCells cells(size);
      for (int x = 0; x < size; ++x) {
        for (int y = 0; y < size; ++y) {
          const auto bits = [&random] { return static_cast<std::uint8_t>(random()); };
          const std::uint8_t a = bits();
          const std::uint8_t b = bits();
          std::uint8_t cell = darkness == 1 ? a & b : darkness == 2 ? a : a | b;
          if (darkness == 5) {
            cell = random() % 6 != 0 && y > 0 ? cells.Column(x)[y - 1] : a;
          }
          cells.Column(x)[y] = cell;
        }
      }
      const int dataBits = size * size - 200;
      const auto penalties = MaskPenalties(cells, dataBits);
      for (std::size_t mask = 0; mask < kQrMasks; ++mask) {
        ASSERT_EQ(static_cast<int>(penalties[mask]), qr_reference::Penalty(UnderMask(cells, mask), dataBits))
            << "size " << size << " mask " << mask << " darkness " << darkness;
      }
    }
  }
}

TEST(MaskPenalties, RunsEarnThreeAtTheFifthModuleAndOneForEachFurther) {
  // Light lines of 21 modules: 19 each, in both directions; 400 light blocks.
  EXPECT_EQ(MaskPenalties(AllLight(21), 1)[0], 2U * 21 * 19 + 3 * 400 + 90);
  // A dark line along the edge keeps its 19; every line across it is one module shorter, 20 light blocks are
  // gone.
  MaskCells column(21);
  MaskCells row(21);
  for (int i = 0; i < 21; ++i) {
    column.Column(0)[i] = MaskCells::kDark;
    row.Column(i)[0] = MaskCells::kDark;
  }
  EXPECT_EQ(Extra(column), -21 - 60);
  EXPECT_EQ(Extra(row), -21 - 60);
}

TEST(MaskPenalties, FinderLikePatternNeedsNoLightMargin) {
  // 1011101 at the edge of the symbol and in the middle of dark neighbours.
  MaskCells edge(21);
  for (const int y : {0, 2, 3, 4, 6}) {
    edge.Column(0)[y] = MaskCells::kDark;
  }
  const ModuleMatrix matrix = UnderMask(edge, 0);
  EXPECT_EQ(MaskPenalties(edge, 1'000'000)[0],
            static_cast<unsigned>(qr_reference::Penalty(matrix, 1'000'000)));
  MaskCells broken = edge;
  broken.Column(0)[1] = MaskCells::kDark;  // 1111101
  EXPECT_GE(Extra(edge) - Extra(broken), 40 - 9);
}

TEST(MaskPenalties, BalanceComparesAllDarkModulesWithTheDataBits) {
  // k = round(20 * dark / data bits) picks the entry; beyond the table the last one counts.
  constexpr std::array<unsigned, 21> kTable = {90, 80, 70, 60, 50, 40, 30, 20, 10, 0, 0,
                                               10, 20, 30, 40, 50, 60, 70, 80, 90, 90};
  MaskCells cells(21);
  for (int x = 0; x < 21; ++x) {
    for (int y = 0; y < 21; ++y) {
      cells.Column(x)[y] = MaskCells::kDark;  // 441 dark modules
    }
  }
  const unsigned lines = 2U * 21 * 19 + 3 * 400;
  for (unsigned k = 1; k <= 20; ++k) {
    EXPECT_EQ(MaskPenalties(cells, static_cast<int>(20 * 441 / k))[0], lines + kTable[k]) << k;
  }
  EXPECT_EQ(MaskPenalties(cells, 208)[0], lines + 90);    // k = 42
  EXPECT_EQ(MaskPenalties(cells, 17640)[0], lines + 80);  // exactly 0.5, rounded up to 1
  EXPECT_EQ(MaskPenalties(cells, 17641)[0], lines + 90);  // just below
}

TEST(BestMask, LowestPenaltyThenLowestNumber) {
  EXPECT_EQ(BestMask({9, 8, 7, 6, 5, 4, 3, 2}), 7);
  EXPECT_EQ(BestMask({9, 3, 7, 3, 5, 3, 3, 3}), 1);
  EXPECT_EQ(BestMask({1, 1, 1, 1, 1, 1, 1, 1}), 0);
}

}  // namespace
}  // namespace barcode
