#include "layout/linear_layout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace barcode {
namespace {

using ::testing::ElementsAre;

std::vector<RectF> Bars(const RunVector& pattern, const ElementScale& scale, float x = 0, float y = 0) {
  std::vector<RectF> bars;
  LayoutBars(pattern, scale, x, y, 10.0F, [&](const RectF& bar) { bars.push_back(bar); });
  return bars;
}

float Length(const RunVector& pattern, const ElementScale& scale, float x = 0) {
  return LayoutBars(pattern, scale, x, 0, 10.0F, [](const RectF&) {});
}

TEST(LinearLayout, ModuleWidthIsWholePixelsAndAtLeastOne) {
  EXPECT_EQ(ModuleWidth(300, 143, false), 2.0F);
  EXPECT_EQ(ModuleWidth(142, 143, false), 1.0F);
  EXPECT_EQ(ModuleWidth(0, 143, false), 1.0F);
}

TEST(LinearLayout, FitWidthKeepsTheFraction) {
  EXPECT_EQ(ModuleWidth(100, 53, true), 100.0F / 53.0F);
  EXPECT_EQ(ModuleWidth(10, 53, true), 10.0F / 53.0F);
}

TEST(LinearLayout, BarsAndSpacesAlternateFromABar) {
  EXPECT_THAT(Bars({1, 2, 3}, {2.0F, 0, 0}, 5, 7), ElementsAre(RectF{5, 7, 2, 10}, RectF{11, 7, 6, 10}));
  EXPECT_EQ(Length({1, 2, 3}, {2.0F, 0, 0}, 5), 12.0F);
}

TEST(LinearLayout, AdjustmentsAccumulate) {
  // bar 2+1, space 2-1, bar 2+1, space 2-1, bar 2+1
  EXPECT_THAT(Bars({1, 1, 1, 1, 1}, {2.0F, 1, -1}),
              ElementsAre(RectF{0, 0, 3, 10}, RectF{4, 0, 3, 10}, RectF{8, 0, 3, 10}));
}

TEST(LinearLayout, ElementsNeverFallBelowOnePixel) {
  EXPECT_THAT(Bars({1, 1, 1}, {2.0F, -5, -5}), ElementsAre(RectF{0, 0, 1, 10}, RectF{2, 0, 1, 10}));
  EXPECT_EQ(Length({1, 1, 1}, {2.0F, -5, 0}), 4.0F);  // 6 less one pixel for each bar
}

TEST(LinearLayout, NominalWidthIsRaisedBeforeTheAdjustment) {
  // 0.25 pixels become 1, then 2: not 1.25.
  EXPECT_THAT(Bars({1}, {0.25F, 1, 0}), ElementsAre(RectF{0, 0, 2, 10}));
  EXPECT_EQ(Length({1, 1, 1}, {0.25F, 0, 0}), 3.0F);
}

TEST(LinearLayout, OrTheAdjustedWidthAloneIsRaised) {
  const ElementScale scale{0.25F, 1, 0, ElementMinimum::kAdjusted};
  EXPECT_THAT(Bars({1, 1, 1}, scale), ElementsAre(RectF{0, 0, 1.25F, 10}, RectF{2.25F, 0, 1.25F, 10}));
  EXPECT_EQ(Length({1, 1, 1}, {0.25F, -9, -9, ElementMinimum::kAdjusted}), 3.0F);
}

// The colours alternate with the elements, those of no modules included.
TEST(LinearLayout, AnElementOfNoModulesTakesNoRoom) {
  EXPECT_THAT(Bars({0, 1, 2}, {2.0F, 1, 1}), ElementsAre(RectF{3, 0, 5, 10}));
  EXPECT_THAT(Bars({2, 0, 3}, {2.0F, 1, 1}), ElementsAre(RectF{0, 0, 5, 10}, RectF{5, 0, 7, 10}));
  std::vector<std::size_t> visited;
  WalkElements({0, 1, 0, 3}, {}, 0, [&](std::size_t index, bool isBar, float, float) {
    EXPECT_FALSE(isBar);
    visited.push_back(index);
  });
  EXPECT_THAT(visited, ElementsAre(1, 3));
}

TEST(LinearLayout, TotalModules) {
  EXPECT_EQ(TotalModules({}), 0U);
  EXPECT_EQ(TotalModules({4000000000U, 4000000000U}), 8000000000U);
}

}  // namespace
}  // namespace barcode
