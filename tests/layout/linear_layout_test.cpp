#include "layout/linear_layout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace barcode {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

std::vector<RectF> Bars(const RunVector& pattern, const ElementScale& scale, float x = 0, float y = 0) {
  Drawing drawing;
  AddBars(drawing, pattern, scale, {x, y, 0, 10});
  return drawing.bars;
}

float Length(const RunVector& pattern, const ElementScale& scale, float x = 0) {
  Drawing drawing;
  return AddBars(drawing, pattern, scale, {x, 0, 0, 10});
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

TEST(LinearLayout, BarsAreAddedToThoseOfADrawing) {
  Drawing drawing;
  EXPECT_EQ(AddBars(drawing, {1}, {}, {3, 4, 0, 5}), 1);
  EXPECT_EQ(AddBars(drawing, {2}, {}, {6, 7, 0, 8}), 2);
  EXPECT_THAT(drawing.bars, ElementsAre(RectF{3, 4, 1, 5}, RectF{6, 7, 2, 8}));
}

TEST(LinearLayout, TheScaleFollowsTheOptions) {
  const LinearOptions options{.text = {}, .fitWidth = true, .pxAdjustBlack = 2, .pxAdjustWhite = -3};
  const ElementScale fit = ScaleFor(100, 8, options);
  EXPECT_EQ(fit.moduleWidth, 12.5F);
  EXPECT_EQ(fit.adjustBlack, 2);
  EXPECT_EQ(fit.adjustWhite, -3);
  EXPECT_EQ(fit.minimum, ElementMinimum::kNominalAndAdjusted);
  EXPECT_EQ(ScaleFor(100, 8, {}).moduleWidth, 12);
}

// ---- the plain layout ----

// Bars of 2 + 3, a space of 4 modules between them.
const RunVector kPattern = {2, 4, 3};
constexpr Box kBox{.x = 5, .y = 7, .width = 100, .height = 100};

TEST(PlainLayout, BarsOfOneHeightStandAboveTheText) {
  const Drawing drawing = LayoutLinear(kPattern, "AB", kBox, {}, PixelGrid::kWhole);
  // Modules of floor(100 / 9) = 11 pixels; text of 20 pixels under a gap of 5.
  EXPECT_THAT(drawing.bars, ElementsAre(RectF{5, 7, 22, 75}, RectF{5 + 66, 7, 33, 75}));
  EXPECT_EQ(drawing.drawnWidth, 99);
  EXPECT_EQ(drawing.barHeight, 75);
  // Two characters in the 99 pixels of the bars, with margins of trunc(2.97).
  TextRun line;
  line.text = "AB";
  line.size = 20;
  line.spacing = EvenSpacing{.first = 5 + (99 - 95) / 2, .pitch = 95};
  line.box = {.top = 87, .bottom = 107};
  EXPECT_THAT(drawing.texts, ElementsAre(line));
}

TEST(PlainLayout, VectorDrawingsDifferInTheBottomOfTheTextAlone) {
  const Drawing whole = LayoutLinear(kPattern, "AB", kBox, {}, PixelGrid::kWhole);
  Drawing vector = LayoutLinear(kPattern, "AB", kBox, {}, PixelGrid::kFractional);
  EXPECT_EQ(vector.bars, whole.bars);
  EXPECT_EQ(vector.drawnWidth, whole.drawnWidth);
  EXPECT_EQ(vector.barHeight, whole.barHeight);
  ASSERT_THAT(vector.texts, SizeIs(1));
  EXPECT_EQ(vector.texts[0].box.bottom, std::numeric_limits<double>::infinity());
  vector.texts[0].box.bottom = 107;
  EXPECT_EQ(vector.texts, whole.texts);
}

TEST(PlainLayout, ATextOfOnePieceIsCentredUnderTheBars) {
  const LinearOptions options{.text = {.evenSpacing = false}, .fitWidth = true};
  const Box box{.width = 101, .height = 100};
  const TextRun whole = LayoutLinear(kPattern, "AB", box, options, PixelGrid::kWhole).texts.at(0);
  EXPECT_EQ(whole.anchor, TextAnchor::kWithin);
  EXPECT_EQ(whole.width, 101);
  EXPECT_FALSE(whole.spacing);
  const TextRun vector = LayoutLinear(kPattern, "AB", box, options, PixelGrid::kFractional).texts.at(0);
  EXPECT_EQ(vector.anchor, TextAnchor::kMiddle);
  EXPECT_EQ(vector.x, 50);
}

TEST(PlainLayout, TheOptionsShapeTheBars) {
  const LinearOptions options{
      .text = {.show = false}, .fitWidth = true, .pxAdjustBlack = 1, .pxAdjustWhite = -2};
  const Drawing drawing =
      LayoutLinear(kPattern, "AB", {.width = 45, .height = 30}, options, PixelGrid::kWhole);
  EXPECT_THAT(drawing.bars, ElementsAre(RectF{0, 0, 11, 30}, RectF{29, 0, 16, 30}));
  EXPECT_EQ(drawing.drawnWidth, 45);
  EXPECT_EQ(drawing.barHeight, 30);
  EXPECT_THAT(drawing.texts, IsEmpty());
}

TEST(PlainLayout, TheTextHasTheWholePixelsOfTheBars) {
  const LinearOptions options{.text = {.evenSpacing = false}, .fitWidth = true};
  // Modules of two thirds: a bar of 1.33 pixels, a space raised to one.
  const Drawing drawing = LayoutLinear({2, 1}, "AB", {.width = 2, .height = 100}, options, PixelGrid::kWhole);
  EXPECT_FLOAT_EQ(drawing.drawnWidth, 4.0F / 3 + 1);
  EXPECT_EQ(drawing.texts.at(0).width, 2);
}

TEST(PlainLayout, AnEmptyTextKeepsItsRoomFree) {
  const Drawing drawing = LayoutLinear(kPattern, "", kBox, {}, PixelGrid::kWhole);
  EXPECT_THAT(drawing.texts, IsEmpty());
  EXPECT_EQ(drawing.barHeight, 75);
}

TEST(PlainLayout, ABoxNarrowerThanTheSymbolDoesNotShortenIt) {
  const Drawing drawing = LayoutLinear(kPattern, "AB", {.width = 3, .height = 100}, {}, PixelGrid::kWhole);
  EXPECT_EQ(drawing.drawnWidth, 9);
  EXPECT_EQ(LayoutLinear({}, "AB", kBox, {}, PixelGrid::kWhole).drawnWidth, 0);
}

}  // namespace
}  // namespace barcode
