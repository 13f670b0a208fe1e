#include "layout/text_layout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace barcode {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr double kUnbounded = std::numeric_limits<double>::infinity();

// ---- height of the bars ----

TEST(BarHeight, LeavesTextAndGapOfTheBand) {
  EXPECT_EQ(LayoutBarHeight(49, 1, {}), 49 - 12 - 2);  // the gap of 1.47 is raised
  EXPECT_EQ(LayoutBarHeight(50, 1, {}), 50 - 10 - 2);
  EXPECT_EQ(LayoutBarHeight(200, 1, {}), 200 - 40 - 10);
  EXPECT_EQ(LayoutBarHeight(201, 1, {}), 201 - 30 - 14);
}

TEST(BarHeight, SeveralLinesReserveTwoMoreThanTheyAre) {
  EXPECT_EQ(LayoutBarHeight(200, 2, {}), 200 - 4 * 40 - 10);
  EXPECT_EQ(LayoutBarHeight(300, 3, {}), 300 - 5 * 45 - 21);
}

TEST(BarHeight, IsAtLeastOne) {
  EXPECT_EQ(LayoutBarHeight(11, 1, {}), 1);
  EXPECT_EQ(LayoutBarHeight(12, 1, {}), 2);  // 12 - 8 - 2
  EXPECT_EQ(LayoutBarHeight(5, 1, {}), 1);
  EXPECT_EQ(LayoutBarHeight(0, 1, {}), 1);
  EXPECT_EQ(LayoutBarHeight(100, 3, {}), 1);  // five lines of 20 take it all
  EXPECT_EQ(LayoutBarHeight(0, 1, {.show = false}), 1);
}

TEST(BarHeight, WithoutTextItIsTheHeightOfTheBox) {
  EXPECT_EQ(LayoutBarHeight(100, 1, {.show = false}), 100);
  EXPECT_EQ(LayoutBarHeight(100, 3, {.show = false, .fontScale = 2, .gap = 5}), 100);
}

TEST(BarHeight, FollowsTheScalesOfTextAndGap) {
  EXPECT_EQ(LayoutBarHeight(100, 1, {.fontScale = 2}), 100 - 40 - 5);
  EXPECT_EQ(LayoutBarHeight(100, 1, {.fontScale = 0.1F}), 100 - 8 - 5);
  EXPECT_EQ(LayoutBarHeight(100, 1, {.gap = 3}), 100 - 20 - 15);
  EXPECT_EQ(LayoutBarHeight(100, 1, {.gap = -3}), 100 - 20 - 2);
}

TEST(BarHeight, AnyScaleIsDefined) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  EXPECT_EQ(LayoutBarHeight(100, 1, {.fontScale = std::nanf("")}), 100 - 8 - 5);
  EXPECT_EQ(LayoutBarHeight(100, 1, {.fontScale = -kInfinity}), 100 - 8 - 5);
  EXPECT_EQ(LayoutBarHeight(100, 1, {.gap = std::nanf("")}), 100 - 20 - 2);
  for (const int lines : {1, 2, std::numeric_limits<int>::max()}) {
    EXPECT_EQ(LayoutBarHeight(0xFFFFFFFF, lines, {.fontScale = kInfinity, .gap = kInfinity}), 1) << lines;
  }
}

// ---- one line ----

TEST(TextLine, SpreadEvenlyItStandsAtTheSameCentresInBothGrids) {
  for (const PixelGrid grid : {PixelGrid::kWhole, PixelGrid::kFractional}) {
    const TextRun run = LayoutTextLine("ABC", 10, 300, 20, {.top = 80, .bottom = 100}, {}, grid);
    EXPECT_EQ(run.text, "ABC");
    EXPECT_EQ(run.size, 20);
    EXPECT_EQ(run.box, (TextBox{80, 100}));
    // Margins of 15: two pitches in 270 pixels.
    ASSERT_TRUE(run.spacing);
    EXPECT_EQ(*run.spacing, (EvenSpacing{.first = 10 + 15, .pitch = 135}));
  }
}

TEST(TextLine, TheMarginOfASpreadLineHasAScale) {
  const TextRun run = LayoutTextLine("ABC", 10, 300, 20, {}, {.marginScale = 2}, PixelGrid::kWhole);
  EXPECT_EQ(run.spacing, (EvenSpacing{.first = 10 + 30, .pitch = 120}));
}

TEST(TextLine, InOnePieceWholePixelsLeaveTheCentringToThePainter) {
  const TextRun run =
      LayoutTextLine("ABC", 10, 301, 20, {.top = 80}, {.evenSpacing = false}, PixelGrid::kWhole);
  EXPECT_FALSE(run.spacing);
  EXPECT_EQ(run.anchor, TextAnchor::kWithin);
  EXPECT_EQ(run.x, 10);
  EXPECT_EQ(run.width, 301);
  EXPECT_EQ(run.text, "ABC");
  EXPECT_EQ(run.size, 20);
  EXPECT_EQ(run.box, (TextBox{80, kUnbounded}));
}

TEST(TextLine, InOnePieceAVectorLineHasItsMiddleAtAWholePixel) {
  const TextRun run =
      LayoutTextLine("ABC", 10, 301, 20, {.top = 80.5}, {.evenSpacing = false}, PixelGrid::kFractional);
  EXPECT_FALSE(run.spacing);
  EXPECT_EQ(run.anchor, TextAnchor::kMiddle);
  EXPECT_EQ(run.x, 10 + 150);
  EXPECT_EQ(run.box, (TextBox{80.5, kUnbounded}));
}

TEST(TextLine, TheMiddleOfTheLargestBoxIsDefined) {
  constexpr int kMax = std::numeric_limits<int>::max();
  const TextRun run = LayoutTextLine("A", kMax, kMax, 20, {}, {.evenSpacing = false}, PixelGrid::kFractional);
  EXPECT_EQ(run.x, 2147483647.0 + 1073741823.0);
}

// ---- the human-readable line ----

constexpr Box kBox{.x = 3, .y = 7, .width = 300, .height = 100};

std::vector<TextRun> HumanReadable(const std::string& text, const TextOptions& options, PixelGrid grid) {
  Drawing drawing;
  AddHumanReadableLine(drawing, text, kBox, 286, options, grid);
  return drawing.texts;
}

TEST(HumanReadableLine, StandsAtTheBottomOfTheBoxAcrossTheBars) {
  const auto texts = HumanReadable("AB", {}, PixelGrid::kWhole);
  const TextBox room{.top = 87, .bottom = 107};
  EXPECT_THAT(texts, ElementsAre(LayoutTextLine("AB", 3, 286, 20, room, {}, PixelGrid::kWhole)));
}

TEST(HumanReadableLine, OnlyWholePixelsBoundItAtTheBottom) {
  const auto texts = HumanReadable("AB", {}, PixelGrid::kFractional);
  ASSERT_THAT(texts, SizeIs(1));
  EXPECT_EQ(texts[0].box, (TextBox{87, kUnbounded}));
}

TEST(HumanReadableLine, HasTheOptionsOfTheText) {
  const TextOptions options{.fontScale = 1.5F, .marginScale = 2, .evenSpacing = false};
  EXPECT_THAT(HumanReadable("AB", options, PixelGrid::kFractional),
              ElementsAre(LayoutTextLine("AB", 3, 286, 30, {.top = 77}, options, PixelGrid::kFractional)));
}

TEST(HumanReadableLine, NothingForAnEmptyTextOrWhenItIsNotShown) {
  for (const PixelGrid grid : {PixelGrid::kWhole, PixelGrid::kFractional}) {
    EXPECT_THAT(HumanReadable("", {}, grid), IsEmpty());
    EXPECT_THAT(HumanReadable("AB", {.show = false}, grid), IsEmpty());
  }
}

TEST(HumanReadableLine, ALowBoxHasItAboveItsTop) {
  Drawing drawing;
  AddHumanReadableLine(drawing, "AB", {.y = 7, .width = 300, .height = 5}, 286, {}, PixelGrid::kWhole);
  EXPECT_EQ(drawing.texts.at(0).box, (TextBox{7 + 5 - 8, 7 + 5}));
}

TEST(HumanReadableLine, LeavesWhatTheDrawingHolds) {
  Drawing drawing;
  drawing.bars.push_back({1, 2, 3, 4});
  AddHumanReadableLine(drawing, "first", kBox, 286, {}, PixelGrid::kWhole);
  AddHumanReadableLine(drawing, "second", kBox, 286, {}, PixelGrid::kWhole);
  ASSERT_THAT(drawing.texts, SizeIs(2));
  EXPECT_EQ(drawing.texts[0].text, "first");
  EXPECT_EQ(drawing.texts[1].text, "second");
  EXPECT_THAT(drawing.bars, SizeIs(1));
}

}  // namespace
}  // namespace barcode
