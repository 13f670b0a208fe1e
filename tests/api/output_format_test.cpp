#include <gtest/gtest.h>
#include <sys/resource.h>

#include <string>

#include "support/barcode_object.h"
#include "support/capture.h"

namespace barcode::test {
namespace {

constexpr const char* kFallbackUri =
    "data:image/png;base64,"
    "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVQI12P4//8/AAX+Av7czFnnAAAAAElFTkSuQmCC";

class OutputFormat : public ::testing::Test {
 protected:
  BarcodeObject code{BARCODE_CODE39};

  void SetFormat(const char* format) { barcode_set_output_format(code, format); }
  int Draw() { return barcode_draw_1d(code, "ABC-123", 300, 100); }
};

TEST_F(OutputFormat, PngIsTheDefault) {
  ASSERT_EQ(Draw(), 1);
  const Image image = code.Picture();
  EXPECT_EQ(image.width, 300);
  EXPECT_EQ(image.height, 100);
  EXPECT_EQ(std::string(barcode_get_base64(code)).find("data:image/png;base64,iVBORw0KGgo"), 0U);
}

TEST_F(OutputFormat, JpegNamesItsTypeOverPngBytes) {
  for (const char* const format : {"jpg", "jpeg"}) {
    SetFormat(format);
    ASSERT_EQ(Draw(), 1);
    EXPECT_EQ(code.Picture().width, 300);
    EXPECT_EQ(std::string(barcode_get_base64(code)).find("data:image/jpeg;base64,iVBORw0KGgo"), 0U);
  }
}

TEST_F(OutputFormat, OnlyTwoSpellingsAreSvg) {
  for (const char* const format : {"svg", "SVG"}) {
    SetFormat(format);
    EXPECT_EQ(barcode_is_svg_output(code), 1);
  }
  for (const char* const format : {"Svg", " svg", "svg ", "png", ""}) {
    SetFormat(format);
    EXPECT_EQ(barcode_is_svg_output(code), 0) << format;
  }
}

TEST_F(OutputFormat, AnUnknownFormatMakesNoCanvas) {
  for (const char* const format : {"PNG", "Svg", "", "gif"}) {
    SetFormat(format);
    Captured captured = Capture([&] { EXPECT_EQ(Draw(), 0); });
    EXPECT_EQ(captured.err, "");
    EXPECT_EQ(captured.out, "");
  }
}

TEST_F(OutputFormat, AnUnknownFormatWithoutCanvasHidesEvenABadText) {
  SetFormat("PNG");
  const auto captured = Capture([&] { EXPECT_EQ(barcode_draw_1d(code, "A_B", 300, 100), 0); });
  EXPECT_EQ(captured.err, "");
}

TEST_F(OutputFormat, AnUnknownFormatDrawsIntoTheCanvasThatRemains) {
  ASSERT_EQ(barcode_draw_1d(code, "OLD", 200, 80), 1);
  SetFormat("PNG");
  const auto captured = Capture([&] { EXPECT_EQ(Draw(), 1); });
  EXPECT_EQ(captured.out,
            "指定サイズ: width=300, height=100\n実際の描画サイズ: width=286\nサーフェスサイズ: width=200, "
            "height=80\n");
  const Image image = code.Picture();
  EXPECT_EQ(image.width, 200);
  EXPECT_EQ(image.height, 80);
  // The bars of the new text: "*" then "A", two pixels a module.
  const std::vector<int> runs = RunsOfRow(image, 0);
  ASSERT_GT(runs.size(), 12U);
  EXPECT_EQ(std::vector<int>(runs.begin(), runs.begin() + 12),
            (std::vector<int>{2, 6, 2, 2, 6, 2, 6, 2, 2, 2, 6, 2}));
  EXPECT_EQ(std::string(barcode_get_base64(code)).find("data:image/png;base64,"), 0U);
}

TEST_F(OutputFormat, Base64WithoutADrawIsTheFallback) {
  EXPECT_STREQ(barcode_get_base64(code), kFallbackUri);
}

TEST_F(OutputFormat, Base64ReleasesTheCanvas) {
  ASSERT_EQ(Draw(), 1);
  EXPECT_STRNE(barcode_get_base64(code), kFallbackUri);
  EXPECT_STREQ(barcode_get_base64(code), kFallbackUri);
  int length = 1;
  const auto captured = Capture([&] { EXPECT_EQ(barcode_get_image_data(code, &length), nullptr); });
  EXPECT_EQ(length, 0);
  EXPECT_EQ(captured.out, "ERROR: サーフェスがnullです\n");
  ASSERT_EQ(Draw(), 1);
  EXPECT_STRNE(barcode_get_base64(code), kFallbackUri);
}

TEST_F(OutputFormat, ImageDataMayBeFetchedAgain) {
  ASSERT_EQ(Draw(), 1);
  const Image first = code.Picture();
  EXPECT_EQ(code.Picture(), first);
}

TEST_F(OutputFormat, ImageDataWithoutLengthPointerIsNull) {
  ASSERT_EQ(Draw(), 1);
  EXPECT_EQ(barcode_get_image_data(code, nullptr), nullptr);
}

TEST_F(OutputFormat, Base64IsRefusedInSvgMode) {
  SetFormat("svg");
  ASSERT_EQ(Draw(), 1);
  EXPECT_STREQ(barcode_get_base64(code),
               "Error: GetImageBase64() is not available in SVG mode. Use GetSvg() instead.");
}

TEST_F(OutputFormat, SvgIsRefusedInRasterMode) {
  ASSERT_EQ(Draw(), 1);
  EXPECT_STREQ(barcode_get_svg(code), "");
  SetFormat("svg");
  EXPECT_STREQ(barcode_get_svg(code), "");
  ASSERT_EQ(Draw(), 1);
  EXPECT_STRNE(barcode_get_svg(code), "");
  SetFormat("png");
  EXPECT_STREQ(barcode_get_svg(code), "");
}

TEST_F(OutputFormat, ImageDataInSvgModeIsTheEarlierRasterDraw) {
  SetFormat("svg");
  ASSERT_EQ(Draw(), 1);
  EXPECT_TRUE(code.Png().empty());
  SetFormat("png");
  ASSERT_EQ(barcode_draw_1d(code, "OLD", 200, 80), 1);
  SetFormat("svg");
  ASSERT_EQ(Draw(), 1);
  EXPECT_EQ(code.Picture().width, 200);
}

TEST_F(OutputFormat, SvgHeaderAndBackground) {
  const std::string svg = code.SvgOf("ABC-123", 300, 100);
  EXPECT_EQ(
      svg.find(
          "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
          "<svg xmlns=\"http://www.w3.org/2000/svg\" version=\"1.1\" width=\"300\" height=\"100\" "
          "viewBox=\"0 0 300 100\">\n"
          "  <rect x=\"0.00\" y=\"0.00\" width=\"300.00\" height=\"100.00\" fill=\"rgb(255,255,255)\"/>\n"),
      0U);
  EXPECT_EQ(svg.substr(svg.size() - 7), "</svg>\n");
}

TEST_F(OutputFormat, ARefusedTextLeavesTheEarlierDocument) {
  const std::string svg = code.SvgOf("ABC-123", 300, 100);
  const auto captured = Capture([&] { EXPECT_EQ(barcode_draw_1d(code, "A_B", 10, 10), 0); });
  EXPECT_EQ(captured.err, "[Code39] Invalid character in CODE39: _\n");
  EXPECT_EQ(barcode_get_svg(code), svg);
}

TEST_F(OutputFormat, ARefusedTextLeavesTheNewCanvasWithTheBackground) {
  barcode_set_background_color(code, 10, 20, 30, 40);
  const auto captured = Capture([&] { EXPECT_EQ(barcode_draw_1d(code, "", 30, 10), 0); });
  EXPECT_EQ(captured.err, "[Code39] Empty string\n");
  EXPECT_EQ(captured.out, "");
  const Image image = code.Picture();
  ASSERT_EQ(image.width, 30);
  for (const Pixel& pixel : image.pixels) {
    ASSERT_EQ(pixel, (Pixel{10, 20, 30, 40}));
  }
}

TEST_F(OutputFormat, ColoursAreStoredAsTheyAre) {
  barcode_set_foreground_color(code, 1, 2, 3, 128);
  barcode_set_background_color(code, 250, 251, 252, 7);
  barcode_set_show_text(code, 0);
  ASSERT_EQ(Draw(), 1);
  const Image image = code.Picture();
  EXPECT_EQ(image.At(0, 0), (Pixel{1, 2, 3, 128}));
  EXPECT_EQ(image.At(2, 99), (Pixel{250, 251, 252, 7}));
  const std::string svg = code.SvgOf("A", 100, 50);
  EXPECT_NE(svg.find("fill=\"rgb(1,2,3)\" fill-opacity=\"0.50\"/>"), std::string::npos);
  EXPECT_NE(svg.find("fill=\"rgb(250,251,252)\" fill-opacity=\"0.03\"/>"), std::string::npos);
}

TEST_F(OutputFormat, ColourComponentsAreTheirLowByte) {
  barcode_set_foreground_color(code, 256 + 9, -1, 512, 255);
  EXPECT_NE(code.SvgOf("A", 100, 50).find("rgb(9,255,0)"), std::string::npos);
}

TEST_F(OutputFormat, SizesThatNoCanvasHolds) {
  for (const auto& size : {std::pair{100000, 100000}, {2147483647, 2147483647}, {1, 2147483647}}) {
    const auto captured = Capture([&] { EXPECT_EQ(barcode_draw_1d(code, "A", size.first, size.second), 0); });
    EXPECT_EQ(captured.err, "サーフェス作成に失敗: Out of memory\n");
    EXPECT_TRUE(code.Png().empty());
  }
  for (const auto& size : {std::pair{-1, 10}, {10, -1}, {-2147483647 - 1, 0}}) {
    const auto captured = Capture([&] { EXPECT_EQ(barcode_draw_1d(code, "A", size.first, size.second), 0); });
    EXPECT_EQ(captured.err.find("サーフェス作成に失敗: "), 0U);
  }
  EXPECT_EQ(Draw(), 1);
}

TEST_F(OutputFormat, AnEmptyBoxDrawsButHasNoImage) {
  EXPECT_EQ(barcode_draw_1d(code, "A", 0, 0), 1);
  EXPECT_TRUE(code.Png().empty());
  EXPECT_EQ(barcode_draw_1d(code, "A", 0, 0), 1);
  EXPECT_STREQ(barcode_get_base64(code), kFallbackUri);
}

TEST_F(OutputFormat, ABoxWithoutPixelsDrawsWhateverItsLength) {
  for (const auto& size : {std::pair{0, 2147483647}, {2147483647, 0}}) {
    EXPECT_EQ(barcode_draw_1d(code, "A", size.first, size.second), 1);
    EXPECT_TRUE(code.Png().empty());
  }
}

// Nobody can ever see these pixels: they are not touched.
TEST_F(OutputFormat, ASideThatNoPngFileHasDrawsAndTakesNoMemory) {
  for (const auto& size : {std::pair{1, 500'000'000}, {500'000'000, 1}}) {
    EXPECT_EQ(barcode_draw_1d(code, "A", size.first, size.second), 1);
    EXPECT_TRUE(code.Png().empty());
  }
  rusage usage{};
  ASSERT_EQ(getrusage(RUSAGE_SELF, &usage), 0);
  constexpr long kKilobytes = 1'000'000;  // the pixels are two gigabytes
  EXPECT_LT(usage.ru_maxrss, kKilobytes);
}

TEST_F(OutputFormat, ALineOfTextMuchLargerThanItsCanvasIsRendered) {
  barcode_set_text_even_spacing(code, 0);
  barcode_set_text_font_scale(code, 6);
  const std::string text(40, 'A');
  const auto captured = Capture([&] { EXPECT_EQ(barcode_draw_1d(code, text.c_str(), 700, 1000), 1); });
  EXPECT_EQ(captured.err, "");
}

}  // namespace
}  // namespace barcode::test
