#include "gs1/payment_form_layout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "gs1/gs1_128_encoder.h"
#include "gs1/payment_form.h"
#include "layout/text_layout.h"
#include "support/message_of.h"

namespace barcode {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

const std::string kDigits43 = "9191234500000000001234567890123456789012345";
const std::string kDigits = kDigits43 + "5";
const std::string kFirstLine = "(91)912345-0000000000123456789012";
const std::string kSecondLine = "345678-9-012345-5";
const std::string kSample(kPaymentSampleLine);

constexpr LinearOptions kCentred{.text = {.evenSpacing = false}};

// A font whose lines are 16 times as wide as its size: the sample is 3 pixels higher than the size, any other
// line 5.
std::optional<TextExtent> Measure(const std::string& text, int size) {
  return TextExtent{16 * size, size + (text == kPaymentSampleLine ? 3 : 5)};
}

std::optional<TextExtent> MeasureNothing(const std::string& /*text*/, int /*size*/) {
  return std::nullopt;
}

Drawing Layout(const Box& box, const LinearOptions& options = {}, PixelGrid grid = PixelGrid::kWhole,
               const TextMeasure& measure = Measure) {
  return LayoutPaymentForm(kDigits, box, options, grid, measure);
}

int FontSize(std::uint32_t width) {
  return Layout({.width = width, .height = 100}).texts.at(0).size;
}

TEST(PaymentFormLayout, BarsOfTheSlipStandAboveTwoLines) {
  const Drawing drawing = Layout({.width = 600, .height = 100});
  // Text of size 20, the sample 23 pixels high; 288 modules of 2 pixels.
  ASSERT_THAT(drawing.bars, SizeIs(25 * 3 + 4));
  EXPECT_EQ(drawing.bars.front(), (RectF{0, 0, 4, 54}));
  EXPECT_EQ(drawing.bars.back().x + drawing.bars.back().width, 576);
  EXPECT_EQ(drawing.drawnWidth, 576);
  EXPECT_EQ(drawing.barHeight, 54);
  ASSERT_THAT(drawing.texts, SizeIs(2));
  EXPECT_EQ(drawing.texts[0].text, kFirstLine);
  EXPECT_EQ(drawing.texts[1].text, kSecondLine);
  for (const TextRun& line : drawing.texts) {
    EXPECT_EQ(line.size, 20);
    EXPECT_EQ(line.box.bottom, std::numeric_limits<double>::infinity());
  }
  // The second line stands below the first by the height of that line, not of the sample.
  EXPECT_EQ(drawing.texts[0].box.top, 54);
  EXPECT_EQ(drawing.texts[1].box.top, 54 + 25);
}

TEST(PaymentFormLayout, TheBarsEncodeTheCompletedSlip) {
  const Drawing drawing = Layout({.width = 600, .height = 100});
  const RunVector pattern = EncodeGs1_128("{FNC1}" + kDigits);
  ASSERT_EQ(drawing.bars.size(), (pattern.size() + 1) / 2);
  for (std::size_t i = 0; i < drawing.bars.size(); ++i) {
    EXPECT_EQ(drawing.bars[i].width, static_cast<float>(2 * pattern[2 * i])) << i;
  }
  for (const std::string& text : {kDigits43, "{FNC1}" + kDigits}) {
    const Drawing same =
        LayoutPaymentForm(text, {.width = 600, .height = 100}, {}, PixelGrid::kWhole, Measure);
    EXPECT_EQ(same.bars, drawing.bars);
    EXPECT_EQ(same.texts, drawing.texts);
  }
}

TEST(PaymentFormLayout, ATextThatIsNoSlipIsRefusedBeforeAnythingIsMeasured) {
  const auto measure = [](const std::string&, int) -> std::optional<TextExtent> {
    ADD_FAILURE() << "measured";
    return std::nullopt;
  };
  const auto refusal = [&](const std::string& text) {
    return test::MessageOf([&] { LayoutPaymentForm(text, {}, {}, PixelGrid::kWhole, measure); });
  };
  EXPECT_EQ(refusal("1"), "Code length must be 43 or 44 digits");
  EXPECT_EQ(refusal(kDigits43 + "4"), "Check digit mismatch");
}

TEST(PaymentFormLayout, TheFontSizeFallsInStepsOfTwoUntilTheSampleFits) {
  EXPECT_EQ(FontSize(320), 20);
  EXPECT_EQ(FontSize(319), 18);
  EXPECT_EQ(FontSize(288), 18);
  EXPECT_EQ(FontSize(287), 16);
  EXPECT_EQ(FontSize(1), 8);
  EXPECT_EQ(FontSize(0), 8);
}

TEST(PaymentFormLayout, TheSampleIsMeasuredAtEachSizeAndTheFirstLineAtTheLast) {
  std::vector<std::pair<std::string, int>> measured;
  const auto measure = [&](const std::string& text, int size) {
    measured.emplace_back(text, size);
    return Measure(text, size);
  };
  const Drawing drawing = Layout({.width = 319, .height = 100}, {}, PixelGrid::kWhole, measure);
  EXPECT_THAT(measured,
              ElementsAre(std::pair(kSample, 20), std::pair(kSample, 18), std::pair(kFirstLine, 18)));
  EXPECT_EQ(drawing.barHeight, 100 - 2 * 21);
  EXPECT_EQ(drawing.texts.at(1).box.top, 58 + 23);
}

TEST(PaymentFormLayout, TheFontSizeBeginsAtTheBandOfTheHeight) {
  const auto sizeAt = [](std::uint32_t height, float fontScale) {
    return Layout({.width = 5000, .height = height}, {.text = {.fontScale = fontScale}}).texts.at(0).size;
  };
  EXPECT_EQ(sizeAt(49, 1), 12);
  EXPECT_EQ(sizeAt(50, 1), 10);
  EXPECT_EQ(sizeAt(201, 1), 30);
  EXPECT_EQ(sizeAt(100, 2), 40);
}

TEST(PaymentFormLayout, LinesThatCannotBeMeasuredAreAsHighAsTheirFontSize) {
  const Drawing drawing = Layout({.width = 10, .height = 100}, {}, PixelGrid::kWhole, MeasureNothing);
  EXPECT_EQ(drawing.barHeight, 100 - 2 * 20);  // the size that was asked for counts as fitting
  ASSERT_THAT(drawing.texts, SizeIs(2));
  EXPECT_EQ(drawing.texts[0].size, 20);
  EXPECT_EQ(drawing.texts[0].box.top, 60);
  EXPECT_EQ(drawing.texts[1].box.top, 60 + 20);
}

TEST(PaymentFormLayout, AFirstLineThatAloneCannotBeMeasuredIsAsHighAsItsFontSize) {
  const auto measure = [](const std::string& text, int size) {
    return text == kPaymentSampleLine ? Measure(text, size) : std::nullopt;
  };
  const Drawing drawing = Layout({.width = 600, .height = 100}, {}, PixelGrid::kWhole, measure);
  EXPECT_EQ(drawing.barHeight, 54);
  EXPECT_EQ(drawing.texts.at(1).box.top, 54 + 20);
}

TEST(PaymentFormLayout, EvenlySpacedLinesRunAcrossTheBars) {
  const LinearOptions options{.text = {.marginScale = 0.5F}};
  for (const PixelGrid grid : {PixelGrid::kWhole, PixelGrid::kFractional}) {
    const Drawing drawing = Layout({.x = 9, .width = 601, .height = 100}, options, grid);
    EXPECT_THAT(drawing.texts,
                ElementsAre(LayoutTextLine(kFirstLine, 9, 576, 20, {.top = 54}, options.text, grid),
                            LayoutTextLine(kSecondLine, 9, 576, 20, {.top = 79}, options.text, grid)));
    EXPECT_EQ(drawing.texts.at(0).spacing, EvenSpacing::Across(9, 576, 33, 20, 0.5F));
  }
}

TEST(PaymentFormLayout, LinesInOnePieceAreCentredInTheBox) {
  const Drawing whole = Layout({.x = 9, .width = 701, .height = 100}, kCentred, PixelGrid::kWhole);
  const Drawing vector = Layout({.x = 9, .width = 701, .height = 100}, kCentred, PixelGrid::kFractional);
  ASSERT_THAT(whole.texts, SizeIs(2));
  ASSERT_THAT(vector.texts, SizeIs(2));
  for (std::size_t i = 0; i < 2; ++i) {
    EXPECT_FALSE(whole.texts[i].spacing);
    EXPECT_EQ(whole.texts[i].anchor, TextAnchor::kWithin);
    EXPECT_EQ(whole.texts[i].x, 9);
    EXPECT_EQ(whole.texts[i].width, 701);
    EXPECT_EQ(vector.texts[i].anchor, TextAnchor::kMiddle);
    EXPECT_EQ(vector.texts[i].x, 9 + 350);
    EXPECT_EQ(vector.texts[i].box.top, whole.texts[i].box.top);
  }
  EXPECT_EQ(vector.bars, whole.bars);
}

// A negative width of a host arrives as the unsigned number of the same bits, and counts as that number.
TEST(PaymentFormLayout, NegativeWidthsAreTheWidestBoxes) {
  for (const std::uint32_t width : {0x80000000U, 0xFFFFFFFFU}) {
    const Box box{.width = width, .height = 100};
    const Drawing whole = Layout(box, kCentred, PixelGrid::kWhole);
    EXPECT_EQ(whole.texts.at(0).size, 20) << width;
    EXPECT_EQ(whole.texts.at(0).width, width) << width;
    const Drawing vector = Layout(box, kCentred, PixelGrid::kFractional);
    EXPECT_EQ(vector.texts.at(0).x, width / 2) << width;
    const float module = std::floor(static_cast<float>(width) / 288);
    EXPECT_EQ(vector.bars.at(0).width, 2 * module) << width;
    const Drawing even = Layout(box);
    ASSERT_TRUE(even.texts.at(0).spacing) << width;
    EXPECT_GT(even.texts.at(0).spacing->pitch, 0) << width;
  }
}

TEST(PaymentFormLayout, BarsAreAtLeastTenPixelsHigh) {
  for (const std::uint32_t height : {0U, 1U, 20U, 32U}) {
    const Drawing drawing = Layout({.width = 600, .height = height});
    EXPECT_EQ(drawing.barHeight, 10) << height;
    EXPECT_EQ(drawing.bars.at(0).height, 10) << height;
    EXPECT_EQ(drawing.texts.at(0).box.top, 10) << height;
  }
  EXPECT_EQ(Layout({.width = 600, .height = 33}).barHeight, 33 - 2 * 11);
}

TEST(PaymentFormLayout, WithoutTextTheRoomStaysReserved) {
  const Drawing drawing = Layout({.width = 600, .height = 100}, {.text = {.show = false}});
  EXPECT_THAT(drawing.texts, IsEmpty());
  EXPECT_THAT(drawing.bars, SizeIs(79));
  EXPECT_EQ(drawing.barHeight, 54);
}

TEST(PaymentFormLayout, TheOptionsShapeTheBars) {
  const LinearOptions options{.text = {}, .fitWidth = true, .pxAdjustBlack = 1, .pxAdjustWhite = 2};
  const Drawing drawing = Layout({.width = 432, .height = 100}, options);  // one and a half pixels a module
  EXPECT_EQ(drawing.bars.at(0), (RectF{0, 0, 4, 54}));
  EXPECT_EQ(drawing.bars.at(1).x, 4 + 3.5F);
  EXPECT_EQ(drawing.drawnWidth, 432 + 79 + 2 * 78);
}

}  // namespace
}  // namespace barcode
