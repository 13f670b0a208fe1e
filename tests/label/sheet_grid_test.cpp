#include "label/sheet_grid.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace barcode::label {
namespace {

constexpr double kNothing = 1e-9;

void ExpectCell(const Cell& cell, double x, double y, double width, double height) {
  EXPECT_NEAR(cell.x, x, kNothing);
  EXPECT_NEAR(cell.y, y, kNothing);
  EXPECT_NEAR(cell.width, width, kNothing);
  EXPECT_NEAR(cell.height, height, kNothing);
}

TEST(SheetGrid, CellsRowByRow) {
  const SheetGrid grid{.pageWidth = 210, .pageHeight = 297, .columns = 3, .rows = 8, .margin = 10, .gap = 2};
  EXPECT_EQ(CellsOf(grid), 24);
  // (210 - 20 - 4) / 3 and (297 - 20 - 14) / 8
  ExpectCell(CellAt(grid, 0), 10, 10, 62, 32.875);
  ExpectCell(CellAt(grid, 1), 74, 10, 62, 32.875);
  ExpectCell(CellAt(grid, 2), 138, 10, 62, 32.875);
  ExpectCell(CellAt(grid, 3), 10, 44.875, 62, 32.875);
  ExpectCell(CellAt(grid, 23), 138, 254.125, 62, 32.875);
}

TEST(SheetGrid, WithoutMarginAndGapTheCellsAreThePage) {
  const SheetGrid grid{
      .pageWidth = 101.6, .pageHeight = 152.4, .columns = 2, .rows = 3, .margin = 0, .gap = 0};
  ExpectCell(CellAt(grid, 0), 0, 0, 50.8, 50.8);
  ExpectCell(CellAt(grid, 5), 50.8, 101.6, 50.8, 50.8);
}

TEST(SheetGrid, EachDirectionHasItsMarginAndGap) {
  const SheetGrid grid{.columns = 3, .rows = 7, .margin = {7.25, 15.15}, .gap = {2.5, 0}};
  ExpectCell(CellAt(grid, 0), 7.25, 15.15, 190.5 / 3, 38.1);
  ExpectCell(CellAt(grid, 20), 139.25, 243.75, 190.5 / 3, 38.1);
}

TEST(SheetGrid, TheLastCellEndsAtTheMargin) {
  std::mt19937 random(1);
  for (int i = 0; i < 200; ++i) {
    SheetGrid grid;
    grid.columns = static_cast<int>(1 + random() % 30);
    grid.rows = static_cast<int>(1 + random() % 30);
    grid.margin = static_cast<double>(random() % 300) / 10;
    grid.gap = static_cast<double>(random() % 30) / 10;
    const Cell last = CellAt(grid, CellsOf(grid) - 1);
    EXPECT_NEAR(last.x + last.width, grid.pageWidth - grid.margin.across, kNothing);
    EXPECT_NEAR(last.y + last.height, grid.pageHeight - grid.margin.down, kNothing);
  }
}

TEST(SheetGrid, MarginAndGapsMayLeaveNoRoom) {
  EXPECT_DOUBLE_EQ(CellAt({.margin = 105}, 0).width, 0);
  EXPECT_LT(CellAt({.margin = 106}, 0).width, 0);
  EXPECT_LT(CellAt({.columns = 96, .gap = 2.1}, 0).width, 0);
}

TEST(SheetGrid, ObjectsStandOnTheNearestDotToTheMiddle) {
  EXPECT_EQ(PlaceInRange(10, 20, 10), 15);
  EXPECT_EQ(PlaceInRange(10.3, 20, 10), 15);
  EXPECT_EQ(PlaceInRange(10.6, 20, 10), 16);
  EXPECT_EQ(PlaceInRange(0, 10, 10), 0);
}

TEST(SheetGrid, ObjectsStayInside) {
  // The nearest dot to the middle, 5, is outside: 5.7 to 15.9 holds 6 to 15.
  EXPECT_EQ(PlaceInRange(5.7, 9.6, 9), 6);
  // Here it is one below.
  EXPECT_EQ(PlaceInRange(5.45, 9.2, 9), 5.55);
  EXPECT_EQ(PlaceInRange(4.9, 9.2, 9), 5);
  // What is as long as the range but for a rounding.
  EXPECT_EQ(PlaceInRange(6.0000000001, 9, 9), 6);
}

TEST(SheetGrid, AnywhereInside) {
  std::mt19937 random(2);
  std::uniform_real_distribution<double> part(0, 1);
  for (int i = 0; i < 20'000; ++i) {
    const double begin = 100 * part(random);
    const int object = static_cast<int>(random() % 50);
    const double length = object + (i % 2 == 0 ? 1.5 : 20) * part(random);
    const double place = PlaceInRange(begin, length, object);
    EXPECT_GE(place, begin - kDotTolerance);
    EXPECT_LE(place + object, begin + length + kDotTolerance);
    const double middle = begin + (length - object) / 2;
    EXPECT_LE(std::abs(place - middle), 1);
    // Where there is a whole dot, it is one.
    if (length - object >= 1) {
      EXPECT_EQ(place, std::round(middle));
    }
  }
}

}  // namespace
}  // namespace barcode::label
