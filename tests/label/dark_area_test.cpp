#include "label/dark_area.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <utility>

namespace barcode::label {
namespace {

using Dots = std::set<std::pair<int, int>>;

Dots Painted(const std::vector<DotRect>& rects) {
  Dots dots;
  for (const DotRect& rect : rects) {
    EXPECT_GE(rect.width, 1);
    EXPECT_GE(rect.height, 1);
    for (int x = rect.x; x < rect.x + rect.width; ++x) {
      for (int y = rect.y; y < rect.y + rect.height; ++y) {
        dots.emplace(x, y);
      }
    }
  }
  return dots;
}

std::vector<DotRect> Row(const RunVector& pattern, int module, int adjust, int lightEnd) {
  std::vector<DotRect> dark;
  AddBars(dark, BarsOf(pattern), module, adjust, {10, 5, 7, lightEnd});
  return dark;
}

TEST(BarsOf, AlternatesFromABar) {
  EXPECT_EQ(BarsOf({2, 3, 1, 1, 4}), (std::vector<Bar>{{0, 2, 0}, {5, 1, 2}, {7, 4, 4}}));
}

TEST(BarsOf, BeginsWithASpaceBehindABarOfNoModules) {
  EXPECT_EQ(BarsOf({0, 3, 2}), (std::vector<Bar>{{3, 2, 2}}));
}

TEST(BarsOf, JoinsThePartsOfALongRun) {
  EXPECT_EQ(BarsOf({1, 1, 9, 0, 3, 2, 1}), (std::vector<Bar>{{0, 1, 0}, {2, 12, 2}, {16, 1, 6}}));
}

TEST(AddBars, PlacesWholeModules) {
  EXPECT_EQ(Row({2, 1, 1}, 3, 0, 100), (std::vector<DotRect>{{10, 5, 6, 7}, {19, 5, 3, 7}}));
}

TEST(AddBars, TakesAdjustmentFromTheSpaceBehindAndKeepsThePitch) {
  EXPECT_EQ(Row({2, 1, 1}, 3, 1, 100), (std::vector<DotRect>{{10, 5, 7, 7}, {19, 5, 4, 7}}));
  EXPECT_EQ(Row({2, 1, 1}, 3, -2, 100), (std::vector<DotRect>{{10, 5, 4, 7}, {19, 5, 1, 7}}));
}

TEST(AddBars, LeavesADotOfBarAndSpace) {
  EXPECT_EQ(Row({2, 1, 1}, 3, 20, 26), (std::vector<DotRect>{{10, 5, 8, 7}, {19, 5, 6, 7}}));
  EXPECT_EQ(Row({2, 1, 1}, 3, -20, 26), (std::vector<DotRect>{{10, 5, 1, 7}, {19, 5, 1, 7}}));
}

TEST(AddBars, KeepsTheLastBarWhereNoLightFollows) {
  EXPECT_EQ(Row({1, 1, 1}, 2, 5, 16).back(), (DotRect{14, 5, 2, 7}));
}

ModuleMatrix RandomMatrix(std::mt19937& random, int columns, int rows) {
  ModuleMatrix matrix(columns, rows);
  for (int x = 0; x < columns; ++x) {
    for (int y = 0; y < rows; ++y) {
      matrix.Set(x, y, random() % 2 == 0);
    }
  }
  return matrix;
}

// What the rule says, dot by dot: dark modules reach further to the right and down, or less far where light
// follows.
Dots Expected(const ModuleMatrix& matrix, int cell, int adjust) {
  Dots dots;
  const auto isDark = [&](int x, int y) {
    return x < matrix.Columns() && y < matrix.Rows() && matrix.At(x, y);
  };
  for (int x = 0; x < matrix.Columns(); ++x) {
    for (int y = 0; y < matrix.Rows(); ++y) {
      if (!matrix.At(x, y)) {
        continue;
      }
      const int width = adjust < 0 && isDark(x + 1, y) ? cell : cell + adjust;
      const int height = adjust < 0 && isDark(x, y + 1) ? cell : cell + adjust;
      for (int i = 0; i < width; ++i) {
        for (int j = 0; j < height; ++j) {
          dots.emplace(x * cell + i, y * cell + j);
        }
      }
    }
  }
  return dots;
}

TEST(AddMatrix, GrowsAndShrinksDarkModulesInBothDirections) {
  std::mt19937 random(1);  // NOLINT(cert-msc51-cpp): the same symbols in every run
  for (int trial = 0; trial < 40; ++trial) {
    const ModuleMatrix matrix = RandomMatrix(random, 9, 7);
    for (const int adjust : {0, 1, 2, 3}) {
      std::vector<DotRect> dark;
      AddMatrix(dark, matrix, 0, 0, 4, 4, adjust);
      ASSERT_EQ(Painted(dark), Expected(matrix, 4, adjust)) << adjust;
    }
  }
}

TEST(AddMatrix, ShrunkModulesKeepTheirNeighboursJoined) {
  ModuleMatrix matrix(2, 2);
  matrix.Set(0, 0, true);
  matrix.Set(1, 0, true);
  matrix.Set(0, 1, true);
  std::vector<DotRect> dark;
  AddMatrix(dark, matrix, 0, 0, 4, 4, -1);
  Dots expected;
  for (int x = 0; x < 7; ++x) {
    for (int y = 0; y < 7; ++y) {
      if (y < 3 || x < 3) {
        expected.emplace(x, y);
      }
    }
  }
  EXPECT_EQ(Painted(dark), expected);
}

TEST(AddMatrix, LeavesADotOfDarkAndLight) {
  ModuleMatrix matrix(3, 3);
  matrix.Set(1, 1, true);
  std::vector<DotRect> dark;
  AddMatrix(dark, matrix, 0, 0, 3, 3, -20);
  EXPECT_EQ(dark, (std::vector<DotRect>{{3, 3, 1, 1}}));
  dark.clear();
  AddMatrix(dark, matrix, 0, 0, 3, 3, 20);
  EXPECT_EQ(dark, (std::vector<DotRect>{{3, 3, 5, 5}}));
}

TEST(AddMatrix, OneDotModulesCannotBeAdjusted) {
  ModuleMatrix matrix(2, 1);
  matrix.Set(0, 0, true);
  std::vector<DotRect> dark;
  AddMatrix(dark, matrix, 0, 0, 1, 1, 7);
  EXPECT_EQ(dark, (std::vector<DotRect>{{0, 0, 1, 1}}));
}

}  // namespace
}  // namespace barcode::label
