#include "layout/four_state_layout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace barcode {
namespace {

using enum FourState;
using ::testing::IsEmpty;

Drawing Layout(const std::vector<FourState>& bars, std::uint32_t height, std::int32_t pxAdjustBlack = 0) {
  return LayoutFourState(bars, {.height = height}, pxAdjustBlack);
}

TEST(FourStateLayout, ExtentsOfTheFourTypes) {
  const std::vector<FourState> bars = {kLong, kUpperSemiLong, kLowerSemiLong, kTiming};
  const Drawing drawing = LayoutFourState(bars, {.x = 10, .y = 100, .width = 1, .height = 30}, 0);
  EXPECT_EQ(drawing.bars,
            (std::vector<RectF>{{10, 100, 5, 30}, {20, 100, 5, 20}, {30, 110, 5, 20}, {40, 110, 5, 10}}));
  EXPECT_EQ(drawing.drawnWidth, 40);
  EXPECT_EQ(drawing.barHeight, 30);
  EXPECT_THAT(drawing.texts, IsEmpty());
}

TEST(FourStateLayout, FractionsAreKept) {
  const std::vector<RectF> bars = Layout({kLowerSemiLong, kTiming}, 40).bars;
  EXPECT_FLOAT_EQ(bars[0].width, 6.6666667F);
  EXPECT_FLOAT_EQ(bars[0].y, 13.333333F);
  EXPECT_FLOAT_EQ(bars[0].height, 26.666667F);
  EXPECT_FLOAT_EQ(bars[1].x, 13.333333F);
  EXPECT_FLOAT_EQ(bars[1].height, 13.333333F);
}

TEST(FourStateLayout, BlackAdjustmentWidensBarsButNotThePitch) {
  const std::vector<RectF> bars = Layout({kLong, kLong}, 30, 3).bars;
  EXPECT_EQ(bars[0].width, 8);
  EXPECT_EQ(bars[1].x, 10);
}

TEST(FourStateLayout, BarsAreAtLeastOnePixelWide) {
  EXPECT_EQ(Layout({kLong}, 30, -100).bars[0].width, 1);
  EXPECT_EQ(Layout({kLong}, 3).bars[0].width, 1);
  EXPECT_EQ(Layout({kLong}, 30, std::numeric_limits<std::int32_t>::min()).bars[0].width, 1);
}

TEST(FourStateLayout, ImageWidth) {
  EXPECT_EQ(FourStateImageWidth(30), 676);
  EXPECT_EQ(FourStateImageWidth(40), 901);
  EXPECT_EQ(FourStateImageWidth(1), 23);  // 23.5
}

}  // namespace
}  // namespace barcode
