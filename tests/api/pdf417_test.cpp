// PDF417 as a host sees it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "support/barcode_object.h"
#include "support/capture.h"
#include "support/svg.h"
#include "support/symbologies.h"
#include "support/threads.h"

namespace barcode::test {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

// What every draw of "A" with default options prints: ten rows of one column.
constexpr const char* kReportOfA =
    "C++ props: Encoding=utf-8, SizeKind=AUTO, CodeColumns=0, CodeRows=0, UseAutoErrorLevel=True, "
    "ErrorLevel(now)=2, AspectRatio=0.5, YHeight=3\n"
    "C++ codewords len=10: [2,29,478,509,903,637,74,490,760,21]\n"
    "[C++] row=0 startCp=0 codeColumns=1 lenCodewords=10\n"
    "[C++] row=1 startCp=1 codeColumns=1 lenCodewords=10\n"
    "[C++] row=2 startCp=2 codeColumns=1 lenCodewords=10\n"
    "[C++] row=3 startCp=3 codeColumns=1 lenCodewords=10\n"
    "[C++] row=4 startCp=4 codeColumns=1 lenCodewords=10\n"
    "[C++] row=5 startCp=5 codeColumns=1 lenCodewords=10\n"
    "[C++] row=6 startCp=6 codeColumns=1 lenCodewords=10\n"
    "[C++] row=7 startCp=7 codeColumns=1 lenCodewords=10\n"
    "[C++] row=8 startCp=8 codeColumns=1 lenCodewords=10\n"
    "[C++] row=9 startCp=9 codeColumns=1 lenCodewords=10\n";
constexpr int kModulesOfA = 17 * 1 + 69;

class Pdf417Draw : public ::testing::Test {
 protected:
  BarcodeObject code{BARCODE_PDF417};

  Captured Draw(const std::string& text, int width, int height, int expected = 1) {
    return Capture([&] { EXPECT_EQ(barcode_draw_2d_rect(code, text.c_str(), width, height), expected); });
  }

  std::string Svg(const std::string& text, int width, int height) {
    barcode_set_output_format(code, "svg");
    (void)Draw(text, width, height);
    return barcode_get_svg(code);
  }

  // The property line of a draw.
  std::string Properties() {
    const std::string out = Draw("A", 90, 30).out;
    return out.substr(0, out.find('\n'));
  }
};

TEST_F(Pdf417Draw, Report) {
  const Captured raster = Draw("A", 90, 30);
  EXPECT_EQ(raster.out, kReportOfA);
  EXPECT_EQ(raster.err, "");
  barcode_set_output_format(code, "svg");
  const Captured svg = Draw("A", 90, 30);
  EXPECT_EQ(svg.out, kReportOfA);
  EXPECT_EQ(svg.err, "");
}

TEST_F(Pdf417Draw, EmptyText) {
  for (const char* const format : {"png", "svg"}) {
    barcode_set_output_format(code, format);
    const Captured captured = Draw("", 90, 30, 0);
    EXPECT_THAT(captured.out, StartsWith("C++ props: "));
    EXPECT_THAT(captured.out, EndsWith("YHeight=3\nText cannot be null.\n"));
    EXPECT_EQ(captured.err, "[PDF417] Text cannot be null.\n");
  }
}

TEST_F(Pdf417Draw, TextTooBig) {
  // 5421 bytes are refused before compaction, 5420 digits by their codewords.
  for (const std::string& text : {std::string(5421, 'A'), std::string(5420, '1'), std::string(1851, 'A')}) {
    for (const char* const format : {"png", "svg"}) {
      barcode_set_output_format(code, format);
      const Captured captured = Draw(text, 90, 30, 0);
      EXPECT_THAT(captured.out, EndsWith("YHeight=3\nThe text is too big.\n"));
      EXPECT_EQ(captured.err, "[PDF417] The text is too big.\n");
    }
  }
  EXPECT_EQ(Draw(std::string(1850, 'A'), 90, 30).err, "");
}

TEST_F(Pdf417Draw, ARefusedTextLeavesTheEarlierSymbol) {
  (void)Draw("A", 90, 30);
  const Image before = code.Picture();
  (void)Draw("", 50, 50, 0);
  EXPECT_EQ(code.Picture(), before);
  const std::string svg = Svg("A", 90, 30);
  (void)Draw("", 50, 50, 0);
  EXPECT_EQ(barcode_get_svg(code), svg);
}

TEST_F(Pdf417Draw, StoredOptionsAreReportedAndLeaveTheSymbolAlone) {
  (void)Draw("A", 90, 30);
  const Image before = code.Picture();
  barcode_set_columns(code, 10);
  barcode_set_rows(code, 20);
  barcode_set_error_level(code, 8);
  EXPECT_THAT(Properties(),
              HasSubstr("CodeColumns=10, CodeRows=20, UseAutoErrorLevel=True, ErrorLevel(now)=8, "));
  EXPECT_EQ(code.Picture(), before);
}

TEST_F(Pdf417Draw, OptionsOutOfRangeChangeNothing) {
  for (const int columns : {0, 30, 31, -1, INT_MAX, INT_MIN}) {
    barcode_set_columns(code, columns);
  }
  for (const int rows : {0, 90, 91, -1, INT_MAX, INT_MIN}) {
    barcode_set_rows(code, rows);
  }
  for (const int height : {1, 0, -1, INT_MIN}) {
    barcode_set_y_height(code, height);
  }
  barcode_set_aspect_ratio(code, 0.75);
  for (const double ratio :
       {0.0, 0.000999, 1000.001, -0.5, std::nan(""), std::numeric_limits<double>::infinity()}) {
    barcode_set_aspect_ratio(code, ratio);
  }
  EXPECT_THAT(Properties(), HasSubstr("CodeColumns=30, CodeRows=90, "));
  EXPECT_THAT(Properties(), HasSubstr("AspectRatio=0.75, YHeight=1"));
  barcode_set_aspect_ratio(code, 0.001);
  barcode_set_y_height(code, INT_MAX);
  EXPECT_THAT(Properties(), HasSubstr("AspectRatio=0.001, YHeight=2147483647"));
  barcode_set_aspect_ratio(code, 1000);
  EXPECT_THAT(Properties(), HasSubstr("AspectRatio=1000, "));
  // The error level is stored whatever it is.
  for (const int level : {-1, 9, INT_MAX, INT_MIN}) {
    barcode_set_error_level(code, level);
    EXPECT_THAT(Properties(), HasSubstr("ErrorLevel(now)=" + std::to_string(level) + ", "));
  }
}

TEST_F(Pdf417Draw, AspectRatioAndRowHeightShapeTheColumns) {
  const std::string text(60, 'A');
  EXPECT_THAT(Draw(text, 90, 30).out, HasSubstr("codeColumns=2 "));
  barcode_set_aspect_ratio(code, 0.1);
  EXPECT_THAT(Draw(text, 90, 30).out, HasSubstr("codeColumns=7 "));
  barcode_set_y_height(code, 12);
  EXPECT_THAT(Draw(text, 90, 30).out, HasSubstr("codeColumns=16 "));
}

TEST_F(Pdf417Draw, TheTextIsEncodedInTheChosenCharacterSet) {
  barcode_set_string_encoding(code, "shift-jis");
  // Two hiragana: the Shift-JIS bytes 82 A0 82 A2 in byte compaction.
  EXPECT_THAT(Draw("\xE3\x81\x82\xE3\x81\x84", 90, 30).out,
              ::testing::AllOf(HasSubstr("Encoding=shift-jis, "), HasSubstr(": [6,901,130,160,130,162,")));
  barcode_set_string_encoding(code, "utf-8");
  // Six bytes E3 81 82 E3 81 84.
  EXPECT_THAT(Draw("\x82\xA0\x82\xA2", 90, 30).out, HasSubstr(",924,"));
  EXPECT_EQ(Draw("\x82\xA0\x82\xA2", 90, 30).out, Draw("\xE3\x81\x82\xE3\x81\x84", 90, 30).out);
}

TEST_F(Pdf417Draw, WholePixelModulesFromTheTopLeftCorner) {
  (void)Draw("A", 200, 47);
  const Image image = code.Picture();
  EXPECT_EQ(image.width, 200);
  EXPECT_EQ(image.height, 47);
  // Two pixels a module, four a row. The start pattern opens every row, the stop pattern ends it.
  for (int y = 0; y < 40; ++y) {
    const std::vector<int> runs = RunsOfRow(image, y);
    EXPECT_THAT(std::vector(runs.begin(), runs.begin() + 8), ::testing::ElementsAre(16, 2, 2, 2, 2, 2, 2, 6));
    EXPECT_THAT(std::vector(runs.end() - 10, runs.end()),
                ::testing::ElementsAre(14, 2, 2, 6, 2, 2, 2, 4, 2, 200 - 2 * kModulesOfA));
  }
  EXPECT_NE(RunsOfRow(image, 3), RunsOfRow(image, 4));
  for (int y = 40; y < 47; ++y) {
    EXPECT_EQ(RunsOfRow(image, y), (std::vector<int>{0, 200}));
  }
}

TEST_F(Pdf417Draw, ModulesAreAtLeastOnePixel) {
  (void)Draw("A", 40, 5);
  const Image image = code.Picture();
  ASSERT_EQ(image.width, 40);
  const std::vector<int> runs = RunsOfRow(image, 0);
  EXPECT_THAT(std::vector(runs.begin(), runs.begin() + 8), ::testing::ElementsAre(8, 1, 1, 1, 1, 1, 1, 3));
  EXPECT_NE(RunsOfRow(image, 0), RunsOfRow(image, 1));
}

TEST_F(Pdf417Draw, FitWidthRoundsTheEdges) {
  barcode_set_fit_width(code, 1);
  (void)Draw("A", 129, 45);
  const Image image = code.Picture();
  // 1.5 pixels a module: edges at 12, 14 (13.5), 15, 17 (16.5), 18, 20, 21, 26 (25.5).
  const std::vector<int> runs = RunsOfRow(image, 0);
  EXPECT_THAT(std::vector(runs.begin(), runs.begin() + 7), ::testing::ElementsAre(12, 2, 1, 2, 1, 2, 1));
  EXPECT_EQ(image.At(128, 44), kBlackPixel);  // the last module reaches the corner
  // 4.5 pixels a row: the first ends at 5, the second at 9.
  EXPECT_EQ(RunsOfRow(image, 4), RunsOfRow(image, 0));
  EXPECT_NE(RunsOfRow(image, 5), RunsOfRow(image, 0));
  EXPECT_EQ(RunsOfRow(image, 8), RunsOfRow(image, 5));
  EXPECT_NE(RunsOfRow(image, 9), RunsOfRow(image, 5));
}

TEST_F(Pdf417Draw, ASquareBoxTakesTheNaturalWidth) {
  (void)Draw("A", 100, 100);
  const Image image = code.Picture();
  EXPECT_EQ(image.width, 287);  // 86 x 100 / (3 x 10) = 286.67
  EXPECT_EQ(image.height, 100);
  ASSERT_EQ(Capture([&] { EXPECT_EQ(barcode_draw_2d(code, "A", 100), 1); }).err, "");
  EXPECT_EQ(code.Picture(), image);
  barcode_set_y_height(code, 1);
  (void)Draw("A", 100, 100);
  EXPECT_EQ(code.Picture().width, 860);
  EXPECT_THAT(Svg("A", 100, 100), HasSubstr(R"(width="860" height="100" viewBox="0 0 860 100")"));
}

TEST_F(Pdf417Draw, PixelAdjustmentsAreNotApplied) {
  (void)Draw("A", 180, 30);
  const Image before = code.Picture();
  const std::string svg = Svg("A", 180, 30);
  barcode_set_px_adjust_black(code, 1);
  barcode_set_px_adjust_white(code, -1);
  EXPECT_EQ(Svg("A", 180, 30), svg);
  barcode_set_output_format(code, "png");
  (void)Draw("A", 180, 30);
  EXPECT_EQ(code.Picture(), before);
}

TEST_F(Pdf417Draw, ColoursAreStoredAsTheyAre) {
  barcode_set_foreground_color(code, 10, 20, 30, 128);
  barcode_set_background_color(code, 200, 210, 220, 40);
  (void)Draw("A", 90, 30);
  EXPECT_EQ(code.Picture().At(0, 0), (Pixel{10, 20, 30, 128}));
  EXPECT_EQ(code.Picture().At(89, 29), (Pixel{200, 210, 220, 40}));
}

TEST_F(Pdf417Draw, SvgDocument) {
  barcode_set_foreground_color(code, 10, 20, 30, 128);
  const std::string document = Svg("A", 200, 45);
  EXPECT_THAT(document, HasSubstr(R"(width="200" height="45" viewBox="0 0 200 45")"));
  EXPECT_THAT(document, EndsWith("</svg>\n"));
  const std::vector<std::string> rects = SvgElements(document, "rect");
  EXPECT_EQ(rects.at(0),
            R"~(  <rect x="0.00" y="0.00" width="200.00" height="45.00" fill="rgb(255,255,255)"/>)~");
  // One rectangle a module, half a pixel larger than its cell of 2 x 4.
  EXPECT_EQ(
      rects.at(1),
      R"~(  <rect x="0.00" y="0.00" width="2.50" height="4.50" fill="rgb(10,20,30)" fill-opacity="0.50"/>)~");
  EXPECT_EQ(Attribute(rects.at(2), "x"), "2.00");
  EXPECT_EQ(Attribute(rects.back(), "x"), "170.00");
  EXPECT_EQ(Attribute(rects.back(), "y"), "36.00");
}

TEST_F(Pdf417Draw, SvgEdgesAreNotRounded) {
  barcode_set_fit_width(code, 1);
  const std::vector<std::string> rects = SvgElements(Svg("A", 129, 45), "rect");
  EXPECT_EQ(Attribute(rects.at(2), "x"), "1.50");
  EXPECT_EQ(Attribute(rects.at(2), "width"), "2.00");
  EXPECT_EQ(Attribute(rects.at(2), "height"), "5.00");
}

TEST_F(Pdf417Draw, SvgShowsTheModulesOfTheRaster) {
  const std::string text = "PDF417 0123456789012345 \xE6\x97\xA5\xE6\x9C\xAC";
  (void)Draw(text, 300, 90);
  const Image image = code.Picture();
  const std::vector<std::string> rects = SvgElements(Svg(text, 300, 90), "rect");
  constexpr std::size_t kWidth = 300;
  constexpr std::size_t kHeight = 90;
  Image fromSvg{kWidth, kHeight, std::vector<Pixel>(kWidth * kHeight, kWhitePixel)};
  for (std::size_t i = 1; i < rects.size(); ++i) {
    const auto number = [&](const char* name) {
      return static_cast<std::size_t>(std::stod(Attribute(rects[i], name)));
    };
    // The sizes are half a pixel larger than the cell: rounding down gives the cell.
    for (std::size_t y = number("y"); y < number("y") + number("height"); ++y) {
      for (std::size_t x = number("x"); x < number("x") + number("width"); ++x) {
        fromSvg.pixels[y * kWidth + x] = kBlackPixel;
      }
    }
  }
  EXPECT_EQ(fromSvg, image);
}

TEST_F(Pdf417Draw, FormatsWithoutACanvasFailSilently) {
  for (const char* const format : {"", "bmp", "Svg"}) {
    barcode_set_output_format(code, format);
    const Captured captured = Draw("A", 90, 30, 0);
    EXPECT_EQ(captured.out, kReportOfA);
    EXPECT_EQ(captured.err, "");
  }
}

TEST_F(Pdf417Draw, SizesThatNoCanvasHas) {
  for (const auto& [width, height] : {std::pair{-1, 30}, {90, -1}, {-100, -100}, {INT_MIN, INT_MIN}}) {
    EXPECT_THAT(Draw("A", width, height, 0).err, StartsWith("サーフェス作成に失敗: "))
        << width << " x " << height;
  }
}

TEST_F(Pdf417Draw, TwoObjectsDoNotInfluenceEachOther) {
  const BarcodeObject other(BARCODE_PDF417);
  barcode_set_aspect_ratio(other, 5);
  barcode_set_y_height(other, 7);
  barcode_set_columns(other, 12);
  (void)Capture([&] { EXPECT_EQ(barcode_draw_1d(other, "something else", 400, 400), 1); });
  EXPECT_EQ(Draw("A", 90, 30).out, kReportOfA);
}

TEST(Pdf417Threads, ObjectsOnDifferentThreadsDrawWhatTheyDrawAlone) {
  ExpectThreadsDrawWhatTheyDrawAlone(4, 50, [](int thread) {
    const BarcodeObject code(BARCODE_PDF417);
    barcode_set_aspect_ratio(code, 0.3 * (thread + 1));
    const std::string text(static_cast<std::size_t>(20 + 60 * thread), static_cast<char>('a' + thread));
    return code.SvgOf(text, 400, 150);
  });
}

// An object of another symbology draws what one draws that was never touched.
TEST(Pdf417Options, OfOtherTypesAreLeftAlone) {
  const auto drawn = [](const BarcodeObject& object, const char* text) {
    std::string output;
    const Captured captured = Capture([&] {
      EXPECT_EQ(barcode_draw_1d(object, text, 300, 120), 1);
      const auto png = object.Png();
      output.assign(png.begin(), png.end());
      output += object.SvgOf(text, 300, 120);
    });
    return output + captured.out + captured.err;
  };
  for (const int type : EverySymbology()) {
    const char* const text = ValidText(type);
    ASSERT_NE(text, nullptr) << type;
    const BarcodeObject untouched(type);
    const BarcodeObject object(type);
    barcode_set_columns(object, 3);
    barcode_set_rows(object, 7);
    barcode_set_error_level(object, 6);
    barcode_set_aspect_ratio(object, 3);
    barcode_set_y_height(object, 9);
    if (type == BARCODE_PDF417) {
      EXPECT_NE(drawn(object, text), drawn(untouched, text));
    } else {
      EXPECT_EQ(drawn(object, text), drawn(untouched, text)) << type;
    }
  }
}

}  // namespace
}  // namespace barcode::test
