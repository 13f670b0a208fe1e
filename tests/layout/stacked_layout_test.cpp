#include "layout/stacked_layout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace barcode {
namespace {

using testing::ElementsAre;
using testing::FloatEq;

constexpr float kUnbounded = std::numeric_limits<float>::lowest();

const RunVector kOneOne = {1, 1};
const std::vector<StackedRow> kStacked = {{kOneOne, 5}, {kOneOne, 1}, {kOneOne, 7}};
const std::vector<StackedRow> kShared = {
    {kOneOne, std::nullopt}, {kOneOne, 1}, {kOneOne, 1}, {kOneOne, 1}, {kOneOne, std::nullopt}};

TEST(StackedLayout, TextRoomFollowsTheHeightBands) {
  // Height, text size, gap, rows.
  using Case = std::array<std::int64_t, 4>;
  for (const auto& [height, text, gap, rows] :
       {Case{49, 12, 0, 36}, Case{50, 10, 1, 39}, Case{130, 26, 3, 101}, Case{200, 40, 6, 154},
        Case{201, 30, 8, 163}}) {
    const StackedRoom room = StackedRoom::Of(static_cast<std::uint32_t>(height), 1, 1);
    EXPECT_EQ(room.textSize, text) << height;
    EXPECT_EQ(room.textGap, gap) << height;
    EXPECT_EQ(room.rows, rows) << height;
  }
}

TEST(StackedLayout, TextIsAtLeastEightPixelsAndTheRoomTen) {
  EXPECT_EQ(StackedRoom::Of(100, 0.4F, 1).textSize, 8);
  EXPECT_EQ(StackedRoom::Of(100, 0.45F, 1).textSize, 9);
  EXPECT_EQ(StackedRoom::Of(19, 1, 1).rows, 10);
  EXPECT_EQ(StackedRoom::Of(0, 1, 1).rows, 10);
  EXPECT_EQ(StackedRoom::Of(130, 0.85F, 1.1F).rows, 104);
}

TEST(StackedLayout, AnyScaleIsAllowed) {
  const float infinity = std::numeric_limits<float>::infinity();
  const float nan = std::numeric_limits<float>::quiet_NaN();
  EXPECT_EQ(StackedRoom::Of(100, infinity, infinity).rows, 10);
  EXPECT_EQ(StackedRoom::Of(100, nan, nan).rows, 100 - 1 - 8);
  EXPECT_EQ(StackedRoom::Of(100, -infinity, -infinity).rows, 100 - 1 - 8);
  EXPECT_EQ(StackedRoom::Of(0xFFFFFFFF, 0, 0).rows, 0xFFFFFFFFLL - 9);
}

TEST(StackedLayout, ProportionalHeights) {
  EXPECT_THAT(ProportionalHeights(kStacked, {.rows = 104}), ElementsAre(40, 8, 56));
  EXPECT_THAT(ProportionalHeights(kStacked, {.rows = 101}),
              ElementsAre(FloatEq(505 / 13.0F), FloatEq(101 / 13.0F), FloatEq(707 / 13.0F)));
}

TEST(StackedLayout, SharedHeights) {
  EXPECT_THAT(SharedHeights(kShared, {.rows = 101}, 2, kUnbounded), ElementsAre(47.5F, 2, 2, 2, 47.5F));
  EXPECT_THAT(SharedHeights(kShared, {.rows = 10}, 5, kUnbounded), ElementsAre(-2.5F, 5, 5, 5, -2.5F));
  EXPECT_THAT(SharedHeights(kShared, {.rows = 10}, 5, 1), ElementsAre(1, 5, 5, 5, 1));
}

TEST(StackedLayout, WidestRowCountsModules) {
  const std::vector<StackedRow> rows = {{{1, 9, 0, 3}, 1}, {{5, 5}, 1}};
  EXPECT_EQ(WidestRow(rows), 13U);
  EXPECT_EQ(WidestRow({}), 0U);
}

TEST(StackedLayout, RowsFollowEachOther) {
  const std::vector<StackedRow> rows = {{{0, 1, 2}, 1}, {{2, 1}, 1}};
  const Drawing layout = LayoutRows(rows, std::array{10.0F, 4.0F}, {.moduleWidth = 3}, {5, 7, 300, 100});
  EXPECT_THAT(layout.bars, ElementsAre(RectF{8, 7, 6, 10}, RectF{5, 17, 6, 4}));
  EXPECT_EQ(layout.drawnWidth, 9);
}

TEST(StackedLayout, AdjustmentsApplyToNominalWidthsWithOnePixelLeft) {
  const std::vector<StackedRow> rows = {{{0, 1, 1, 2}, 1}};
  const auto layout = [&](float moduleWidth, int black, int white) {
    return LayoutRows(rows, std::array{1.0F}, {moduleWidth, black, white}, {});
  };
  EXPECT_THAT(layout(2, 1, 3).bars, ElementsAre(RectF{5, 0, 3, 1}));
  EXPECT_EQ(layout(2, 1, 3).drawnWidth, 5 + 3 + 7);
  EXPECT_THAT(layout(2, -9, -9).bars, ElementsAre(RectF{1, 0, 1, 1}));
  EXPECT_EQ(layout(2, -9, -9).drawnWidth, 3);
  // The width is raised after the adjustment only.
  EXPECT_THAT(layout(0.5F, 1, 0).bars, ElementsAre(RectF{1, 0, 1.5F, 1}));
}

TEST(StackedLayout, EmptyElementsTakeNoRoom) {
  const std::vector<StackedRow> rows = {{{1, 9, 0, 3}, 1}, {{9, 0, 3, 1}, 1}};
  const Drawing layout = LayoutRows(rows, std::array{1.0F, 1.0F}, {1, 1, 1}, {});
  EXPECT_EQ(layout.bars[0], (RectF{0, 0, 2, 1}));
  EXPECT_EQ(layout.drawnWidth, 16);
}

TEST(StackedLayout, RowsWithoutHeightHaveNoBars) {
  const std::vector<StackedRow> rows = {{kOneOne, std::nullopt}};
  const Drawing layout = LayoutRows(rows, std::array{-2.5F}, {}, {});
  EXPECT_TRUE(layout.bars.empty());
  EXPECT_EQ(layout.drawnWidth, 2);
}

TEST(StackedLayout, OnlyAdjustedWidthsAreRaisedWhateverTheScaleSays) {
  const std::vector<StackedRow> rows = {{{1, 1, 1}, 1}};
  const ElementScale scale{0.5F, 1, 1, ElementMinimum::kNominalAndAdjusted};
  const Drawing layout = LayoutRows(rows, std::array{1.0F}, scale, {});
  EXPECT_THAT(layout.bars, ElementsAre(RectF{0, 0, 1.5F, 1}, RectF{3, 0, 1.5F, 1}));
  EXPECT_EQ(layout.drawnWidth, 4.5F);
}

TEST(StackedLayout, RowsHaveNoTextOfTheirOwn) {
  EXPECT_TRUE(LayoutRows(kStacked, std::array{1.0F, 1.0F, 1.0F}, {}, {}).texts.empty());
  const Drawing none = LayoutRows({}, {}, {}, {});
  EXPECT_TRUE(none.bars.empty());
  EXPECT_EQ(none.drawnWidth, 0);
}

}  // namespace
}  // namespace barcode
