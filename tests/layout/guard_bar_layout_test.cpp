#include "layout/guard_bar_layout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numeric>

#include "linear/jan13.h"
#include "linear/jan8.h"
#include "linear/upc_a.h"
#include "linear/upc_e.h"

namespace barcode {
namespace {

using ::testing::AllOf;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::Ge;
using ::testing::IsEmpty;
using ::testing::SizeIs;

const RunVector kJan13Runs = Jan13("png").Encode("490123456789");
const RunVector kJan8Runs = Jan8("png").Encode("4901234");
const RunVector kUpcARuns = UpcA("png").Encode("03600029145");
const RunVector kUpcERuns = UpcE("png").Encode("06543217");

// A box of 300 x 100 pixels, 75 of them above the text.
GuardBarBox Box() {
  return {.width = 300, .height = 100, .barHeight = 75};
}

GuardBarBox BareBox() {
  return {.width = 300, .height = 100, .barHeight = 100, .showText = false};
}

std::vector<std::size_t> IndicesOfHeight(const GuardBars& layout, float height) {
  std::vector<std::size_t> indices;
  for (std::size_t i = 0; i < layout.bars.size(); ++i) {
    if (layout.bars[i].height == height) {
      indices.push_back(i);
    }
  }
  return indices;
}

AnchoredText Start(std::string text, double x) {
  return {std::move(text), x, TextAnchor::kStart};
}
AnchoredText Middle(std::string text, double x) {
  return {std::move(text), x, TextAnchor::kMiddle};
}

// ---- bars ----

TEST(GuardBars, Jan13OnWholePixels) {
  const GuardBars layout = LayoutGuardBars(kJan13Style, kJan13Runs, Box(), PixelGrid::kRaster);
  // Margin 19.2: modules of floor(280.8 / 95) = 2 pixels from 19 on, guards 5 pixels (5.5) longer.
  ASSERT_THAT(layout.bars, SizeIs(30));
  EXPECT_EQ(layout.bars[0], (RectF{19, 0, 2, 80}));
  EXPECT_EQ(layout.bars[1], (RectF{23, 0, 2, 80}));
  EXPECT_EQ(layout.bars[2].height, 75);
  EXPECT_THAT(layout.sectionStarts, ElementsAre(19, 25, 109, 119, 203));
  EXPECT_EQ(layout.end, 209);
  EXPECT_THAT(IndicesOfHeight(layout, 80), ElementsAre(0, 1, 14, 15, 28, 29));
}

TEST(GuardBars, Jan13InFractions) {
  const GuardBars layout = LayoutGuardBars(kJan13Style, kJan13Runs, Box(), PixelGrid::kSvg);
  EXPECT_FLOAT_EQ(layout.bars[0].x, 19.2F);
  EXPECT_FLOAT_EQ(layout.bars[0].height, 80.5F);
  EXPECT_FLOAT_EQ(layout.bars[2].height, 75);
  EXPECT_FLOAT_EQ(layout.sectionStarts[1], 25.2F);
  EXPECT_FLOAT_EQ(layout.end, 209.2F);
}

TEST(GuardBars, Jan8HasNoMargin) {
  const GuardBars layout = LayoutGuardBars(kJan8Style, kJan8Runs, Box(), PixelGrid::kRaster);
  ASSERT_THAT(layout.bars, SizeIs(22));
  EXPECT_EQ(layout.bars[0], (RectF{0, 0, 4, 80}));
  EXPECT_THAT(layout.sectionStarts, ElementsAre(0, 12, 124, 144, 256));
  EXPECT_EQ(layout.end, 268);
  EXPECT_THAT(IndicesOfHeight(layout, 80), ElementsAre(0, 1, 10, 11, 20, 21));
}

TEST(GuardBars, UpcAFirstAndLastDigitTakeTheGuardHeight) {
  const GuardBars layout = LayoutGuardBars(kUpcAStyle, kUpcARuns, Box(), PixelGrid::kRaster);
  // Margins 16 + 16: modules of floor(268 / 95) = 2, guards 9 pixels (9.9) longer; boundaries at 10, 46, 49
  // and 85 modules.
  EXPECT_EQ(layout.bars[0], (RectF{16, 0, 2, 84}));
  EXPECT_THAT(layout.sectionStarts, ElementsAre(16, 36, 108, 114, 186));
  EXPECT_EQ(layout.end, 206);
  EXPECT_EQ(layout.rightMargin, 16);
  EXPECT_THAT(IndicesOfHeight(layout, 84), ElementsAre(0, 1, 2, 3, 14, 15, 26, 27, 28, 29));
  EXPECT_THAT(IndicesOfHeight(layout, 75), SizeIs(20));
}

TEST(GuardBars, UpcEGuardsAreThreeAndSixRuns) {
  const GuardBars layout = LayoutGuardBars(kUpcEStyle, kUpcERuns, Box(), PixelGrid::kRaster);
  // Modules of floor(268 / 51) = 5; the data from 3 to 45 modules.
  EXPECT_EQ(layout.bars[0], (RectF{16, 0, 5, 84}));
  EXPECT_THAT(layout.sectionStarts, ElementsAre(16, 31, 241));
  EXPECT_EQ(layout.end, 271);
  EXPECT_THAT(IndicesOfHeight(layout, 84), ElementsAre(0, 1, 14, 15, 16));
}

TEST(GuardBars, UpcInFractions) {
  GuardBarBox box = Box();
  box.height = 101;
  const GuardBars layout = LayoutGuardBars(kUpcAStyle, kUpcARuns, box, PixelGrid::kSvg);
  EXPECT_FLOAT_EQ(layout.bars[0].x, 16.16F);
  EXPECT_FLOAT_EQ(layout.bars[0].height, 75 + 9.999F);
  EXPECT_FLOAT_EQ(layout.rightMargin, 16.16F);
}

TEST(GuardBars, WithoutTextNoMarginsAndGuardsFivePercentLonger) {
  for (const auto* style : {&kJan13Style, &kUpcAStyle}) {
    const GuardBars layout = LayoutGuardBars(*style, kJan13Runs, BareBox(), PixelGrid::kRaster);
    EXPECT_EQ(layout.bars[0], (RectF{0, 0, 3, 105}));
    EXPECT_EQ(layout.rightMargin, 0);
  }
  GuardBarBox box = BareBox();
  box.barHeight = 99;
  EXPECT_EQ(LayoutGuardBars(kJan8Style, kJan8Runs, box, PixelGrid::kRaster).bars[0].height, 103);
  EXPECT_FLOAT_EQ(LayoutGuardBars(kJan8Style, kJan8Runs, box, PixelGrid::kSvg).bars[0].height, 103.95F);
}

TEST(GuardBars, MarginFollowsTheFontScale) {
  GuardBarBox box = Box();
  box.textFontScale = 2;
  const GuardBars layout = LayoutGuardBars(kJan13Style, kJan13Runs, box, PixelGrid::kRaster);
  EXPECT_EQ(layout.bars[0], (RectF{38, 0, 2, 86}));
}

TEST(GuardBars, MarginUsesTheMiddleBandAtEveryHeight) {
  GuardBarBox box = Box();
  for (const unsigned height : {40U, 300U}) {
    box.height = height;
    const GuardBars layout = LayoutGuardBars(kJan13Style, kJan13Runs, box, PixelGrid::kRaster);
    EXPECT_EQ(layout.bars[0].x, std::trunc(static_cast<float>(height) * 0.192F));
  }
}

// height x thousandths / 1000, without its fraction.
int Whole(int height, int thousandths) {
  return height * thousandths / 1000;
}

// Products of decimal factors that are whole numbers are not to fall short by a rounding.
TEST(GuardBars, WholeMarginsAndGuardsAreExact) {
  for (int height = 1; height <= 4000; ++height) {
    GuardBarBox box = Box();
    box.height = static_cast<std::uint32_t>(height);
    const GuardBars jan = LayoutGuardBars(kJan13Style, kJan13Runs, box, PixelGrid::kRaster);
    ASSERT_EQ(jan.sectionStarts[0], Whole(height, 192)) << height;
    ASSERT_EQ(jan.bars[0].height, 75 + Whole(height, 55)) << height;
    const GuardBars upc = LayoutGuardBars(kUpcAStyle, kUpcARuns, box, PixelGrid::kRaster);
    ASSERT_EQ(upc.sectionStarts[0], Whole(height, 160)) << height;
    ASSERT_EQ(upc.bars[0].height, 75 + Whole(height, 99)) << height;
    box.showText = false;
    box.barHeight = static_cast<float>(height);
    const GuardBars bare = LayoutGuardBars(kJan13Style, kJan13Runs, box, PixelGrid::kRaster);
    ASSERT_EQ(bare.bars[0].height, Whole(height, 1050)) << height;
  }
}

TEST(GuardBars, NarrowBoxesGetOnePixelModules) {
  GuardBarBox box = Box();
  box.width = 115;  // 95 modules and the margin of 19.2
  EXPECT_EQ(LayoutGuardBars(kJan13Style, kJan13Runs, box, PixelGrid::kRaster).end, 19 + 95);
  for (const unsigned width : {50U, 1U, 0U}) {
    box.width = width;
    EXPECT_EQ(LayoutGuardBars(kJan13Style, kJan13Runs, box, PixelGrid::kRaster).end, 19 + 95) << width;
  }
}

TEST(GuardBars, FitWidthKeepsFractionsOfPixels) {
  GuardBarBox box = BareBox();
  box.fitWidth = true;
  const GuardBars layout = LayoutGuardBars(kJan13Style, kJan13Runs, box, PixelGrid::kRaster);
  EXPECT_FLOAT_EQ(layout.bars[0].width, 300.0F / 95);
  EXPECT_NEAR(layout.end, 300, 0.001);
  EXPECT_EQ(layout.sectionStarts[1], 9);  // 9.47
  EXPECT_FLOAT_EQ(LayoutGuardBars(kJan13Style, kJan13Runs, box, PixelGrid::kSvg).sectionStarts[1],
                  900.0F / 95);
}

TEST(GuardBars, FitWidthElementsAreAtLeastOnePixel) {
  GuardBarBox box = BareBox();
  box.fitWidth = true;
  box.width = 40;
  const GuardBars layout = LayoutGuardBars(kJan13Style, kJan13Runs, box, PixelGrid::kRaster);
  EXPECT_THAT(layout.bars, Each(Field(&RectF::width, Ge(1.0F))));
  box.showText = true;
  box.width = 10;  // narrower than the margin
  EXPECT_EQ(LayoutGuardBars(kJan13Style, kJan13Runs, box, PixelGrid::kRaster).end, 19 + 59);
}

TEST(GuardBars, AdjustmentsAccumulate) {
  GuardBarBox box = BareBox();
  box.pxAdjustBlack = 2;
  box.pxAdjustWhite = -1;
  const GuardBars layout = LayoutGuardBars(kJan13Style, kJan13Runs, box, PixelGrid::kRaster);
  EXPECT_EQ(layout.bars[0], (RectF{0, 0, 5, 105}));
  EXPECT_EQ(layout.bars[1], (RectF{7, 0, 5, 105}));
  EXPECT_EQ(layout.end, 3 * 95 + 30 * 2 - 29);
}

TEST(GuardBars, AdjustedElementsAreAtLeastOnePixel) {
  GuardBarBox box = BareBox();
  box.pxAdjustBlack = std::numeric_limits<int>::min();
  box.pxAdjustWhite = -1000;
  const GuardBars layout = LayoutGuardBars(kJan13Style, kJan13Runs, box, PixelGrid::kRaster);
  EXPECT_THAT(layout.bars, Each(Field(&RectF::width, 1.0F)));
  EXPECT_EQ(layout.end, 59);
}

TEST(GuardBars, OriginMovesEverything) {
  GuardBarBox box = Box();
  box.x = 10;
  box.y = 20;
  const GuardBars layout = LayoutGuardBars(kJan13Style, kJan13Runs, box, PixelGrid::kRaster);
  EXPECT_EQ(layout.bars[0], (RectF{29, 20, 2, 80}));
  EXPECT_THAT(layout.sectionStarts, ElementsAre(29, 35, 119, 129, 213));
}

TEST(GuardBars, SectionsBeyondTheElementsTakeTheirNominalWidths) {
  const RunVector guardOnly = {1, 1, 1};
  GuardBarBox box = BareBox();
  box.width = 30;  // modules of 10 pixels
  EXPECT_THAT(LayoutGuardBars(kJan8Style, guardOnly, box, PixelGrid::kRaster).sectionStarts,
              ElementsAre(0, 30, 190, 240, 400));
  EXPECT_THAT(LayoutGuardBars(kUpcAStyle, guardOnly, box, PixelGrid::kRaster).sectionStarts,
              ElementsAre(0, 70, 280, 310, 520));
  EXPECT_THAT(LayoutGuardBars(kUpcEStyle, guardOnly, box, PixelGrid::kRaster).sectionStarts,
              ElementsAre(0, 30, 450));
}

TEST(GuardBars, ScalesThatAreNoNumbersReserveNothing) {
  GuardBarBox box = Box();
  for (const float scale : {std::nanf(""), std::numeric_limits<float>::infinity(), 1e38F}) {
    box.textFontScale = scale;
    const GuardBars layout = LayoutGuardBars(kJan13Style, kJan13Runs, box, PixelGrid::kSvg);
    EXPECT_EQ(layout.bars[0], (RectF{0, 0, 3, 75})) << scale;
  }
}

// ---- digits ----

TEST(GuardText, Jan13GroupsAndLeadingDigitOnWholePixels) {
  const GuardBars bars = LayoutGuardBars(kJan13Style, kJan13Runs, Box(), PixelGrid::kRaster);
  // Left 25 to 109, right 119 to 203, cells of 10: 64 usable pixels in steps of 12.8, truncated.
  EXPECT_THAT(LayoutGuardText(kJan13Style, bars, "4901234567894", Box(), 10, PixelGrid::kRaster),
              ElementsAre(Start("4", 0), Middle("9", 35), Middle("0", 47), Middle("1", 60), Middle("2", 73),
                          Middle("3", 86), Middle("4", 99), Middle("5", 129), Middle("6", 141),
                          Middle("7", 154), Middle("8", 167), Middle("9", 180), Middle("4", 193)));
}

TEST(GuardText, Jan13CentredGroups) {
  GuardBarBox box = Box();
  box.textEvenSpacing = false;
  const GuardBars bars = LayoutGuardBars(kJan13Style, kJan13Runs, box, PixelGrid::kRaster);
  EXPECT_THAT(LayoutGuardText(kJan13Style, bars, "4901234567894", box, 10, PixelGrid::kRaster),
              ElementsAre(Start("4", 0), Middle("901234", 67), Middle("567894", 161)));
}

TEST(GuardText, Jan13InFractions) {
  GuardBarBox box = Box();
  const GuardBars bars = LayoutGuardBars(kJan13Style, kJan13Runs, box, PixelGrid::kSvg);
  const auto digits = LayoutGuardText(kJan13Style, bars, "4901234567894", box, 9.6, PixelGrid::kSvg);
  ASSERT_THAT(digits, SizeIs(13));
  EXPECT_NEAR(digits[0].x, 2.88, 1e-5);  // 0.3 digit widths from the edge
  EXPECT_NEAR(digits[1].x, 25.2 + 9.6, 1e-4);
  EXPECT_NEAR(digits[2].x, 25.2 + 9.6 + (84 - 19.2) / 5, 1e-4);
  EXPECT_NEAR(digits[12].x, 203.2 - 9.6, 1e-4);
  box.textEvenSpacing = false;
  const auto groups = LayoutGuardText(kJan13Style, bars, "4901234567894", box, 9.6, PixelGrid::kSvg);
  ASSERT_THAT(groups, SizeIs(3));
  EXPECT_NEAR(groups[1].x, 67.2, 1e-4);
}

TEST(GuardText, Jan8GroupsOfFour) {
  const GuardBars bars = LayoutGuardBars(kJan8Style, kJan8Runs, Box(), PixelGrid::kRaster);
  // 12 to 124 and 144 to 256, cells of 10: steps of 92 / 3.
  EXPECT_THAT(LayoutGuardText(kJan8Style, bars, "49012347", Box(), 10, PixelGrid::kRaster),
              ElementsAre(Middle("4", 22), Middle("9", 52), Middle("0", 83), Middle("1", 114),
                          Middle("2", 154), Middle("3", 184), Middle("4", 215), Middle("7", 246)));
}

TEST(GuardText, UpcAOuterDigitsAndGroupsOfFive) {
  const GuardBars bars = LayoutGuardBars(kUpcAStyle, kUpcARuns, Box(), PixelGrid::kRaster);
  // 36 to 108 and 114 to 186, cells of 10: steps of 13; the check digit ends in the right margin.
  EXPECT_THAT(LayoutGuardText(kUpcAStyle, bars, "036000291452", Box(), 10, PixelGrid::kRaster),
              ElementsAre(Start("0", 0), Middle("3", 46), Middle("6", 59), Middle("0", 72), Middle("0", 85),
                          Middle("0", 98), Middle("2", 124), Middle("9", 137), Middle("1", 150),
                          Middle("4", 163), Middle("5", 176), Start("2", 206 - 10 + 16)));
}

TEST(GuardText, UpcAOuterDigitsInFractions) {
  GuardBarBox box = Box();
  box.height = 101;
  const GuardBars bars = LayoutGuardBars(kUpcAStyle, kUpcARuns, box, PixelGrid::kSvg);
  const auto digits = LayoutGuardText(kUpcAStyle, bars, "036000291452", box, 9.6, PixelGrid::kSvg);
  ASSERT_THAT(digits, SizeIs(12));
  EXPECT_EQ(digits.front(), Start("0", 0));
  EXPECT_NEAR(digits.back().x, 206.16 - 9.6 + 16.16, 1e-4);
}

TEST(GuardText, UpcEOuterDigitsAndOneGroupOfSix) {
  const GuardBars bars = LayoutGuardBars(kUpcEStyle, kUpcERuns, Box(), PixelGrid::kRaster);
  EXPECT_THAT(LayoutGuardText(kUpcEStyle, bars, "06543217", Box(), 10, PixelGrid::kRaster),
              ElementsAre(Start("0", 0), Middle("6", 41), Middle("5", 79), Middle("4", 117), Middle("3", 155),
                          Middle("2", 193), Middle("1", 231), Start("7", 271 - 10 + 16)));
}

TEST(GuardText, HalvesAreTruncated) {
  GuardBars bars;
  bars.sectionStarts = {0, 3, 28};  // a span of 25
  GuardBarBox box = Box();
  box.textEvenSpacing = false;
  EXPECT_THAT(LayoutGuardText(kUpcEStyle, bars, "06543217", box, 5, PixelGrid::kRaster)[1],
              Middle("654321", 15));
  EXPECT_THAT(LayoutGuardText(kUpcEStyle, bars, "06543217", box, 5, PixelGrid::kSvg)[1],
              Middle("654321", 15.5));
}

TEST(GuardText, GroupsNeedMoreThanTwoCells) {
  const GuardBars bars = LayoutGuardBars(kJan13Style, kJan13Runs, Box(), PixelGrid::kRaster);
  EXPECT_THAT(LayoutGuardText(kJan13Style, bars, "4901234567894", Box(), 41, PixelGrid::kRaster), SizeIs(13));
  EXPECT_THAT(LayoutGuardText(kJan13Style, bars, "4901234567894", Box(), 42, PixelGrid::kRaster),
              ElementsAre(Start("4", 0)));
  EXPECT_THAT(LayoutGuardText(kJan8Style, bars, "49012347", Box(), 1e9, PixelGrid::kRaster), IsEmpty());
}

TEST(GuardText, NarrowRightGroupEndsTheText) {
  const GuardBars upcA = LayoutGuardBars(kUpcAStyle, kUpcARuns, Box(), PixelGrid::kRaster);
  EXPECT_THAT(LayoutGuardText(kUpcAStyle, upcA, "036000291452", Box(), 36, PixelGrid::kRaster),
              ElementsAre(Start("0", 0)));
  // The only group of UPC-E leaves both outer digits in place.
  const GuardBars upcE = LayoutGuardBars(kUpcEStyle, kUpcERuns, Box(), PixelGrid::kRaster);
  EXPECT_THAT(LayoutGuardText(kUpcEStyle, upcE, "06543217", Box(), 105, PixelGrid::kRaster),
              ElementsAre(Start("0", 0), Start("7", 271 - 105 + 16)));
}

TEST(GuardTextTop, RasterJan8AloneLeavesAGap) {
  GuardBarBox box = Box();
  box.y = 7;
  EXPECT_EQ(GuardTextTop(kJan13Style, box, PixelGrid::kRaster), 82);
  EXPECT_EQ(GuardTextTop(kUpcAStyle, box, PixelGrid::kRaster), 82);
  EXPECT_EQ(GuardTextTop(kUpcEStyle, box, PixelGrid::kRaster), 82);
  EXPECT_EQ(GuardTextTop(kJan8Style, box, PixelGrid::kRaster), 85);
}

TEST(GuardTextTop, SvgAlwaysLeavesAGap) {
  for (const auto* style : {&kJan13Style, &kJan8Style, &kUpcAStyle, &kUpcEStyle}) {
    EXPECT_EQ(GuardTextTop(*style, Box(), PixelGrid::kSvg), 78);
  }
}

TEST(GuardTextTop, GapFollowsItsScaleAndIsAtLeastOnePixel) {
  GuardBarBox box = Box();
  box.textGap = 2;
  EXPECT_EQ(GuardTextTop(kJan8Style, box, PixelGrid::kRaster), 81);
  for (const float scale : {0.0F, -5.0F, std::nanf("")}) {
    box.textGap = scale;
    EXPECT_EQ(GuardTextTop(kJan8Style, box, PixelGrid::kRaster), 76);
  }
}

}  // namespace
}  // namespace barcode
