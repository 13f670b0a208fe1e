#include "layout/guard_bar_layout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "layout/text_layout.h"
#include "linear/ean_upc_encoder.h"

namespace barcode {
namespace {

using ::testing::AllOf;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::Ge;
using ::testing::IsEmpty;
using ::testing::SizeIs;

const RunVector kJan13Runs = EncodeJan13("4901234567894");
const RunVector kJan8Runs = EncodeJan8("49012347");
const RunVector kUpcARuns = EncodeUpcA("036000291452");
const RunVector kUpcERuns = EncodeUpcE("06543217");

// 75 pixels of it stand above the text.
constexpr Box kBox{.width = 300, .height = 100};

constexpr LinearOptions kDefaults;
constexpr LinearOptions kCentred{.text = {.evenSpacing = false}};
constexpr LinearOptions kBare{.text = {.show = false}};

std::vector<std::size_t> IndicesOfHeight(const GuardBars& layout, float height) {
  std::vector<std::size_t> indices;
  for (std::size_t i = 0; i < layout.bars.size(); ++i) {
    if (layout.bars[i].height == height) {
      indices.push_back(i);
    }
  }
  return indices;
}

// Font size and top of the digits in kBox.
struct DigitLine {
  int size = 20;
  double top = 75;
};
constexpr DigitLine kJan8Line{20, 78};
constexpr DigitLine kVectorLine{16, 78};

TextRun Run(std::string text, TextAnchor anchor, double x, const DigitLine& line) {
  TextRun run;
  run.text = std::move(text);
  run.size = line.size;
  run.anchor = anchor;
  run.x = x;
  run.box.top = line.top;
  return run;
}
TextRun Start(std::string text, double x, const DigitLine& line = {}) {
  return Run(std::move(text), TextAnchor::kStart, x, line);
}
TextRun Middle(std::string text, double x, const DigitLine& line = {}) {
  return Run(std::move(text), TextAnchor::kMiddle, x, line);
}

// ---- bars ----

TEST(GuardBars, Jan13OnWholePixels) {
  const GuardBars layout = LayoutGuardBars(kJan13Style, kJan13Runs, kBox, kDefaults, PixelGrid::kWhole);
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
  const GuardBars layout = LayoutGuardBars(kJan13Style, kJan13Runs, kBox, kDefaults, PixelGrid::kFractional);
  EXPECT_FLOAT_EQ(layout.bars[0].x, 19.2F);
  EXPECT_FLOAT_EQ(layout.bars[0].height, 80.5F);
  EXPECT_FLOAT_EQ(layout.bars[2].height, 75);
  EXPECT_FLOAT_EQ(layout.sectionStarts[1], 25.2F);
  EXPECT_FLOAT_EQ(layout.end, 209.2F);
}

TEST(GuardBars, Jan8HasNoMargin) {
  const GuardBars layout = LayoutGuardBars(kJan8Style, kJan8Runs, kBox, kDefaults, PixelGrid::kWhole);
  ASSERT_THAT(layout.bars, SizeIs(22));
  EXPECT_EQ(layout.bars[0], (RectF{0, 0, 4, 80}));
  EXPECT_THAT(layout.sectionStarts, ElementsAre(0, 12, 124, 144, 256));
  EXPECT_EQ(layout.end, 268);
  EXPECT_THAT(IndicesOfHeight(layout, 80), ElementsAre(0, 1, 10, 11, 20, 21));
}

TEST(GuardBars, UpcAFirstAndLastDigitTakeTheGuardHeight) {
  const GuardBars layout = LayoutGuardBars(kUpcAStyle, kUpcARuns, kBox, kDefaults, PixelGrid::kWhole);
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
  const GuardBars layout = LayoutGuardBars(kUpcEStyle, kUpcERuns, kBox, kDefaults, PixelGrid::kWhole);
  // Modules of floor(268 / 51) = 5; the data from 3 to 45 modules.
  EXPECT_EQ(layout.bars[0], (RectF{16, 0, 5, 84}));
  EXPECT_THAT(layout.sectionStarts, ElementsAre(16, 31, 241));
  EXPECT_EQ(layout.end, 271);
  EXPECT_THAT(IndicesOfHeight(layout, 84), ElementsAre(0, 1, 14, 15, 16));
}

TEST(GuardBars, UpcInFractions) {
  Box box = kBox;
  box.height = 101;
  const GuardBars layout = LayoutGuardBars(kUpcAStyle, kUpcARuns, box, kDefaults, PixelGrid::kFractional);
  EXPECT_FLOAT_EQ(layout.bars[0].x, 16.16F);
  EXPECT_FLOAT_EQ(layout.bars[0].height, 76 + 9.999F);
  EXPECT_FLOAT_EQ(layout.rightMargin, 16.16F);
}

TEST(GuardBars, WithoutTextNoMarginsAndGuardsFivePercentLonger) {
  for (const auto* style : {&kJan13Style, &kUpcAStyle}) {
    const GuardBars layout = LayoutGuardBars(*style, kJan13Runs, kBox, kBare, PixelGrid::kWhole);
    EXPECT_EQ(layout.bars[0], (RectF{0, 0, 3, 105}));
    EXPECT_EQ(layout.rightMargin, 0);
  }
  Box box = kBox;
  box.height = 99;
  EXPECT_EQ(LayoutGuardBars(kJan8Style, kJan8Runs, box, kBare, PixelGrid::kWhole).bars[0].height, 103);
  EXPECT_FLOAT_EQ(LayoutGuardBars(kJan8Style, kJan8Runs, box, kBare, PixelGrid::kFractional).bars[0].height,
                  103.95F);
}

TEST(GuardBars, MarginFollowsTheFontScale) {
  LinearOptions options;
  options.text.fontScale = 2;
  const GuardBars layout = LayoutGuardBars(kJan13Style, kJan13Runs, kBox, options, PixelGrid::kWhole);
  EXPECT_EQ(layout.bars[0], (RectF{38, 0, 2, 55 + 11}));
}

TEST(GuardBars, MarginUsesTheMiddleBandAtEveryHeight) {
  Box box = kBox;
  for (const unsigned height : {40U, 300U}) {
    box.height = height;
    const GuardBars layout = LayoutGuardBars(kJan13Style, kJan13Runs, box, kDefaults, PixelGrid::kWhole);
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
    const Box box{.width = 300, .height = static_cast<std::uint32_t>(height)};
    const float barHeight = LayoutBarHeight(box.height, 1, {});
    const GuardBars jan = LayoutGuardBars(kJan13Style, kJan13Runs, box, kDefaults, PixelGrid::kWhole);
    ASSERT_EQ(jan.sectionStarts[0], Whole(height, 192)) << height;
    ASSERT_EQ(jan.bars[0].height, barHeight + static_cast<float>(Whole(height, 55))) << height;
    const GuardBars upc = LayoutGuardBars(kUpcAStyle, kUpcARuns, box, kDefaults, PixelGrid::kWhole);
    ASSERT_EQ(upc.sectionStarts[0], Whole(height, 160)) << height;
    ASSERT_EQ(upc.bars[0].height, barHeight + static_cast<float>(Whole(height, 99))) << height;
    const GuardBars bare = LayoutGuardBars(kJan13Style, kJan13Runs, box, kBare, PixelGrid::kWhole);
    ASSERT_EQ(bare.bars[0].height, Whole(height, 1050)) << height;
  }
}

TEST(GuardBars, NarrowBoxesGetOnePixelModules) {
  Box box = kBox;
  box.width = 115;  // 95 modules and the margin of 19.2
  EXPECT_EQ(LayoutGuardBars(kJan13Style, kJan13Runs, box, kDefaults, PixelGrid::kWhole).end, 19 + 95);
  for (const unsigned width : {50U, 1U, 0U}) {
    box.width = width;
    EXPECT_EQ(LayoutGuardBars(kJan13Style, kJan13Runs, box, kDefaults, PixelGrid::kWhole).end, 19 + 95)
        << width;
  }
}

TEST(GuardBars, FitWidthKeepsFractionsOfPixels) {
  LinearOptions options = kBare;
  options.fitWidth = true;
  const GuardBars layout = LayoutGuardBars(kJan13Style, kJan13Runs, kBox, options, PixelGrid::kWhole);
  EXPECT_FLOAT_EQ(layout.bars[0].width, 300.0F / 95);
  EXPECT_NEAR(layout.end, 300, 0.001);
  EXPECT_EQ(layout.sectionStarts[1], 9);  // 9.47
  EXPECT_FLOAT_EQ(
      LayoutGuardBars(kJan13Style, kJan13Runs, kBox, options, PixelGrid::kFractional).sectionStarts[1],
      900.0F / 95);
}

TEST(GuardBars, FitWidthElementsAreAtLeastOnePixel) {
  LinearOptions options = kBare;
  options.fitWidth = true;
  Box box = kBox;
  box.width = 40;
  const GuardBars layout = LayoutGuardBars(kJan13Style, kJan13Runs, box, options, PixelGrid::kWhole);
  EXPECT_THAT(layout.bars, Each(Field(&RectF::width, Ge(1.0F))));
  options.text.show = true;
  box.width = 10;  // narrower than the margin
  EXPECT_EQ(LayoutGuardBars(kJan13Style, kJan13Runs, box, options, PixelGrid::kWhole).end, 19 + 59);
}

TEST(GuardBars, AdjustmentsAccumulate) {
  LinearOptions options = kBare;
  options.pxAdjustBlack = 2;
  options.pxAdjustWhite = -1;
  const GuardBars layout = LayoutGuardBars(kJan13Style, kJan13Runs, kBox, options, PixelGrid::kWhole);
  EXPECT_EQ(layout.bars[0], (RectF{0, 0, 5, 105}));
  EXPECT_EQ(layout.bars[1], (RectF{7, 0, 5, 105}));
  EXPECT_EQ(layout.end, 3 * 95 + 30 * 2 - 29);
}

TEST(GuardBars, AdjustedElementsAreAtLeastOnePixel) {
  LinearOptions options = kBare;
  options.pxAdjustBlack = std::numeric_limits<int>::min();
  options.pxAdjustWhite = -1000;
  const GuardBars layout = LayoutGuardBars(kJan13Style, kJan13Runs, kBox, options, PixelGrid::kWhole);
  EXPECT_THAT(layout.bars, Each(Field(&RectF::width, 1.0F)));
  EXPECT_EQ(layout.end, 59);
}

TEST(GuardBars, OriginMovesEverything) {
  Box box = kBox;
  box.x = 10;
  box.y = 20;
  const GuardBars layout = LayoutGuardBars(kJan13Style, kJan13Runs, box, kDefaults, PixelGrid::kWhole);
  EXPECT_EQ(layout.bars[0], (RectF{29, 20, 2, 80}));
  EXPECT_THAT(layout.sectionStarts, ElementsAre(29, 35, 119, 129, 213));
}

TEST(GuardBars, SectionsBeyondTheElementsTakeTheirNominalWidths) {
  const RunVector guardOnly = {1, 1, 1};
  Box box = kBox;
  box.width = 30;  // modules of 10 pixels
  EXPECT_THAT(LayoutGuardBars(kJan8Style, guardOnly, box, kBare, PixelGrid::kWhole).sectionStarts,
              ElementsAre(0, 30, 190, 240, 400));
  EXPECT_THAT(LayoutGuardBars(kUpcAStyle, guardOnly, box, kBare, PixelGrid::kWhole).sectionStarts,
              ElementsAre(0, 70, 280, 310, 520));
  EXPECT_THAT(LayoutGuardBars(kUpcEStyle, guardOnly, box, kBare, PixelGrid::kWhole).sectionStarts,
              ElementsAre(0, 30, 450));
}

TEST(GuardBars, ScalesThatAreNoNumbersReserveNothing) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  LinearOptions options;
  // Digits that have no size are 8 pixels high, those without bounds leave one pixel to the bars.
  for (const auto& [scale, height] :
       {std::pair{std::nanf(""), 87.0F}, std::pair{kInfinity, 1.0F}, std::pair{1e38F, 1.0F}}) {
    options.text.fontScale = scale;
    const GuardBars layout = LayoutGuardBars(kJan13Style, kJan13Runs, kBox, options, PixelGrid::kFractional);
    EXPECT_EQ(layout.bars[0], (RectF{0, 0, 3, height})) << scale;
    EXPECT_EQ(layout.bars[2].height, height) << scale;
  }
}

// ---- digits ----

TEST(GuardText, Jan13GroupsAndLeadingDigitOnWholePixels) {
  const GuardBars bars = LayoutGuardBars(kJan13Style, kJan13Runs, kBox, kDefaults, PixelGrid::kWhole);
  // Left 25 to 109, right 119 to 203, cells of 10: 64 usable pixels in steps of 12.8, truncated.
  EXPECT_THAT(LayoutGuardText(kJan13Style, bars, "4901234567894", kBox, kDefaults, 10, PixelGrid::kWhole),
              ElementsAre(Start("4", 0), Middle("9", 35), Middle("0", 47), Middle("1", 60), Middle("2", 73),
                          Middle("3", 86), Middle("4", 99), Middle("5", 129), Middle("6", 141),
                          Middle("7", 154), Middle("8", 167), Middle("9", 180), Middle("4", 193)));
}

TEST(GuardText, Jan13CentredGroups) {
  const GuardBars bars = LayoutGuardBars(kJan13Style, kJan13Runs, kBox, kCentred, PixelGrid::kWhole);
  EXPECT_THAT(LayoutGuardText(kJan13Style, bars, "4901234567894", kBox, kCentred, 10, PixelGrid::kWhole),
              ElementsAre(Start("4", 0), Middle("901234", 67), Middle("567894", 161)));
}

TEST(GuardText, Jan13InFractions) {
  const GuardBars bars = LayoutGuardBars(kJan13Style, kJan13Runs, kBox, kDefaults, PixelGrid::kFractional);
  const auto digits =
      LayoutGuardText(kJan13Style, bars, "4901234567894", kBox, kDefaults, 9.6, PixelGrid::kFractional);
  ASSERT_THAT(digits, SizeIs(13));
  EXPECT_NEAR(digits[0].x, 2.88, 1e-5);  // 0.3 digit widths from the edge
  EXPECT_NEAR(digits[1].x, 25.2 + 9.6, 1e-4);
  EXPECT_NEAR(digits[2].x, 25.2 + 9.6 + (84 - 19.2) / 5, 1e-4);
  EXPECT_NEAR(digits[12].x, 203.2 - 9.6, 1e-4);
  const auto groups =
      LayoutGuardText(kJan13Style, bars, "4901234567894", kBox, kCentred, 9.6, PixelGrid::kFractional);
  ASSERT_THAT(groups, SizeIs(3));
  EXPECT_NEAR(groups[1].x, 67.2, 1e-4);
}

TEST(GuardText, Jan8GroupsOfFour) {
  const GuardBars bars = LayoutGuardBars(kJan8Style, kJan8Runs, kBox, kDefaults, PixelGrid::kWhole);
  // 12 to 124 and 144 to 256, cells of 10: steps of 92 / 3.
  EXPECT_THAT(
      LayoutGuardText(kJan8Style, bars, "49012347", kBox, kDefaults, 10, PixelGrid::kWhole),
      ElementsAre(Middle("4", 22, kJan8Line), Middle("9", 52, kJan8Line), Middle("0", 83, kJan8Line),
                  Middle("1", 114, kJan8Line), Middle("2", 154, kJan8Line), Middle("3", 184, kJan8Line),
                  Middle("4", 215, kJan8Line), Middle("7", 246, kJan8Line)));
}

TEST(GuardText, UpcAOuterDigitsAndGroupsOfFive) {
  const GuardBars bars = LayoutGuardBars(kUpcAStyle, kUpcARuns, kBox, kDefaults, PixelGrid::kWhole);
  // 36 to 108 and 114 to 186, cells of 10: steps of 13; the check digit ends in the right margin.
  EXPECT_THAT(LayoutGuardText(kUpcAStyle, bars, "036000291452", kBox, kDefaults, 10, PixelGrid::kWhole),
              ElementsAre(Start("0", 0), Middle("3", 46), Middle("6", 59), Middle("0", 72), Middle("0", 85),
                          Middle("0", 98), Middle("2", 124), Middle("9", 137), Middle("1", 150),
                          Middle("4", 163), Middle("5", 176), Start("2", 206 - 10 + 16)));
}

TEST(GuardText, UpcAOuterDigitsInFractions) {
  Box box = kBox;
  box.height = 101;
  const GuardBars bars = LayoutGuardBars(kUpcAStyle, kUpcARuns, box, kDefaults, PixelGrid::kFractional);
  const auto digits =
      LayoutGuardText(kUpcAStyle, bars, "036000291452", box, kDefaults, 9.6, PixelGrid::kFractional);
  ASSERT_THAT(digits, SizeIs(12));
  EXPECT_EQ(digits.front(), Start("0", 0, {16, 76 + 3}));
  EXPECT_NEAR(digits.back().x, 206.16 - 9.6 + 16.16, 1e-4);
}

TEST(GuardText, UpcEOuterDigitsAndOneGroupOfSix) {
  const GuardBars bars = LayoutGuardBars(kUpcEStyle, kUpcERuns, kBox, kDefaults, PixelGrid::kWhole);
  EXPECT_THAT(LayoutGuardText(kUpcEStyle, bars, "06543217", kBox, kDefaults, 10, PixelGrid::kWhole),
              ElementsAre(Start("0", 0), Middle("6", 41), Middle("5", 79), Middle("4", 117), Middle("3", 155),
                          Middle("2", 193), Middle("1", 231), Start("7", 271 - 10 + 16)));
}

TEST(GuardText, HalvesAreTruncated) {
  GuardBars bars;
  bars.sectionStarts = {0, 3, 28};  // a span of 25
  EXPECT_THAT(LayoutGuardText(kUpcEStyle, bars, "06543217", kBox, kCentred, 5, PixelGrid::kWhole)[1],
              Middle("654321", 15));
  EXPECT_THAT(LayoutGuardText(kUpcEStyle, bars, "06543217", kBox, kCentred, 5, PixelGrid::kFractional)[1],
              Middle("654321", 15.5, kVectorLine));
}

TEST(GuardText, GroupsNeedMoreThanTwoCells) {
  const GuardBars bars = LayoutGuardBars(kJan13Style, kJan13Runs, kBox, kDefaults, PixelGrid::kWhole);
  EXPECT_THAT(LayoutGuardText(kJan13Style, bars, "4901234567894", kBox, kDefaults, 41, PixelGrid::kWhole),
              SizeIs(13));
  EXPECT_THAT(LayoutGuardText(kJan13Style, bars, "4901234567894", kBox, kDefaults, 42, PixelGrid::kWhole),
              ElementsAre(Start("4", 0)));
  EXPECT_THAT(LayoutGuardText(kJan8Style, bars, "49012347", kBox, kDefaults, 1e9, PixelGrid::kWhole),
              IsEmpty());
}

TEST(GuardText, NarrowRightGroupEndsTheText) {
  const GuardBars upcA = LayoutGuardBars(kUpcAStyle, kUpcARuns, kBox, kDefaults, PixelGrid::kWhole);
  EXPECT_THAT(LayoutGuardText(kUpcAStyle, upcA, "036000291452", kBox, kDefaults, 36, PixelGrid::kWhole),
              ElementsAre(Start("0", 0)));
  // The only group of UPC-E leaves both outer digits in place.
  const GuardBars upcE = LayoutGuardBars(kUpcEStyle, kUpcERuns, kBox, kDefaults, PixelGrid::kWhole);
  EXPECT_THAT(LayoutGuardText(kUpcEStyle, upcE, "06543217", kBox, kDefaults, 105, PixelGrid::kWhole),
              ElementsAre(Start("0", 0), Start("7", 271 - 105 + 16)));
}

TEST(GuardTextTop, RasterJan8AloneLeavesAGap) {
  Box box = kBox;
  box.y = 7;
  EXPECT_EQ(GuardTextTop(kJan13Style, box, kDefaults.text, PixelGrid::kWhole), 82);
  EXPECT_EQ(GuardTextTop(kUpcAStyle, box, kDefaults.text, PixelGrid::kWhole), 82);
  EXPECT_EQ(GuardTextTop(kUpcEStyle, box, kDefaults.text, PixelGrid::kWhole), 82);
  EXPECT_EQ(GuardTextTop(kJan8Style, box, kDefaults.text, PixelGrid::kWhole), 85);
}

TEST(GuardTextTop, SvgAlwaysLeavesAGap) {
  for (const auto* style : {&kJan13Style, &kJan8Style, &kUpcAStyle, &kUpcEStyle}) {
    EXPECT_EQ(GuardTextTop(*style, kBox, kDefaults.text, PixelGrid::kFractional), 78);
  }
}

TEST(GuardTextTop, GapFollowsItsScaleAndIsAtLeastOnePixel) {
  TextOptions options;
  options.gap = 2;
  EXPECT_EQ(GuardTextTop(kJan8Style, kBox, options, PixelGrid::kWhole), 70 + 6);
  // The gap that the bars leave has a least width of its own, 2 pixels.
  for (const float scale : {0.0F, -5.0F, std::nanf("")}) {
    options.gap = scale;
    EXPECT_EQ(GuardTextTop(kJan8Style, kBox, options, PixelGrid::kWhole), 78 + 1);
  }
}

TEST(GuardTextSize, VectorDigitsAreSmaller) {
  Box box = kBox;
  EXPECT_EQ(GuardTextSize(box, kDefaults.text, PixelGrid::kWhole), 20);
  EXPECT_EQ(GuardTextSize(box, kDefaults.text, PixelGrid::kFractional), 16);
  box.height = 119;
  EXPECT_EQ(GuardTextSize(box, kDefaults.text, PixelGrid::kWhole), 23);
  EXPECT_EQ(GuardTextSize(box, kDefaults.text, PixelGrid::kFractional), 18);  // 18.4
  box.height = 20;
  EXPECT_EQ(GuardTextSize(box, kDefaults.text, PixelGrid::kWhole), 8);
  EXPECT_EQ(GuardTextSize(box, kDefaults.text, PixelGrid::kFractional), 8);
}

TEST(GuardTextSize, FollowsTheFontScale) {
  EXPECT_EQ(GuardTextSize(kBox, {.fontScale = 2}, PixelGrid::kWhole), 40);
  EXPECT_EQ(GuardTextSize(kBox, {.fontScale = 2}, PixelGrid::kFractional), 32);
}

TEST(GuardTextSize, AnEstimatedDigitIsThreeFifthsWide) {
  EXPECT_DOUBLE_EQ(EstimatedDigitWidth(16), 9.6);
  EXPECT_DOUBLE_EQ(EstimatedDigitWidth(0), 0);
}

// ---- the whole symbol ----

std::optional<TextExtent> Unmeasured(const std::string& text, int size) {
  ADD_FAILURE() << "measured " << text << " at " << size;
  return std::nullopt;
}

TEST(GuardBarSymbol, IsItsBarsAndTheDigitsForTheMeasuredCell) {
  std::vector<std::pair<std::string, int>> measured;
  const auto measure = [&](const std::string& text, int size) {
    measured.emplace_back(text, size);
    return std::optional(TextExtent{10, 24});
  };
  const Box box{.x = 10, .y = 20, .width = 300, .height = 100};
  const Drawing drawing = LayoutGuardBarSymbol(kJan13Style, kJan13Runs, "4901234567894", box, kDefaults,
                                               PixelGrid::kWhole, measure);
  const GuardBars bars = LayoutGuardBars(kJan13Style, kJan13Runs, box, kDefaults, PixelGrid::kWhole);
  EXPECT_EQ(drawing.bars, bars.bars);
  EXPECT_EQ(drawing.texts,
            LayoutGuardText(kJan13Style, bars, "4901234567894", box, kDefaults, 10, PixelGrid::kWhole));
  ASSERT_THAT(drawing.texts, SizeIs(13));
  EXPECT_EQ(drawing.texts[1], Middle("9", 10 + 35, {20, 20 + 75}));
  EXPECT_EQ(drawing.drawnWidth, 209);  // from the edge of the box, the margin included
  EXPECT_EQ(drawing.barHeight, 75);
  EXPECT_THAT(measured, ElementsAre(std::pair(std::string("0"), 20)));
}

TEST(GuardBarSymbol, ADigitThatCannotBeMeasuredIsHalfAsWideAsItsSize) {
  const auto measure = [](const std::string&, int) { return std::optional<TextExtent>(); };
  const Box box{.width = 300, .height = 107};  // digits of size 21
  const Drawing drawing =
      LayoutGuardBarSymbol(kUpcEStyle, kUpcERuns, "06543217", box, kDefaults, PixelGrid::kWhole, measure);
  const GuardBars bars = LayoutGuardBars(kUpcEStyle, kUpcERuns, box, kDefaults, PixelGrid::kWhole);
  ASSERT_THAT(drawing.texts, SizeIs(8));
  EXPECT_EQ(drawing.texts[1].x, bars.sectionStarts[1] + 10);
}

TEST(GuardBarSymbol, VectorDigitsAreEstimatedNotMeasured) {
  const Drawing drawing = LayoutGuardBarSymbol(kJan13Style, kJan13Runs, "4901234567894", kBox, kDefaults,
                                               PixelGrid::kFractional, Unmeasured);
  const GuardBars bars = LayoutGuardBars(kJan13Style, kJan13Runs, kBox, kDefaults, PixelGrid::kFractional);
  EXPECT_EQ(drawing.bars, bars.bars);
  EXPECT_EQ(drawing.texts, LayoutGuardText(kJan13Style, bars, "4901234567894", kBox, kDefaults,
                                           EstimatedDigitWidth(16), PixelGrid::kFractional));
  EXPECT_THAT(drawing.texts, SizeIs(13));
  EXPECT_FLOAT_EQ(drawing.drawnWidth, 209.2F);
}

TEST(GuardBarSymbol, WithoutTextNothingIsMeasured) {
  const Drawing drawing = LayoutGuardBarSymbol(kJan13Style, kJan13Runs, "4901234567894", kBox, kBare,
                                               PixelGrid::kWhole, Unmeasured);
  EXPECT_THAT(drawing.texts, IsEmpty());
  EXPECT_THAT(drawing.bars, SizeIs(30));
  EXPECT_EQ(drawing.barHeight, 100);
  EXPECT_EQ(drawing.drawnWidth, 3 * 95);
}

}  // namespace
}  // namespace barcode
