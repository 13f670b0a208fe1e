#include "layout/four_state_layout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

namespace barcode {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr std::array kEveryBar = {FourState::kLong, FourState::kUpperSemiLong, FourState::kLowerSemiLong,
                                  FourState::kTiming};

float WidthAt(std::uint32_t height, std::int32_t pxAdjustBlack) {
  return LayoutFourState(kEveryBar, {.height = height}, pxAdjustBlack).bars.at(0).width;
}

TEST(FourStateLayout, BarsReachTheThirdsOfTheirState) {
  const Drawing drawing = LayoutFourState(kEveryBar, {.x = 5, .y = 7, .width = 1, .height = 30}, 0);
  EXPECT_THAT(drawing.bars, ElementsAre(RectF{5, 7, 5, 30}, RectF{15, 7, 5, 20}, RectF{25, 17, 5, 20},
                                        RectF{35, 17, 5, 10}));
  EXPECT_EQ(drawing.barHeight, 30);
}

TEST(FourStateLayout, ThePitchIsAThirdOfTheHeight) {
  const Drawing drawing = LayoutFourState(kEveryBar, {.height = 10}, 0);
  EXPECT_FLOAT_EQ(drawing.bars.at(1).x, 10.0F / 3);
  EXPECT_FLOAT_EQ(drawing.bars.at(3).x, 10.0F);
  EXPECT_FLOAT_EQ(drawing.bars.at(0).width, 10.0F / 6);
  // The last pitch counts, whatever the origin.
  EXPECT_FLOAT_EQ(drawing.drawnWidth, 40.0F / 3);
  EXPECT_EQ(LayoutFourState(kEveryBar, {.x = 100, .height = 30}, 0).drawnWidth, 40);
}

TEST(FourStateLayout, TheAdjustmentWidensBarsAndNotThePitch) {
  const Drawing drawing = LayoutFourState(kEveryBar, {.height = 30}, 2);
  EXPECT_THAT(drawing.bars, ElementsAre(RectF{0, 0, 7, 30}, RectF{10, 0, 7, 20}, RectF{20, 10, 7, 20},
                                        RectF{30, 10, 7, 10}));
  EXPECT_EQ(drawing.drawnWidth, 40);
}

TEST(FourStateLayout, BarsAreAtLeastOnePixelWideAfterTheAdjustment) {
  EXPECT_EQ(WidthAt(3, 0), 1);
  EXPECT_EQ(WidthAt(3, 1), 1.5F);
  EXPECT_EQ(WidthAt(30, -4), 1);
  EXPECT_EQ(WidthAt(30, -3), 2);
  EXPECT_EQ(WidthAt(30, std::numeric_limits<std::int32_t>::min()), 1);
}

TEST(FourStateLayout, TheWidthOfTheBoxSaysNothing) {
  EXPECT_EQ(LayoutFourState(kEveryBar, {.width = 0, .height = 30}, 0).bars,
            LayoutFourState(kEveryBar, {.width = 5000, .height = 30}, 0).bars);
}

TEST(FourStateLayout, ThereIsNoText) {
  EXPECT_THAT(LayoutFourState(kEveryBar, {.height = 30}, 0).texts, IsEmpty());
}

TEST(FourStateLayout, NoBars) {
  const Drawing drawing = LayoutFourState({}, {.x = 5, .height = 30}, 0);
  EXPECT_THAT(drawing.bars, IsEmpty());
  EXPECT_EQ(drawing.drawnWidth, 0);
}

// Half a pitch, 67 pitches and a pixel, truncated.
TEST(FourStateImageWidth, HoldsSixtySevenBars) {
  EXPECT_EQ(FourStateImageWidth(30), 5 + 670 + 1);
  EXPECT_EQ(FourStateImageWidth(60), 10 + 1340 + 1);
  EXPECT_EQ(FourStateImageWidth(1), 23);   // 23.5
  EXPECT_EQ(FourStateImageWidth(3), 68);   // 68.5
  EXPECT_EQ(FourStateImageWidth(9), 203);  // 203.5
  const std::vector<FourState> symbol(67, FourState::kLong);
  const RectF last = LayoutFourState(symbol, {.height = 30}, 0).bars.back();
  EXPECT_EQ(last.x + last.width, 665);
}

TEST(FourStateImageWidth, AnyHeightIsDefined) {
  EXPECT_EQ(FourStateImageWidth(4e9F), std::numeric_limits<int>::max());
  EXPECT_EQ(FourStateImageWidth(std::nanf("")), 0);
}

}  // namespace
}  // namespace barcode
