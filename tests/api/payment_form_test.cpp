// The payment form of convenience stores, in both outputs.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "support/barcode_object.h"
#include "support/capture.h"
#include "support/size_report.h"
#include "support/svg.h"

namespace barcode::test {
namespace {

const std::string kDigits43 = "9191234500000000001234567890123456789012345";
const std::string kDigits44 = kDigits43 + "5";
constexpr int kModules = 288;  // start, FNC1, 22 pairs, check: 11 each; stop: 13

class PaymentForm : public ::testing::Test {
 protected:
  BarcodeObject form{BARCODE_GS1_128};

  int Draw(const std::string& text, int width, int height) {
    return barcode_draw_convenience(form, text.c_str(), width, height);
  }
  std::string Svg(int width, int height, const std::string& text = kDigits44) {
    barcode_set_output_format(form, "svg");
    return Draw(text, width, height) == 1 ? barcode_get_svg(form) : "";
  }
  std::vector<std::string> Texts(int width, int height) { return SvgElements(Svg(width, height), "text"); }
  std::string BarHeight(int width, int height) {
    return Attribute(SvgElements(Svg(width, height), "rect").at(1), "height");
  }
  std::string ErrorOf(const std::string& text) {
    return Capture([&] { EXPECT_EQ(Draw(text, 600, 100), 0); }).err;
  }
};

TEST_F(PaymentForm, FortyThreeDigitsAreDrawnAsFortyFour) {
  const std::string document = Svg(600, 100);
  EXPECT_NE(document, "");
  EXPECT_EQ(Svg(600, 100, kDigits43), document);
  EXPECT_EQ(Svg(600, 100, "{FNC1}" + kDigits44), document);
}

TEST_F(PaymentForm, Messages) {
  EXPECT_EQ(ErrorOf(""), "[GS1-128 Convenience] Code length must be 43 or 44 digits\n");
  EXPECT_EQ(ErrorOf(kDigits43.substr(1)), "[GS1-128 Convenience] Code length must be 43 or 44 digits\n");
  EXPECT_EQ(ErrorOf(kDigits44 + "1"), "[GS1-128 Convenience] Code length must be 43 or 44 digits\n");
  EXPECT_EQ(ErrorOf(kDigits43 + "4"), "[GS1-128 Convenience] Check digit mismatch\n");
  EXPECT_EQ(ErrorOf(kDigits44 + "{FNC1}"), "[GS1-128 Convenience] Non-digit character found\n");
}

TEST_F(PaymentForm, ServesItsTypeOnly) {
  const BarcodeObject code(BARCODE_CODE128);
  EXPECT_EQ(barcode_draw_convenience(code, kDigits44.c_str(), 600, 100), 0);
  EXPECT_EQ(barcode_draw_convenience(form, nullptr, 600, 100), 0);
  EXPECT_EQ(barcode_draw_convenience(nullptr, kDigits44.c_str(), 600, 100), 0);
}

TEST_F(PaymentForm, SizeReport) {
  const auto captured = Capture([&] { EXPECT_EQ(Draw(kDigits44, 600, 100), 1); });
  EXPECT_EQ(captured.out, SizeReport(600, 100, "576"));
  EXPECT_EQ(captured.err, "");
}

TEST_F(PaymentForm, ARefusedTextLeavesTheBackground) {
  ASSERT_EQ(Draw(kDigits44, 600, 100), 1);
  EXPECT_NE(ErrorOf("1"), "");
  const Image image = form.Picture();
  EXPECT_EQ(image.width, 600);
  EXPECT_TRUE(IsBlank(image));
}

TEST_F(PaymentForm, ARefusedTextKeepsTheEarlierSvgDocument) {
  const std::string document = Svg(600, 100);
  EXPECT_EQ(Draw("1", 600, 100), 0);
  EXPECT_EQ(barcode_get_svg(form), document);
}

TEST_F(PaymentForm, AnUnknownFormatDrawsNothing) {
  barcode_set_output_format(form, "gif");
  EXPECT_EQ(ErrorOf("not a slip"), "");  // without a canvas even a bad text goes unnoticed
  EXPECT_EQ(Draw(kDigits44, 600, 100), 0);
}

TEST_F(PaymentForm, TwoLinesOfText) {
  barcode_set_text_even_spacing(form, 0);
  const auto texts = Texts(601, 100);
  ASSERT_EQ(texts.size(), 2U);
  EXPECT_EQ(Content(texts[0]), "(91)912345-0000000000123456789012");
  EXPECT_EQ(Content(texts[1]), "345678-9-012345-5");
  for (const std::string& text : texts) {
    EXPECT_EQ(Attribute(text, "x"), "300.00");  // of the box, not of the bars
    EXPECT_EQ(Attribute(text, "text-anchor"), "middle");
    EXPECT_EQ(Attribute(text, "font-size"), "20");
  }
  // A line of size 20 is 24 pixels high: 100 - 2 * 24.
  EXPECT_EQ(BarHeight(601, 100), "52.00");
  EXPECT_EQ(Attribute(texts[0], "y"), "52.00");
  EXPECT_EQ(Attribute(texts[1], "y"), "76.00");
}

TEST_F(PaymentForm, EvenlySpacedLinesRunAcrossTheBars) {
  const auto texts = Texts(600, 100);
  ASSERT_EQ(texts.size(), 33U + 17U);
  EXPECT_EQ(Content(texts[0]), "(");
  EXPECT_EQ(Content(texts[33]), "3");
  EXPECT_EQ(Content(texts[49]), "5");
  // 576 pixels with a margin of trunc(40.32) on either side: pitches of 496 / 32 and 496 / 16.
  EXPECT_EQ(Attribute(texts[0], "x"), "48.00");  // (576 - 32 * 15) / 2
  EXPECT_EQ(Attribute(texts[1], "x"), "63.00");
  EXPECT_EQ(Attribute(texts[33], "x"), "40.00");  // (576 - 16 * 31) / 2
  EXPECT_EQ(Attribute(texts[34], "x"), "71.00");
  EXPECT_EQ(Attribute(texts[32], "y"), "52.00");
  EXPECT_EQ(Attribute(texts[33], "y"), "76.00");
}

TEST_F(PaymentForm, TheFontSizeFallsUntilTheFirstLineFits) {
  barcode_set_text_even_spacing(form, 0);
  EXPECT_EQ(Attribute(Texts(318, 100).at(0), "font-size"), "20");  // the sample is 318 pixels wide
  EXPECT_EQ(Attribute(Texts(317, 100).at(0), "font-size"), "18");
  EXPECT_EQ(Attribute(Texts(1, 100).at(0), "font-size"), "8");
}

TEST_F(PaymentForm, TheFontSizeFollowsTheHeightInBands) {
  const auto sizeAt = [&](int height) { return Attribute(Texts(3000, height).at(0), "font-size"); };
  EXPECT_EQ(sizeAt(49), "12");
  EXPECT_EQ(sizeAt(50), "10");
  EXPECT_EQ(sizeAt(200), "40");
  EXPECT_EQ(sizeAt(201), "30");
  barcode_set_text_font_scale(form, 2.0);
  EXPECT_EQ(sizeAt(100), "40");
}

TEST_F(PaymentForm, SmallBoxesHaveBarsOfTenPixelsAndTextOfSizeEight) {
  barcode_set_text_even_spacing(form, 0);
  for (const int height : {0, 1, 20, 30}) {
    EXPECT_EQ(BarHeight(600, height), "10.00") << height;
    EXPECT_EQ(Attribute(Texts(600, height).at(0), "font-size"), "8") << height;
    EXPECT_EQ(Attribute(Texts(600, height).at(0), "y"), "10.00") << height;
  }
  EXPECT_EQ(BarHeight(600, 31), "11.00");  // 31 - 2 * 10
}

TEST_F(PaymentForm, WithoutTextTheBarsKeepTheirHeight) {
  barcode_set_show_text(form, 0);
  EXPECT_EQ(BarHeight(600, 100), "52.00");
  EXPECT_TRUE(Texts(600, 100).empty());
  barcode_set_output_format(form, "png");
  ASSERT_EQ(Draw(kDigits44, 600, 100), 1);
  const Image image = form.Picture();
  EXPECT_EQ(image.At(0, 51), kBlackPixel);
  EXPECT_TRUE(InkedRows(image, 52).empty());
}

TEST_F(PaymentForm, BothOutputsHaveTheSameBars) {
  ASSERT_EQ(Draw(kDigits44, 600, 100), 1);
  const std::vector<int> runs = RunsOfRow(form.Picture(), 51);
  const auto rects = SvgElements(Svg(600, 100), "rect");
  ASSERT_EQ(rects.size(), 1U + 25 * 3 + 4);
  int pen = 0;
  for (std::size_t i = 0; i + 1 < runs.size(); ++i) {
    if (i % 2 == 0) {
      EXPECT_EQ(Attribute(rects.at(1 + i / 2), "x"), std::to_string(pen) + ".00");
    }
    pen += runs[i];
  }
  EXPECT_EQ(pen, 2 * kModules);
}

TEST_F(PaymentForm, AdjustmentsAndFitWidthShapeTheBars) {
  barcode_set_fit_width(form, 1);
  const auto last = [&] { return SvgElements(Svg(432, 100), "rect").back(); };
  EXPECT_EQ(Attribute(last(), "width"), "3.00");  // one and a half pixels a module
  EXPECT_EQ(Attribute(last(), "x"), "429.00");
  barcode_set_fit_width(form, 0);
  barcode_set_px_adjust_black(form, -5);
  barcode_set_px_adjust_white(form, 1);
  const auto captured = Capture([&] {
    barcode_set_output_format(form, "png");
    EXPECT_EQ(Draw(kDigits44, 300, 100), 1);
  });
  // Every bar becomes one pixel; the 75 spaces of start to check, and the stop's three, grow by one each.
  const std::size_t at = captured.out.find("実際の描画サイズ: width=");
  ASSERT_NE(at, std::string::npos);
  barcode_set_px_adjust_white(form, 0);
  const auto narrower = Capture([&] { EXPECT_EQ(Draw(kDigits44, 300, 100), 1); });
  const auto widthOf = [](const std::string& report) {
    const std::string label = "実際の描画サイズ: width=";
    return std::stoi(report.substr(report.find(label) + label.size()));
  };
  EXPECT_EQ(widthOf(captured.out) - widthOf(narrower.out), 78);
}

TEST_F(PaymentForm, RasterTextStandsUnderTheBars) {
  for (const int even : {0, 1}) {
    barcode_set_text_even_spacing(form, even);
    ASSERT_EQ(Draw(kDigits44, 600, 100), 1);
    const std::vector<int> rows = InkedRows(form.Picture(), 52);
    ASSERT_FALSE(rows.empty());
    EXPECT_GE(rows.front(), 53);
    EXPECT_LE(rows.front(), 58);  // below the top of the first line
    EXPECT_GE(rows.back(), 76 + 15);
    EXPECT_LT(rows.back(), 99);  // above the bottom of the second
  }
}

TEST_F(PaymentForm, CentredRasterLinesStandInTheMiddleOfTheBox) {
  barcode_set_text_even_spacing(form, 0);
  ASSERT_EQ(Draw(kDigits44, 800, 100), 1);                            // bars of 576 pixels
  const std::vector<int> columns = InkedColumns(form.Picture(), 78);  // of the second line
  ASSERT_FALSE(columns.empty());
  EXPECT_NEAR(columns.front() + columns.back(), 800, 6);
  EXPECT_LT(columns.back() - columns.front(), 200);
}

// The lines keep their places in a box too low for them: the second is cut off, not moved.
TEST_F(PaymentForm, RasterTextMayRunOutOfALowBox) {
  ASSERT_EQ(Draw(kDigits44, 600, 20), 1);
  const Image image = form.Picture();
  EXPECT_EQ(image.At(0, 9), kBlackPixel);
  EXPECT_EQ(image.At(0, 10), kWhitePixel);
  const std::vector<int> rows = InkedRows(image, 10);
  ASSERT_FALSE(rows.empty());
  EXPECT_GE(rows.front(), 11);
}

TEST_F(PaymentForm, AnySizeAndScaleIsDefined) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  constexpr int kHuge = std::numeric_limits<int>::max();
  for (const double scale : {1.0, 0.0, -1.0, 1e-9, 1e9, 1e300, kInfinity, -kInfinity, std::nan("")}) {
    barcode_set_text_font_scale(form, scale);
    for (const int width : {0, 1, 300, -1, kHuge, -kHuge - 1}) {
      for (const int height : {0, 1, 49, 300, -1, kHuge, -kHuge - 1}) {
        barcode_set_text_even_spacing(form, height % 2);
        EXPECT_NE(Svg(width, height), "") << width << " x " << height << ", scale " << scale;
        if (width >= 0 && width <= 300 && height >= 0 && height <= 300) {
          barcode_set_output_format(form, "png");
          EXPECT_EQ(Draw(kDigits44, width, height), 1) << width << " x " << height << ", scale " << scale;
        }
      }
    }
  }
}

}  // namespace
}  // namespace barcode::test
