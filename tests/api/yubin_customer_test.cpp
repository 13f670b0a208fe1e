// The postal customer barcode through the exported functions.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/barcode_object.h"
#include "support/capture.h"
#include "support/svg.h"

namespace barcode::test {
namespace {

using ::testing::SizeIs;

constexpr auto kText = "26300233-30-8-403";

class Yubin : public ::testing::Test {
 protected:
  BarcodeObject object{BARCODE_YUBIN_CUSTOMER};

  std::string SvgOf(const char* text, int height) {
    barcode_set_output_format(object, "svg");
    return barcode_draw_yubin(object, text, height) == 1 ? barcode_get_svg(object) : "";
  }

  Image PictureOf(const char* text, int height) {
    barcode_set_output_format(object, "png");
    EXPECT_EQ(barcode_draw_yubin(object, text, height), 1);
    return object.Picture();
  }
};

TEST_F(Yubin, SixtySevenBarsInAnImageOfTheirSize) {
  const std::string document = SvgOf(kText, 30);
  EXPECT_NE(document.find("width=\"676\" height=\"30\" viewBox=\"0 0 676 30\""), std::string::npos);
  const auto rects = SvgElements(document, "rect");
  ASSERT_THAT(rects, SizeIs(68));
  EXPECT_EQ(rects[0],
            "  <rect x=\"0.00\" y=\"0.00\" width=\"676.00\" height=\"30.00\" fill=\"rgb(255,255,255)\"/>");
  // Start code 13, then 2 = "132".
  EXPECT_EQ(rects[1], "  <rect x=\"0.00\" y=\"0.00\" width=\"5.00\" height=\"30.00\" fill=\"rgb(0,0,0)\"/>");
  EXPECT_EQ(rects[2],
            "  <rect x=\"10.00\" y=\"10.00\" width=\"5.00\" height=\"20.00\" fill=\"rgb(0,0,0)\"/>");
  EXPECT_EQ(rects[5], "  <rect x=\"40.00\" y=\"0.00\" width=\"5.00\" height=\"20.00\" fill=\"rgb(0,0,0)\"/>");
  EXPECT_EQ(Attribute(rects[67], "x"), "660.00");
  EXPECT_TRUE(SvgElements(document, "text").empty());
  EXPECT_EQ(document.substr(document.size() - 7), "</svg>\n");
}

TEST_F(Yubin, RasterBarsAreThoseOfTheSvg) {
  for (const int height : {12, 30, 60}) {
    const auto rects = SvgElements(SvgOf(kText, height), "rect");
    const Image image = PictureOf(kText, height);
    EXPECT_EQ(image.height, height);
    EXPECT_EQ(image.width, 45 * height / 2 + 1);
    std::size_t dark = 0;
    for (std::size_t i = 1; i < rects.size(); ++i) {
      const int left = std::stoi(Attribute(rects[i], "x"));
      const int top = std::stoi(Attribute(rects[i], "y"));
      const int width = std::stoi(Attribute(rects[i], "width"));
      const int barHeight = std::stoi(Attribute(rects[i], "height"));
      for (int y = top; y < top + barHeight; ++y) {
        for (int x = left; x < left + width; ++x) {
          ASSERT_EQ(image.At(x, y), kBlackPixel) << i;
          ++dark;
        }
      }
    }
    EXPECT_EQ(static_cast<std::size_t>(std::count(image.pixels.begin(), image.pixels.end(), kBlackPixel)),
              dark);
  }
}

TEST_F(Yubin, EveryDrawFunctionGivesTheSameImageWhateverTheWidth) {
  const Image image = PictureOf(kText, 40);
  for (const int width : {-1, 0, 1, 100, 901, 2147483647}) {
    ASSERT_EQ(barcode_draw_yubin_with_width(object, kText, width, 40), 1) << width;
    EXPECT_EQ(object.Picture(), image) << width;
    ASSERT_EQ(barcode_draw_1d(object, kText, width, 40), 1) << width;
    EXPECT_EQ(object.Picture(), image) << width;
  }
  const std::string document = SvgOf(kText, 40);
  ASSERT_EQ(barcode_draw_yubin_with_width(object, kText, 7, 40), 1);
  EXPECT_EQ(barcode_get_svg(object), document);
}

TEST_F(Yubin, OneLineOnStandardOutputInBothOutputs) {
  for (const char* const format : {"png", "svg"}) {
    barcode_set_output_format(object, format);
    const auto captured = Capture([&] { EXPECT_EQ(barcode_draw_yubin(object, "154-0023 a1", 40), 1); });
    EXPECT_EQ(captured.out, "YubinCustomer: 154-0023 a1 (h=40, CD=8)\n");
    EXPECT_EQ(captured.err, "");
  }
}

TEST_F(Yubin, RefusalsAreSilent) {
  for (const char* const format : {"png", "svg", "PNG"}) {
    barcode_set_output_format(object, format);
    const auto captured = Capture([&] {
      EXPECT_EQ(barcode_draw_yubin(object, "", 40), 0);
      EXPECT_EQ(barcode_draw_yubin(object, kText, 0), 0);
      EXPECT_EQ(barcode_draw_yubin(object, kText, -1), 0);
      EXPECT_EQ(barcode_draw_yubin_with_width(object, kText, 100, -2147483647 - 1), 0);
      EXPECT_EQ(barcode_draw_yubin(object, nullptr, 40), 0);
    });
    EXPECT_EQ(captured.out + captured.err, "") << format;
  }
}

TEST_F(Yubin, UnknownFormatsDrawNothing) {
  barcode_set_output_format(object, "PNG");
  EXPECT_EQ(barcode_draw_yubin(object, kText, 40), 0);
}

TEST_F(Yubin, ACanvasThatCannotBeMadeFails) {
  const auto captured = Capture([&] { EXPECT_EQ(barcode_draw_yubin(object, kText, 2147483647), 0); });
  EXPECT_EQ(captured.out, "");
}

TEST_F(Yubin, HugeHeightsAreDefinedInSvg) {
  EXPECT_THAT(SvgElements(SvgOf(kText, 2147483647), "rect"), SizeIs(68));
}

TEST_F(Yubin, BlackAdjustmentWidensBarsWhiteHasNoEffect) {
  const std::string document = SvgOf(kText, 30);
  barcode_set_px_adjust_white(object, 4);
  EXPECT_EQ(SvgOf(kText, 30), document);
  barcode_set_px_adjust_black(object, 2);
  const auto rects = SvgElements(SvgOf(kText, 30), "rect");
  EXPECT_EQ(Attribute(rects[1], "width"), "7.00");
  EXPECT_EQ(Attribute(rects[2], "x"), "10.00");
}

TEST_F(Yubin, ColoursReachBarsAndBackground) {
  barcode_set_foreground_color(object, 200, 10, 20, 255);
  barcode_set_background_color(object, 240, 241, 242, 255);
  const Image image = PictureOf(kText, 30);
  EXPECT_EQ(image.At(0, 0), (Pixel{200, 10, 20, 255}));
  EXPECT_EQ(image.At(5, 0), (Pixel{240, 241, 242, 255}));
}

TEST(YubinDraws, OtherTypesAreNotServed) {
  const BarcodeObject object(BARCODE_JAN13);
  EXPECT_EQ(barcode_draw_yubin(object, "490123456789", 40), 0);
  EXPECT_EQ(barcode_draw_yubin_with_width(object, "490123456789", 100, 40), 0);
}

}  // namespace
}  // namespace barcode::test
