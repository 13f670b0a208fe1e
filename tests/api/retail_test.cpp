// JAN-13, JAN-8, UPC-A and UPC-E through the exported functions.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
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

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;
using ::testing::StartsWith;

struct Retail {
  const char* name;
  int type;
  const char* text;  // without check digit
  const char* code;  // with it
  int modules;
};

void PrintTo(const Retail& retail, std::ostream* out) {
  *out << retail.name;
}

constexpr Retail kJan13{"Jan13", BARCODE_JAN13, "490123456789", "4901234567894", 95};
constexpr Retail kJan8{"Jan8", BARCODE_JAN8, "4901234", "49012347", 67};
constexpr Retail kUpcA{"UpcA", BARCODE_UPC_A, "03600029145", "036000291452", 95};
constexpr Retail kUpcE{"UpcE", BARCODE_UPC_E, "654321", "06543217", 51};

// The values of an attribute in some elements, in order.
std::vector<std::string> Values(const std::vector<std::string>& elements, const std::string& attribute) {
  std::vector<std::string> values(elements.size());
  std::transform(elements.begin(), elements.end(), values.begin(),
                 [&](const std::string& element) { return Attribute(element, attribute); });
  return values;
}

// x, width and height of each bar of a document, in order.
std::vector<std::vector<std::string>> Bars(const std::string& document) {
  const std::vector<std::string> rects = BarElements(document);
  std::vector<std::vector<std::string>> bars(rects.size());
  std::transform(rects.begin(), rects.end(), bars.begin(), [](const std::string& rect) {
    return std::vector{Attribute(rect, "x"), Attribute(rect, "width"), Attribute(rect, "height")};
  });
  return bars;
}

int DarkPixels(const Image& image, int left, int right, int top, int bottom) {
  int count = 0;
  for (int y = top; y < bottom; ++y) {
    for (int x = left; x < right; ++x) {
      count += image.At(x, y).r < 128 ? 1 : 0;
    }
  }
  return count;
}

class RetailDraw : public ::testing::TestWithParam<Retail> {
 protected:
  BarcodeObject object{GetParam().type};

  int Draw(const char* text, int width = 300, int height = 100) {
    return barcode_draw_1d(object, text, width, height);
  }
};

INSTANTIATE_TEST_SUITE_P(Types, RetailDraw, ::testing::Values(kJan13, kJan8, kUpcA, kUpcE));

TEST_P(RetailDraw, TheCheckDigitIsAppendedInBarsAndText) {
  const std::string appended = object.SvgOf(GetParam().text, 300, 100);
  EXPECT_EQ(appended, object.SvgOf(GetParam().code, 300, 100));
  EXPECT_EQ(Contents(SvgElements(appended, "text")), GetParam().code);
  barcode_set_output_format(object, "png");
  ASSERT_EQ(Draw(GetParam().text), 1);
  const Image image = object.Picture();
  ASSERT_EQ(Draw(GetParam().code), 1);
  EXPECT_EQ(object.Picture(), image);
}

TEST_P(RetailDraw, SvgAndRasterShareTheBars) {
  // Without margins nothing is truncated.
  barcode_set_show_text(object, 0);
  const auto bars = Bars(object.SvgOf(GetParam().text, 300, 100));
  barcode_set_output_format(object, "png");
  ASSERT_EQ(Draw(GetParam().text), 1);
  const std::vector<int> runs = RunsOfRow(object.Picture(), 50);
  int x = 0;
  for (std::size_t i = 0; i < runs.size(); ++i) {
    if (i % 2 == 0) {
      EXPECT_EQ(std::stod(bars.at(i / 2).at(0)), x);
      EXPECT_EQ(std::stod(bars.at(i / 2).at(1)), runs[i]);
    }
    x += runs[i];
  }
  EXPECT_EQ(bars.size(), runs.size() / 2);  // the last run is the light rest of the box
}

TEST_P(RetailDraw, WithoutTextGuardsAreFivePercentLonger) {
  barcode_set_show_text(object, 0);
  const std::string document = object.SvgOf(GetParam().text, 300, 100);
  EXPECT_TRUE(SvgElements(document, "text").empty());
  const auto bars = Bars(document);
  EXPECT_EQ(bars.front().at(0), "0.00");
  EXPECT_EQ(bars.front().at(2), "105.00");
  EXPECT_EQ(bars.back().at(2), "105.00");
  EXPECT_EQ(bars.at(bars.size() / 2 - 3).at(2), "100.00");
}

TEST_P(RetailDraw, PlainLayoutIsTheCommonLinearDraw) {
  barcode_set_extended_guard(object, 0);
  barcode_set_text_even_spacing(object, 0);
  const std::string document = object.SvgOf(GetParam().text, 300, 100);
  const int module = 300 / GetParam().modules;
  int right = 0;
  for (const auto& bar : Bars(document)) {
    EXPECT_EQ(bar.at(2), "75.00");
    right = static_cast<int>(std::stod(bar.at(0)) + std::stod(bar.at(1)));
  }
  EXPECT_EQ(Bars(document).front().at(0), "0.00");
  EXPECT_EQ(right, GetParam().modules * module);
  const auto texts = SvgElements(document, "text");
  EXPECT_EQ(Contents(texts), GetParam().code);
  EXPECT_EQ(Values(texts, "x"), (std::vector<std::string>{std::to_string(right / 2) + ".00"}));
  EXPECT_EQ(Values(texts, "y"), (std::vector<std::string>{"80.00"}));
}

TEST_P(RetailDraw, PlainRasterHasBarsOfOneHeightAndOneLineOfText) {
  barcode_set_extended_guard(object, 0);
  ASSERT_EQ(Draw(GetParam().text), 1);
  const Image image = object.Picture();
  EXPECT_EQ(RunsOfRow(image, 0), RunsOfRow(image, 74));
  EXPECT_EQ(DarkPixels(image, 0, 300, 75, 80), 0);  // the gap
  EXPECT_GT(DarkPixels(image, 0, 300, 80, 100), 100);
}

TEST_P(RetailDraw, AnyNonzeroFlagIsTheExtendedLayout) {
  const std::string extended = object.SvgOf(GetParam().text, 300, 100);
  barcode_set_extended_guard(object, 0);
  EXPECT_NE(object.SvgOf(GetParam().text, 300, 100), extended);
  barcode_set_extended_guard(object, -5);
  EXPECT_EQ(object.SvgOf(GetParam().text, 300, 100), extended);
}

TEST_P(RetailDraw, ARefusedTextLeavesTheBackground) {
  for (const int extended : {1, 0}) {
    barcode_set_extended_guard(object, extended);
    ASSERT_EQ(Draw(GetParam().text), 1);
    const auto captured = Capture([&] { EXPECT_EQ(Draw("1x"), 0); });
    EXPECT_EQ(captured.out, "");
    EXPECT_THAT(captured.err, StartsWith(std::string("[").append(GetParam().name).append("] ")));
    EXPECT_EQ(DarkPixels(object.Picture(), 0, 300, 0, 100), 0);
  }
}

TEST_P(RetailDraw, ARefusedTextLeavesTheSvgDocument) {
  for (const int extended : {1, 0}) {
    barcode_set_extended_guard(object, extended);
    const std::string document = object.SvgOf(GetParam().text, 300, 100);
    EXPECT_EQ(Draw("1x"), 0);
    EXPECT_EQ(barcode_get_svg(object), document);
  }
}

TEST_P(RetailDraw, UnknownFormatsDrawNothingSilently) {
  barcode_set_output_format(object, "PNG");
  const auto captured = Capture([&] { EXPECT_EQ(Draw("1x"), 0); });
  EXPECT_EQ(captured.err, "");
}

TEST_P(RetailDraw, ANarrowBoxClipsTheSymbol) {
  barcode_set_show_text(object, 0);
  const auto captured = Capture([&] { EXPECT_EQ(Draw(GetParam().text, 40, 30), 1); });
  EXPECT_THAT(captured.out,
              HasSubstr("実際の描画サイズ: width=" + std::to_string(GetParam().modules) + "\n"));
  EXPECT_EQ(RunsOfRow(object.Picture(), 10).front(), 1);
}

TEST_P(RetailDraw, FitWidthFillsTheBoxBetweenTheMargins) {
  barcode_set_fit_width(object, 1);
  const double margin = GetParam().type == BARCODE_JAN13 ? 19.2 : GetParam().type == BARCODE_JAN8 ? 0 : 16;
  const double rightMargin = GetParam().type == BARCODE_JAN13 ? 0 : margin;
  const auto bars = Bars(object.SvgOf(GetParam().text, 301, 100));
  EXPECT_NEAR(std::stod(bars.front().at(0)), margin, 0.01);
  EXPECT_NEAR(std::stod(bars.back().at(0)) + std::stod(bars.back().at(1)), 301 - rightMargin, 0.02);
}

TEST_P(RetailDraw, ColoursReachBarsTextAndBackground) {
  barcode_set_foreground_color(object, 1, 2, 3, 128);
  barcode_set_background_color(object, 250, 251, 252, 255);
  const std::string document = object.SvgOf(GetParam().text, 300, 100);
  const auto rects = SvgElements(document, "rect");
  EXPECT_EQ(Attribute(rects.at(0), "fill"), "rgb(250,251,252)");
  EXPECT_EQ(Attribute(rects.at(1), "fill"), "rgb(1,2,3)");
  EXPECT_EQ(Attribute(rects.at(1), "fill-opacity"), "0.50");
  EXPECT_EQ(Attribute(SvgElements(document, "text").at(0), "fill"), "rgb(1,2,3)");
}

TEST_P(RetailDraw, AnyScaleIsDefined) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  for (const double scale : {0.0, -1.0, std::nan(""), kInfinity, -kInfinity, 1e300, 1e35, -1e35, 1e9, 30.0}) {
    for (const char* const format : {"png", "svg"}) {
      barcode_set_output_format(object, format);
      barcode_set_text_font_scale(object, scale);
      barcode_set_text_gap(object, scale);
      (void)Capture([&] { EXPECT_EQ(Draw(GetParam().text), 1) << scale; });
    }
    const std::string document = barcode_get_svg(object);
    for (const char* const word : {"\"nan", "\"-nan", "\"inf", "\"-inf"}) {
      EXPECT_EQ(document.find(word), std::string::npos) << scale;
    }
  }
}

TEST_P(RetailDraw, HugeBoxesAreDefinedInSvg) {
  for (const int size : {-1, 0, 1, 2147483647, -2147483647 - 1}) {
    for (const int scale : {1, 1000}) {
      barcode_set_text_font_scale(object, scale);
      EXPECT_NE(object.SvgOf(GetParam().text, size, size), "");
    }
  }
}

// ---- messages ----

std::string ErrorOf(int type, const char* text) {
  const BarcodeObject object(type);
  const auto raster = Capture([&] { EXPECT_EQ(barcode_draw_1d(object, text, 300, 100), 0); });
  barcode_set_output_format(object, "svg");
  const auto svg = Capture([&] { EXPECT_EQ(barcode_draw_1d(object, text, 300, 100), 0); });
  EXPECT_EQ(raster.err, svg.err);
  return raster.err;
}

TEST(RetailMessages, Jan13) {
  EXPECT_EQ(ErrorOf(BARCODE_JAN13, ""), "[Jan13] Empty string\n");
  EXPECT_EQ(ErrorOf(BARCODE_JAN13, "12a"), "[Jan13] Jan13 barcode requires numeric digits only\n");
  EXPECT_EQ(ErrorOf(BARCODE_JAN13, "12345678901a"), "[Jan13] Jan13 barcode requires numeric digits only\n");
  EXPECT_EQ(ErrorOf(BARCODE_JAN13, "12345"), "[Jan13] Jan13 barcode requires 12 or 13 digits\n");
  EXPECT_EQ(ErrorOf(BARCODE_JAN13, "4901234567893"), "[Jan13] Invalid check digit\n");
}

TEST(RetailMessages, Jan8) {
  EXPECT_EQ(ErrorOf(BARCODE_JAN8, ""), "[Jan8] Empty string\n");
  EXPECT_EQ(ErrorOf(BARCODE_JAN8, "1 2"), "[Jan8] Jan8 barcode requires numeric digits only\n");
  EXPECT_EQ(ErrorOf(BARCODE_JAN8, "123456"), "[Jan8] Jan8 barcode requires 7 or 8 digits\n");
  EXPECT_EQ(ErrorOf(BARCODE_JAN8, "49012340"), "[Jan8] Invalid check digit\n");
}

TEST(RetailMessages, UpcA) {
  EXPECT_EQ(ErrorOf(BARCODE_UPC_A, ""), "[UpcA] Empty string\n");
  EXPECT_EQ(ErrorOf(BARCODE_UPC_A, "-1"), "[UpcA] UPC-A barcode requires numeric digits only\n");
  EXPECT_EQ(ErrorOf(BARCODE_UPC_A, "0360002914"), "[UpcA] UPC-A barcode requires 11 or 12 digits\n");
  EXPECT_EQ(ErrorOf(BARCODE_UPC_A, "036000291453"), "[UpcA] Invalid check digit\n");
}

TEST(RetailMessages, UpcE) {
  EXPECT_EQ(ErrorOf(BARCODE_UPC_E, ""), "[UpcE] Invalid length (must be 6, 7 or 8 digits).\n");
  EXPECT_EQ(ErrorOf(BARCODE_UPC_E, "abc"), "[UpcE] Invalid length (must be 6, 7 or 8 digits).\n");
  EXPECT_EQ(ErrorOf(BARCODE_UPC_E, "12345x"), "[UpcE] Invalid character (non-digit found).\n");
}

TEST(UpcEDraw, EightDigitsAreDrawnWithTheirCheckDigitWhateverItIs) {
  const BarcodeObject object(BARCODE_UPC_E);
  const std::string wrong = object.SvgOf("06543211", 300, 100);
  EXPECT_EQ(Contents(SvgElements(wrong, "text")), "06543211");
  EXPECT_NE(Bars(wrong), Bars(object.SvgOf("06543217", 300, 100)));
}

// ---- the extended layout, number by number ----

TEST(Jan13Extended, SizeReportCountsFromTheEdgeOfTheBox) {
  const BarcodeObject object(BARCODE_JAN13);
  const auto captured = Capture([&] { EXPECT_EQ(barcode_draw_1d(object, kJan13.text, 300, 100), 1); });
  EXPECT_EQ(captured.out, SizeReport(300, 100, "209"));  // margin 19, 95 modules of 2
  EXPECT_EQ(captured.err, "");
}

TEST(Jan13Extended, Raster) {
  const BarcodeObject object(BARCODE_JAN13);
  ASSERT_EQ(barcode_draw_1d(object, kJan13.text, 300, 100), 1);
  const Image image = object.Picture();
  const std::vector<int> data = RunsOfRow(image, 74);
  EXPECT_EQ(data, RunsOfRow(image, 0));
  EXPECT_THAT(std::vector<int>(data.begin(), data.begin() + 6), ElementsAre(0, 19, 2, 2, 2, 6));
  // The guards go on to row 79, at 19, 23, 111, 115, 205 and 209 - 2.
  for (const int x : {19, 23, 111, 115, 203, 207}) {
    EXPECT_EQ(DarkPixels(image, x, x + 2, 0, 80), 160) << x;
    EXPECT_LT(DarkPixels(image, x, x + 2, 80, 81), 2) << x;
  }
  EXPECT_EQ(DarkPixels(image, 21, 23, 0, 100), 0);
  // The leading digit in the margin, the groups between the guards, nothing beyond.
  EXPECT_GT(DarkPixels(image, 0, 12, 75, 100), 20);
  EXPECT_GT(DarkPixels(image, 25, 109, 80, 100), 100);
  EXPECT_GT(DarkPixels(image, 119, 203, 80, 100), 100);
  EXPECT_EQ(DarkPixels(image, 109, 119, 80, 100), 0);
  EXPECT_EQ(DarkPixels(image, 209, 300, 0, 100), 0);
}

TEST(Jan13Extended, Svg) {
  const BarcodeObject object(BARCODE_JAN13);
  const std::string document = object.SvgOf(kJan13.text, 300, 100);
  const auto bars = Bars(document);
  ASSERT_THAT(bars, SizeIs(30));
  EXPECT_THAT(bars[0], ElementsAre("19.20", "2.00", "80.50"));
  EXPECT_THAT(bars[2], ElementsAre("31.20", "2.00", "75.00"));
  EXPECT_THAT(bars[14], ElementsAre("111.20", "2.00", "80.50"));
  EXPECT_THAT(bars[29], ElementsAre("207.20", "2.00", "80.50"));
  const auto texts = SvgElements(document, "text");
  ASSERT_THAT(texts, SizeIs(13));
  EXPECT_EQ(
      texts[0],
      "  <text x=\"2.88\" y=\"78.00\" font-family=\"Arial, sans-serif\" font-size=\"16\" fill=\"rgb(0,0,0)\" "
      "text-anchor=\"start\" dominant-baseline=\"hanging\">4</text>");
  EXPECT_EQ(Attribute(texts[1], "x"), "34.80");  // 25.2 + 9.6
  EXPECT_EQ(Attribute(texts[2], "x"), "47.76");  // a fifth of 84 - 19.2 further
  EXPECT_EQ(Attribute(texts[1], "text-anchor"), "middle");
  EXPECT_EQ(Attribute(texts[12], "x"), "193.60");
  barcode_set_text_even_spacing(object, 0);
  const auto groups = SvgElements(object.SvgOf(kJan13.text, 300, 100), "text");
  EXPECT_THAT(Values(groups, "x"), ElementsAre("2.88", "67.20", "161.20"));
  EXPECT_THAT(Values(groups, "text-anchor"), ElementsAre("start", "middle", "middle"));
  EXPECT_EQ(Contents(groups), kJan13.code);
}

TEST(Jan13Extended, TextSizesOfTheThreeBands) {
  const BarcodeObject object(BARCODE_JAN13);
  const auto size = [&](int height) {
    return Attribute(SvgElements(object.SvgOf(kJan13.text, 1000, height), "text").at(0), "font-size");
  };
  EXPECT_EQ(size(20), "8");
  EXPECT_EQ(size(49), "9");    // 0.8 of 12
  EXPECT_EQ(size(50), "8");    // 0.8 of 10
  EXPECT_EQ(size(200), "32");  // 0.8 of 40
  EXPECT_EQ(size(201), "24");  // 0.8 of 30
}

TEST(Jan13Extended, TheTextGapMovesSvgDigitsOnly) {
  const BarcodeObject object(BARCODE_JAN13);
  barcode_set_text_gap(object, 2);
  // Bars of 100 - 20 - 10, a gap of 6.
  EXPECT_EQ(Attribute(SvgElements(object.SvgOf(kJan13.text, 300, 100), "text").at(0), "y"), "76.00");
}

TEST(Jan8Extended, RasterAndSvg) {
  const BarcodeObject object(BARCODE_JAN8);
  ASSERT_EQ(barcode_draw_1d(object, kJan8.text, 300, 100), 1);
  const Image image = object.Picture();
  for (const int x : {0, 8, 128, 136, 256, 264}) {
    EXPECT_EQ(DarkPixels(image, x, x + 4, 0, 80), 320) << x;
    EXPECT_EQ(DarkPixels(image, x, x + 4, 80, 100), 0) << x;
  }
  // A gap of three pixels under the data bars.
  EXPECT_EQ(DarkPixels(image, 12, 128, 75, 78), 0);
  EXPECT_GT(DarkPixels(image, 12, 128, 78, 100), 100);
  const std::string document = object.SvgOf(kJan8.text, 300, 100);
  EXPECT_THAT(Bars(document).front(), ElementsAre("0.00", "4.00", "80.50"));
  const auto texts = SvgElements(document, "text");
  EXPECT_THAT(Values(texts, "x"),
              ElementsAre("21.60", "52.53", "83.47", "114.40", "153.60", "184.53", "215.47", "246.40"));
  EXPECT_EQ(Attribute(texts[0], "y"), "78.00");
}

TEST(UpcAExtended, RasterAndSvg) {
  const BarcodeObject object(BARCODE_UPC_A);
  ASSERT_EQ(barcode_draw_1d(object, kUpcA.text, 300, 100), 1);
  const Image image = object.Picture();
  // Guard height 84: both side guards with the first and the last digit, and the two bars of the centre.
  const std::vector<int> below = RunsOfRow(image, 75);  // no digit has ink in its first row
  EXPECT_THAT(below, SizeIs(1 + 2 * 10 + 1));
  for (const int x : {16, 20, 28, 30, 34, 108, 112, 186, 188, 192, 194, 200, 204}) {
    EXPECT_EQ(DarkPixels(image, x, x + 2, 0, 84), 168) << x;
    EXPECT_LT(DarkPixels(image, x, x + 2, 84, 85), 2) << x;
  }
  EXPECT_THAT(std::vector<int>(below.begin(), below.begin() + 4), ElementsAre(0, 16, 2, 2));
  EXPECT_GT(DarkPixels(image, 0, 12, 75, 100), 20);
  EXPECT_GT(DarkPixels(image, 206, 230, 75, 100), 20);
  const std::string document = object.SvgOf(kUpcA.text, 300, 100);
  EXPECT_THAT(Bars(document).front(), ElementsAre("16.00", "2.00", "84.90"));
  EXPECT_THAT(Values(SvgElements(document, "text"), "x"),
              ElementsAre("0.00", "45.60", "58.80", "72.00", "85.20", "98.40", "123.60", "136.80", "150.00",
                          "163.20", "176.40", "212.40"));
  barcode_set_text_even_spacing(object, 0);
  const auto groups = SvgElements(object.SvgOf(kUpcA.text, 300, 100), "text");
  EXPECT_THAT(Values(groups, "x"), ElementsAre("0.00", "72.00", "150.00", "212.40"));
  EXPECT_THAT(Values(groups, "text-anchor"), ElementsAre("start", "middle", "middle", "start"));
}

TEST(UpcEExtended, RasterAndSvg) {
  const BarcodeObject object(BARCODE_UPC_E);
  ASSERT_EQ(barcode_draw_1d(object, kUpcE.text, 300, 100), 1);
  const Image image = object.Picture();
  for (const int x : {16, 26, 246, 256, 266}) {
    EXPECT_EQ(DarkPixels(image, x, x + 5, 0, 84), 420) << x;
    EXPECT_EQ(DarkPixels(image, x, x + 5, 84, 100), 0) << x;
  }
  EXPECT_GT(DarkPixels(image, 0, 12, 75, 100), 20);
  EXPECT_GT(DarkPixels(image, 271, 300, 75, 100), 20);
  const std::string document = object.SvgOf(kUpcE.text, 300, 100);
  EXPECT_THAT(Bars(document).front(), ElementsAre("16.00", "5.00", "84.90"));
  EXPECT_THAT(Values(SvgElements(document, "text"), "x"),
              ElementsAre("0.00", "40.60", "78.76", "116.92", "155.08", "193.24", "231.40", "277.40"));
}

TEST(ExtendedGuard, OtherTypesIgnoreTheOption) {
  const BarcodeObject object(BARCODE_CODE39);
  const std::string document = object.SvgOf("A", 300, 100);
  barcode_set_extended_guard(object, 0);
  EXPECT_EQ(object.SvgOf("A", 300, 100), document);
}

}  // namespace
}  // namespace barcode::test
