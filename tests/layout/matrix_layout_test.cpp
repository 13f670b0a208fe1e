#include "layout/matrix_layout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <set>
#include <utility>

namespace barcode {
namespace {

using ::testing::ElementsAre;

std::vector<ModuleRect> Rects(const ModuleMatrix& matrix, const ModuleGrid& grid, const ModuleRule& rule) {
  std::vector<ModuleRect> rects;
  LayoutModules(matrix, grid, rule, [&](const ModuleRect& rect) { rects.push_back(rect); });
  return rects;
}

ModuleMatrix Checkered() {  // dark at (0, 0) and (1, 1)
  ModuleMatrix matrix(2, 2);
  matrix.Set(0, 0, true);
  matrix.Set(1, 1, true);
  return matrix;
}

void ExpectSize(const ModuleSize& size, double width, double height) {
  EXPECT_DOUBLE_EQ(size.width, width);
  EXPECT_DOUBLE_EQ(size.height, height);
}

TEST(StretchedModules, WholePixelsAtLeastOne) {
  ExpectSize(StretchedModules(210, 210, 21, 21, false), 10, 10);
  ExpectSize(StretchedModules(100, 60, 25, 25, false), 4, 2);
  ExpectSize(StretchedModules(209, 20, 21, 21, false), 9, 1);
  ExpectSize(StretchedModules(0, 0, 21, 21, false), 1, 1);
  ExpectSize(StretchedModules(0xFFFFFFFF, 5, 1, 1, false), 4294967295.0, 5);
}

TEST(StretchedModules, FractionsThatFit) {
  ExpectSize(StretchedModules(210, 100, 21, 21, true), 10, 100.0 / 21);
  ExpectSize(StretchedModules(0, 1, 21, 21, true), 0, 1.0 / 21);
}

TEST(SquareModules, TheSmallerOfBothDirections) {
  ExpectSize(SquareModules(100, 60, 10, 10, false), 6, 6);
  ExpectSize(SquareModules(60, 100, 10, 10, false), 6, 6);
  ExpectSize(SquareModules(100, 65, 10, 10, true), 6.5, 6.5);
  ExpectSize(SquareModules(100, 9, 10, 10, false), 0, 0);
}

TEST(ModuleSizes, SymbolWithoutModules) {
  ExpectSize(StretchedModules(100, 100, 0, 0, true), 1, 1);
  ExpectSize(SquareModules(100, 100, 0, 5, false), 1, 1);
}

TEST(ModuleGrid, RoundedEdges) {
  const ModuleGrid grid = RoundedGrid({100.0 / 21, 0.5}, 4, 3, 7, -7);
  EXPECT_THAT(grid.x, ElementsAre(7, 12, 17, 21, 26));
  EXPECT_THAT(grid.y, ElementsAre(-7, -6, -6, -5));  // halves away from zero
}

TEST(ModuleGrid, ExactEdges) {
  const ModuleGrid grid = ExactGrid({2.5, 1}, 2, 1);
  EXPECT_THAT(grid.x, ElementsAre(0, 2.5, 5));
  EXPECT_THAT(grid.y, ElementsAre(0, 1));
}

TEST(ModuleGrid, DividedEdges) {
  const ModuleGrid grid = DividedGrid(10, 7, 4, 2);
  EXPECT_THAT(grid.x, ElementsAre(0, 2.5, 5, 7.5, 10));
  EXPECT_THAT(grid.y, ElementsAre(0, 3.5, 7));
}

TEST(LayoutModules, RowByRowWithTheAdjustmentInBothDirections) {
  ModuleMatrix matrix(2, 2);
  matrix.Set(1, 0, true);
  matrix.Set(0, 1, true);
  matrix.Set(1, 1, true);
  const ModuleGrid grid = ExactGrid({4, 3}, 2, 2);
  EXPECT_THAT(Rects(matrix, grid, {.adjust = -1}),
              ElementsAre(ModuleRect{4, 0, 3, 2}, ModuleRect{0, 3, 3, 2}, ModuleRect{4, 3, 3, 2}));
}

TEST(LayoutModules, SkipsWhatIsNotPositive) {
  const ModuleGrid grid = {{0, 2, 2}, {0, 2, 4}};  // the second column has no width
  const auto count = [&](double adjust, SkipModules skip) {
    return Rects(Checkered(), grid, {adjust, skip}).size();
  };
  EXPECT_EQ(count(0, SkipModules::kNone), 2U);
  EXPECT_EQ(count(0, SkipModules::kEmptyCell), 1U);
  EXPECT_EQ(count(0, SkipModules::kEmptyRect), 1U);
  EXPECT_EQ(count(1, SkipModules::kEmptyCell), 1U);
  EXPECT_EQ(count(1, SkipModules::kEmptyRect), 2U);
  EXPECT_EQ(count(-2, SkipModules::kEmptyCell), 1U);
  EXPECT_EQ(count(-2, SkipModules::kEmptyRect), 0U);
  EXPECT_EQ(count(-2, SkipModules::kNone), 2U);
}

TEST(LayoutStretched, WholePixelsHaveRoundedEdges) {
  const ModuleRule rule{.adjust = 1, .skip = SkipModules::kEmptyRect};
  const MatrixDrawing drawing = LayoutStretched(ModuleMatrix(3, 2), 11, 7, true, PixelGrid::kWhole, rule);
  EXPECT_EQ(drawing.width, 11U);
  EXPECT_EQ(drawing.height, 7U);
  ExpectSize(drawing.module, 11.0 / 3, 3.5);
  EXPECT_THAT(drawing.grid.x, ElementsAre(0, 4, 7, 11));
  EXPECT_THAT(drawing.grid.y, ElementsAre(0, 4, 7));
  EXPECT_EQ(drawing.rule.adjust, 1);
  EXPECT_EQ(drawing.rule.skip, SkipModules::kEmptyRect);
}

TEST(LayoutStretched, FractionsHaveExactEdges) {
  const ModuleRule rule{.adjust = -0.5, .skip = SkipModules::kEmptyCell};
  const MatrixDrawing drawing =
      LayoutStretched(ModuleMatrix(4, 2), 11, 7, true, PixelGrid::kFractional, rule);
  EXPECT_THAT(drawing.grid.x, ElementsAre(0, 2.75, 5.5, 8.25, 11));
  EXPECT_THAT(drawing.grid.y, ElementsAre(0, 3.5, 7));
  EXPECT_EQ(drawing.rule.adjust, -0.5);
  EXPECT_EQ(drawing.rule.skip, SkipModules::kEmptyCell);
}

TEST(LayoutStretched, WithoutFitTheModulesLeaveTheRestOfTheBoxFree) {
  for (const PixelGrid grid : {PixelGrid::kWhole, PixelGrid::kFractional}) {
    const MatrixDrawing drawing = LayoutStretched(ModuleMatrix(3, 2), 11, 7, false, grid, {});
    EXPECT_EQ(drawing.width, 11U);
    EXPECT_EQ(drawing.height, 7U);
    ExpectSize(drawing.module, 3, 3);
    EXPECT_THAT(drawing.grid.x, ElementsAre(0, 3, 6, 9));
    EXPECT_THAT(drawing.grid.y, ElementsAre(0, 3, 6));
  }
}

TEST(LayoutStretched, ASymbolWithoutModulesKeepsItsPicture) {
  const MatrixDrawing drawing = LayoutStretched({}, 11, 7, false, PixelGrid::kWhole, {});
  EXPECT_EQ(drawing.width, 11U);
  EXPECT_EQ(drawing.height, 7U);
  EXPECT_THAT(Rects({}, drawing.grid, drawing.rule), ElementsAre());
}

using Pixels = std::set<std::pair<int, int>>;

void Cover(Pixels& pixels, const ModuleRect& rect) {
  for (int x = static_cast<int>(rect.x); x < static_cast<int>(rect.x + rect.width); ++x) {
    for (int y = static_cast<int>(rect.y); y < static_cast<int>(rect.y + rect.height); ++y) {
      pixels.emplace(x, y);
    }
  }
}

TEST(LayoutDarkArea, CoversTheSamePixelsInFewerRectangles) {
  std::mt19937 random(3);
  for (const double module : {0.4, 1.0, 2.6}) {
    for (const int adjust : {-3, -1, 0, 1, 2}) {
      ModuleMatrix matrix(9, 7);
      for (int i = 0; i < 63; ++i) {
        matrix.Set(i % 9, i / 9, random() % 3 != 0);
      }
      const ModuleGrid grid = RoundedGrid({module, module}, 9, 7, 1, 2);
      Pixels expected;
      Pixels covered;
      std::size_t rects = 0;
      LayoutModules(matrix, grid, {static_cast<double>(adjust), SkipModules::kEmptyRect},
                    [&](const ModuleRect& rect) { Cover(expected, rect); });
      LayoutDarkArea(matrix, grid, adjust, [&](const ModuleRect& rect) {
        EXPECT_TRUE(rect.width > 0 && rect.height > 0);
        Cover(covered, rect);
        ++rects;
      });
      EXPECT_EQ(covered, expected) << module << ' ' << adjust;
      if (adjust >= 0) {
        EXPECT_LE(rects, 7U * 5);
      }
    }
  }
}

}  // namespace
}  // namespace barcode
