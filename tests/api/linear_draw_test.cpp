// The plain linear draw, in both outputs, by the example of Code 39.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>

#include "support/barcode_object.h"
#include "support/capture.h"
#include "support/size_report.h"
#include "support/svg.h"

namespace barcode::test {
namespace {

class LinearDraw : public ::testing::Test {
 protected:
  BarcodeObject code{BARCODE_CODE39};

  // Height of the bars in an SVG draw of this height.
  std::string BarHeight(int height) {
    return Attribute(SvgElements(code.SvgOf("A", 200, height), "rect").at(1), "height");
  }

  std::vector<std::string> Texts(const std::string& text, int width, int height) {
    return SvgElements(code.SvgOf(text, width, height), "text");
  }
};

TEST_F(LinearDraw, SizeReport) {
  const auto captured = Capture([&] { EXPECT_EQ(barcode_draw_1d(code, "ABC-123", 300, 100), 1); });
  EXPECT_EQ(captured.out, SizeReport(300, 100, "286"));
  EXPECT_EQ(captured.err, "");
}

TEST_F(LinearDraw, DrawnWidthReadsAsCppPrintsAFloat) {
  barcode_set_fit_width(code, 1);
  const auto whole = Capture([&] { EXPECT_EQ(barcode_draw_1d(code, "1", 100, 50), 1); });
  EXPECT_NE(whole.out.find("実際の描画サイズ: width=100\n"), std::string::npos) << whole.out;
  // 40 / 47 pixels a module: 20 narrow elements of one pixel and 9 wide ones of 120 / 47.
  const auto fraction = Capture([&] { EXPECT_EQ(barcode_draw_1d(code, "1", 40, 50), 1); });
  EXPECT_NE(fraction.out.find("実際の描画サイズ: width=42.9787\n"), std::string::npos) << fraction.out;
}

TEST_F(LinearDraw, NothingIsPrintedInSvg) {
  barcode_set_output_format(code, "svg");
  const auto captured = Capture([&] { EXPECT_EQ(barcode_draw_1d(code, "A", 300, 100), 1); });
  EXPECT_EQ(captured.out, "");
  EXPECT_EQ(captured.err, "");
}

TEST_F(LinearDraw, BarHeightAtTheEdgesOfTheBands) {
  EXPECT_EQ(BarHeight(49), "35.00");    // 49 - trunc(12.25) - max(trunc(1.47), 2)
  EXPECT_EQ(BarHeight(50), "38.00");    // 50 - 10 - trunc(2.5)
  EXPECT_EQ(BarHeight(200), "150.00");  // 200 - 40 - 10
  EXPECT_EQ(BarHeight(201), "157.00");  // 201 - trunc(30.15) - trunc(14.07)
}

TEST_F(LinearDraw, BarHeightIsAtLeastOne) {
  EXPECT_EQ(BarHeight(10), "1.00");  // 10 - 8 - 2 is 0
  EXPECT_EQ(BarHeight(11), "1.00");
  EXPECT_EQ(BarHeight(12), "2.00");
  EXPECT_EQ(BarHeight(0), "1.00");
}

TEST_F(LinearDraw, ScalesChangeTextAndGap) {
  barcode_set_text_font_scale(code, 1.5);
  EXPECT_EQ(BarHeight(100), "65.00");  // 100 - 30 - 5
  barcode_set_text_gap(code, 2.0);
  EXPECT_EQ(BarHeight(100), "60.00");  // 100 - 30 - 10
  EXPECT_EQ(Attribute(Texts("A", 200, 100).at(0), "font-size"), "30");
}

TEST_F(LinearDraw, AnyScaleIsDefined) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  for (const double scale : {0.0, -1.0, std::nan(""), -kInfinity}) {
    barcode_set_text_font_scale(code, scale);
    barcode_set_text_gap(code, scale);
    EXPECT_EQ(BarHeight(100), "90.00") << scale;  // the minima, 8 and 2
    barcode_set_output_format(code, "png");
    EXPECT_EQ(barcode_draw_1d(code, "A", 200, 100), 1);
  }
  for (const double scale : {kInfinity, 1e300, 1e9}) {
    barcode_set_text_font_scale(code, scale);
    EXPECT_EQ(BarHeight(100), "1.00") << scale;
    barcode_set_output_format(code, "png");
    const auto captured = Capture([&] { EXPECT_EQ(barcode_draw_1d(code, "A", 200, 100), 1); });
    EXPECT_NE(captured.err.find("TTF_OpenFont error: "), std::string::npos) << captured.err;
  }
}

TEST_F(LinearDraw, WithoutTextTheBarsTakeTheWholeBox) {
  barcode_set_show_text(code, 0);
  EXPECT_EQ(BarHeight(100), "100.00");
  EXPECT_TRUE(Texts("A", 200, 100).empty());
  barcode_set_output_format(code, "png");
  ASSERT_EQ(barcode_draw_1d(code, "ABC-123", 300, 100), 1);
  const Image image = code.Picture();
  EXPECT_EQ(RunsOfRow(image, 99), RunsOfRow(image, 0));
}

TEST_F(LinearDraw, RasterBarsStandAtThePatternsModules) {
  ASSERT_EQ(barcode_draw_1d(code, "1", 100, 40), 1);
  const Image image = code.Picture();
  // "*", gap, "1", gap, "*" at two pixels a module: 94 pixels and the rest of the box.
  const std::vector<int> expected = {2, 6, 2, 2, 6, 2, 6, 2, 2, 2, 6, 2, 2, 6, 2,
                                     2, 2, 2, 6, 2, 2, 6, 2, 2, 6, 2, 6, 2, 2, 6};
  EXPECT_EQ(RunsOfRow(image, 0), expected);
  EXPECT_EQ(RunsOfRow(image, 27), expected);  // bars are 40 - 10 - 2 = 28 pixels high
  EXPECT_NE(RunsOfRow(image, 28), expected);
}

TEST_F(LinearDraw, ABoxNarrowerThanTheSymbolClipsIt) {
  barcode_set_show_text(code, 0);
  const auto captured = Capture([&] { EXPECT_EQ(barcode_draw_1d(code, "1", 20, 10), 1); });
  EXPECT_NE(captured.out.find("実際の描画サイズ: width=47\nサーフェスサイズ: width=20, height=10\n"),
            std::string::npos);
  EXPECT_EQ(RunsOfRow(code.Picture(), 5), (std::vector<int>{1, 3, 1, 1, 3, 1, 3, 1, 1, 1, 3, 1}));
}

TEST_F(LinearDraw, FitWidthKeepsFractionsOfPixels) {
  barcode_set_fit_width(code, 1);
  const auto rects = SvgElements(code.SvgOf("1", 100, 50), "rect");
  EXPECT_EQ(Attribute(rects.at(1), "width"), "2.13");  // 100 / 47
  EXPECT_EQ(Attribute(rects.at(2), "x"), "8.51");      // 4 modules
  EXPECT_EQ(Attribute(rects.back(), "x"), "97.87");
}

TEST_F(LinearDraw, FitWidthStillDrawsElementsOfOnePixel) {
  barcode_set_fit_width(code, 1);
  const auto rects = SvgElements(code.SvgOf("1", 10, 50), "rect");
  // 10 / 47 pixels a module: every element becomes one pixel.
  EXPECT_EQ(Attribute(rects.at(1), "width"), "1.00");
  EXPECT_EQ(Attribute(rects.back(), "x"), "28.00");
}

TEST_F(LinearDraw, AdjustmentsChangeTheLengthOfTheSymbol) {
  barcode_set_px_adjust_black(code, -5);
  barcode_set_show_text(code, 0);
  const auto captured = Capture([&] { EXPECT_EQ(barcode_draw_1d(code, "1", 100, 40), 1); });
  // 15 bars: narrow ones shrink from 2 to 1, wide ones from 6 to 1; "*" has 3 and 2, "1" 3 and 2.
  EXPECT_NE(captured.out.find("実際の描画サイズ: width=55\n"), std::string::npos) << captured.out;
  barcode_set_px_adjust_black(code, 0);
  barcode_set_px_adjust_white(code, 3);
  const auto wider = Capture([&] { EXPECT_EQ(barcode_draw_1d(code, "1", 100, 40), 1); });
  EXPECT_NE(wider.out.find("実際の描画サイズ: width=136\n"), std::string::npos) << wider.out;  // 14 spaces
}

TEST_F(LinearDraw, ExtremeAdjustmentsAreDefined) {
  for (const int pixels : {2147483647, -2147483647 - 1}) {
    barcode_set_output_format(code, "png");
    barcode_set_px_adjust_black(code, pixels);
    barcode_set_px_adjust_white(code, pixels);
    EXPECT_EQ(barcode_draw_1d(code, "ABC", 100, 40), 1);
    EXPECT_EQ(code.Picture().width, 100);
    EXPECT_NE(code.SvgOf("ABC", 100, 40), "");
  }
}

TEST_F(LinearDraw, EvenlySpacedSvgTextIsOneElementPerByte) {
  const auto texts = Texts("ABC-123", 300, 100);
  ASSERT_EQ(texts.size(), 9U);
  EXPECT_EQ(texts[0],
            "  <text x=\"15.00\" y=\"80.00\" font-family=\"Arial, sans-serif\" font-size=\"20\" "
            "fill=\"rgb(0,0,0)\" "
            "text-anchor=\"middle\" dominant-baseline=\"hanging\">*</text>");
  EXPECT_EQ(Attribute(texts[1], "x"), "47.00");
  EXPECT_EQ(Attribute(texts[8], "x"), "271.00");
}

TEST_F(LinearDraw, CentredSvgTextIsOneElement) {
  barcode_set_text_even_spacing(code, 0);
  const auto texts = Texts("ABC-123", 301, 100);
  ASSERT_EQ(texts.size(), 1U);
  EXPECT_EQ(Attribute(texts[0], "x"), "143.00");  // 286 / 2
  EXPECT_NE(texts[0].find("text-anchor=\"middle\""), std::string::npos);
  EXPECT_NE(texts[0].find(">*ABC-123*<"), std::string::npos);
}

TEST_F(LinearDraw, StartAndStopMayBeHidden) {
  barcode_set_show_start_stop(code, 0);
  barcode_set_text_even_spacing(code, 0);
  EXPECT_NE(Texts("abc", 300, 100).at(0).find(">abc<"), std::string::npos);
}

TEST_F(LinearDraw, ATextOfOneCharacterIsCentred) {
  barcode_set_show_start_stop(code, 0);
  const auto texts = Texts("1", 100, 100);
  ASSERT_EQ(texts.size(), 1U);
  EXPECT_EQ(Attribute(texts[0], "x"), "47.00");  // of 94 pixels
}

TEST_F(LinearDraw, SmallBoxesPutTheSvgTextAboveTheBox) {
  EXPECT_EQ(Attribute(Texts("A", 100, 5).at(0), "y"), "-3.00");  // size 8 in a box of 5
}

// Expectations of text in PNG come from the layout's rules and from what else is drawn, never from the exact
// pixels of a glyph: those are up to the release of the font library.

TEST_F(LinearDraw, RasterTextStandsUnderTheBars) {
  ASSERT_EQ(barcode_draw_1d(code, "ABC-123", 300, 100), 1);
  const Image image = code.Picture();
  for (int y = 75; y < 77; ++y) {
    for (int x = 0; x < image.width; ++x) {
      EXPECT_EQ(image.At(x, y), kWhitePixel);  // the gap
    }
  }
  // Nine characters around 15, 47, ... 271: what is inked around a centre stays clear of its neighbours.
  const std::vector<int> inked = InkedColumns(image, 77);
  for (int centre = 15; centre <= 271; centre += 32) {
    const auto first = std::lower_bound(inked.begin(), inked.end(), centre - 16);
    const auto last = std::lower_bound(first, inked.end(), centre + 16);
    ASSERT_NE(first, last) << centre;
    EXPECT_GE(*first, centre - 10);
    EXPECT_LE(*(last - 1), centre + 10);
    EXPECT_NEAR(*first + *(last - 1), 2 * centre, 4) << centre;
  }
  EXPECT_LT(inked.back(), 271 + 16);
}

TEST_F(LinearDraw, TheSameRasterCharacterLooksTheSameAtItsOtherCentre) {
  ASSERT_EQ(barcode_draw_1d(code, "ABC-123", 300, 100), 1);
  const Image image = code.Picture();
  for (int y = 75; y < 100; ++y) {
    for (int x = 0; x < 15 + 16; ++x) {
      EXPECT_EQ(image.At(x, y), image.At(x + 8 * 32, y));  // the frame's "*", eight pitches further
    }
  }
}

TEST_F(LinearDraw, RasterTextOfOnePieceIsNarrower) {
  const auto columns = [&](int even) {
    barcode_set_text_even_spacing(code, even);
    EXPECT_EQ(barcode_draw_1d(code, "ABC-123", 300, 100), 1);
    return InkedColumns(code.Picture(), 77);
  };
  const std::vector<int> spread = columns(1);
  const std::vector<int> line = columns(0);
  ASSERT_FALSE(spread.empty() || line.empty());
  EXPECT_LT(line.back() - line.front(), (spread.back() - spread.front()) / 2);
  EXPECT_NEAR(line.front() + line.back(), 286, 6);  // centred under the bars
}

TEST_F(LinearDraw, RasterTextIsBlendedInTheForegroundColour) {
  barcode_set_foreground_color(code, 200, 0, 0, 255);
  ASSERT_EQ(barcode_draw_1d(code, "ABC-123", 300, 100), 1);
  const Image image = code.Picture();
  bool full = false;
  bool blended = false;
  for (int y = 80; y < 100; ++y) {
    for (int x = 0; x < image.width; ++x) {
      const Pixel& pixel = image.At(x, y);
      EXPECT_EQ(pixel.g, pixel.b);
      full = full || pixel == Pixel{200, 0, 0, 255};
      blended = blended || (pixel.g > 0 && pixel.g < 255);
      // On the line between text and background: red falls by 55 while green falls by 255.
      EXPECT_NEAR((255 - pixel.r) * 255, (255 - pixel.g) * 55, 255) << x << ' ' << y;
    }
  }
  EXPECT_TRUE(full);
  EXPECT_TRUE(blended);
}

TEST_F(LinearDraw, RasterTextNeverLeavesTheBoxAtTheBottom) {
  // The digits of JAN-8 hang from row 78 whatever is below: how far the ink of a digit is below the top of
  // its image.
  const BarcodeObject jan8(BARCODE_JAN8);
  ASSERT_EQ(barcode_draw_1d(jan8, "8888888", 300, 100), 1);
  const std::vector<int> hanging = InkedRows(jan8.Picture(), 81);
  ASSERT_FALSE(hanging.empty());
  const int inset = hanging.front() - 78;
  // An image of size 20 is as high as a line of the font, 2400 / 2048 of its size: it stands on the bottom of
  // the box and not at 100 - 20, where it would not end in the box.
  for (const int even : {0, 1}) {
    barcode_set_text_even_spacing(code, even);
    barcode_set_show_start_stop(code, 0);
    ASSERT_EQ(barcode_draw_1d(code, "8888888", 300, 100), 1);
    const std::vector<int> rows = InkedRows(code.Picture(), 75);
    ASSERT_FALSE(rows.empty());
    EXPECT_NEAR(100 - (rows.front() - inset), 20.0 * 2400 / 2048, 1) << even;
    EXPECT_EQ(rows.size(), hanging.size()) << even;  // nothing is cut off
  }
}

TEST_F(LinearDraw, ARasterTextOfOneCharacterIsCentred) {
  barcode_set_show_start_stop(code, 0);
  for (const int even : {0, 1}) {
    barcode_set_text_even_spacing(code, even);
    ASSERT_EQ(barcode_draw_1d(code, "8", 100, 100), 1);
    const std::vector<int> inked = InkedColumns(code.Picture(), 76);
    ASSERT_FALSE(inked.empty());
    EXPECT_NEAR(inked.front() + inked.back(), 94, 2) << even;  // 47 of 94 pixels
    EXPECT_LT(inked.back() - inked.front(), 20) << even;       // narrower than it is high
  }
}

TEST_F(LinearDraw, AnEmptyDisplayTextDrawsNothing) {
  // NW-7 shows "A" without its start and stop character: nothing is left.
  const BarcodeObject nw7(BARCODE_NW7);
  barcode_set_show_start_stop(nw7, 0);
  for (const int even : {0, 1}) {
    barcode_set_text_even_spacing(nw7, even);
    const auto captured = Capture([&] { EXPECT_EQ(barcode_draw_1d(nw7, "A", 100, 100), 1); });
    EXPECT_EQ(captured.err, "");
    EXPECT_TRUE(InkedRows(nw7.Picture(), 75).empty());
  }
}

TEST_F(LinearDraw, TextFarLargerThanTheCanvasIsRefusedNotRendered) {
  constexpr const char* kRefused = "TTF_RenderUTF8_Blended error: Out of memory\n";
  barcode_set_text_even_spacing(code, 0);
  const std::string text(1'000'000, 'A');
  const auto line = Capture([&] { EXPECT_EQ(barcode_draw_1d(code, text.c_str(), 300, 100), 1); });
  EXPECT_EQ(line.err, kRefused);
  barcode_set_show_start_stop(code, 0);
  for (const double scale : {400.0, 800.0}) {  // 18000 and 36000 pixels
    barcode_set_text_font_scale(code, scale);
    const auto glyph = Capture([&] { EXPECT_EQ(barcode_draw_1d(code, "8", 300, 300), 1); });
    EXPECT_EQ(glyph.err, kRefused);
  }
}

TEST_F(LinearDraw, ARefusedLineNamesItsOwnReason) {
  (void)Capture([&] { EXPECT_EQ(barcode_draw_1d(code, "8", -1, 10), 0); });  // leaves an error text behind
  barcode_set_text_font_scale(code, 800.0);
  const auto glyph = Capture([&] { EXPECT_EQ(barcode_draw_1d(code, "8", 300, 300), 1); });
  EXPECT_EQ(glyph.err.find("Parameter"), std::string::npos);
}

TEST_F(LinearDraw, LargeTextOnALargeCanvasIsRendered) {
  barcode_set_show_start_stop(code, 0);
  barcode_set_text_font_scale(code, 20.0);  // 2000 pixels
  const auto captured = Capture([&] { EXPECT_EQ(barcode_draw_1d(code, "8", 3000, 500), 1); });
  EXPECT_EQ(captured.err, "");
}

TEST_F(LinearDraw, NumbersDoNotFollowTheLocaleOfTheHost) {
  const std::string expected = code.SvgOf("A", 100, 50);
  barcode_set_fit_width(code, 1);
  const std::string fractions = code.SvgOf("A", 100, 50);
  setenv("LOCPATH", TEST_LOCALE_PATH, 1);
  ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr);
  ASSERT_STREQ(std::localeconv()->decimal_point, ",");
  EXPECT_EQ(code.SvgOf("A", 100, 50), fractions);
  barcode_set_output_format(code, "png");
  const auto captured = Capture([&] { EXPECT_EQ(barcode_draw_1d(code, "1", 40, 50), 1); });
  std::setlocale(LC_ALL, "C");
  EXPECT_NE(captured.out.find("width=42.9787\n"), std::string::npos);
  barcode_set_fit_width(code, 0);
  EXPECT_EQ(code.SvgOf("A", 100, 50), expected);
}

TEST_F(LinearDraw, AMegabyteOfTextIsDrawn) {
  const std::string text(1'000'000, 'A');
  EXPECT_EQ(barcode_draw_1d(code, text.c_str(), 300, 100), 1);
  EXPECT_EQ(code.Picture().width, 300);
}

}  // namespace
}  // namespace barcode::test
