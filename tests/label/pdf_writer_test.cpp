#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "label/drawings.h"
#include "label/refusal.h"
#include "label/writers.h"
#include "label_proof/picture.h"
#include "linear/code39_encoder.h"

namespace barcode::label {
namespace {

using barcode::test::GreyImage;
using barcode::test::GreyOfPdfs;

Drawing OneBar() {
  Drawing drawing;
  drawing.width = 40;
  drawing.height = 20;
  drawing.dark = {{4, 1, 2, 17}};
  return drawing;
}

std::string MediaBox(const Drawing& drawing) {
  const std::string pdf = WritePdf(drawing);
  const std::size_t begin = pdf.find("/MediaBox [ ") + 12;
  return pdf.substr(begin, pdf.find(" ]", begin) - begin);
}

int PixelAt(const GreyImage& page, int x, int y) {
  return page.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(page.width) +
                     static_cast<std::size_t>(x)];
}

bool Has(const std::string& pdf, std::string_view text) {
  return pdf.find(text) != std::string::npos;
}

TEST(LabelPdf, PageHasTheExactSize) {
  Drawing drawing = OneBar();
  EXPECT_EQ(MediaBox(drawing), "0 0 30 15");  // a dot is 1/96 inch
  drawing.dpi = 300;
  EXPECT_EQ(MediaBox(drawing), "0 0 9.6 4.8");
  drawing.dpi = 203;
  EXPECT_EQ(MediaBox(drawing), "0 0 14.18719 7.0936");
}

TEST(LabelPdf, PagesOutOfTheRangeOfPdf) {
  Drawing drawing = OneBar();
  drawing.width = 19'200;
  EXPECT_EQ(MediaBox(drawing), "0 0 14400 15");
  drawing.width = 19'201;
  EXPECT_EQ(RefusalOf([&] { WritePdf(drawing); }),
            "too_large of format: A PDF page ends at 200 inches a side: choose png or svg, a higher dpi or a "
            "smaller label.");
  drawing = OneBar();
  drawing.dpi = 600;
  EXPECT_EQ(
      RefusalOf([&] { WritePdf(drawing); }),
      "too_small of format: A PDF page has at least 1/24 inch a side, here 25 dots: choose png or svg, a "
      "lower dpi or a larger label.");
  drawing.height = 25;
  EXPECT_EQ(MediaBox(drawing), "0 0 4.8 3");
}

TEST(LabelPdf, TheFileIsTheSameEveryTime) {
  Drawing drawing = OneBar();
  drawing.title = "A";
  const std::string pdf = WritePdf(drawing);
  EXPECT_EQ(pdf, WritePdf(drawing));
  EXPECT_FALSE(Has(pdf, "Date"));
  EXPECT_FALSE(Has(pdf, "/ID"));
  EXPECT_TRUE(Has(pdf, "/Producer (libbarcode)"));
  EXPECT_TRUE(pdf.starts_with("%PDF-1."));
  EXPECT_TRUE(Has(pdf, "%%EOF"));
}

TEST(LabelPdf, Title) {
  Drawing drawing = OneBar();
  EXPECT_FALSE(Has(WritePdf(drawing), "/Title"));
  drawing.title = "A(\\\u6F22";
  EXPECT_TRUE(Has(WritePdf(drawing), "/Title <FEFF00410028005C6F22>"));
  // Neither an end nor half a character; what UTF-16 has no single unit for.
  drawing.title = std::string("a\0b\x1D\xFF\U0001F600", 9);
  EXPECT_TRUE(Has(WritePdf(drawing), "/Title <FEFF0061FFFD0062FFFDFFFDD83DDE00>"));
}

TEST(LabelPdf, OnlyTranslucentColoursHaveAlpha) {
  Drawing drawing = OneBar();
  EXPECT_FALSE(Has(WritePdf(drawing), "/ca "));
  drawing.foreground.a = 51;
  EXPECT_TRUE(Has(WritePdf(drawing), "/ca .2 "));
  drawing.background.a = 153;
  EXPECT_TRUE(Has(WritePdf(drawing), "/ca .6 "));
  drawing.foreground.a = 255;
  drawing.background.a = 0;
  EXPECT_FALSE(Has(WritePdf(drawing), "/ca "));
}

TEST(LabelPdf, FarBarsStandOnTheirDots) {
  Drawing drawing;
  drawing.width = 70'000;
  drawing.height = 200;
  drawing.dpi = 4'800;
  for (int x = 1; x + 8 < drawing.width; x += 9'999) {
    drawing.dark.push_back({x, 3, 7, 150});
  }
  const GreyImage page = GreyOfPdfs({{WritePdf(drawing), drawing.width, drawing.height}}).front();
  ASSERT_EQ(page.width, drawing.width);
  for (const DotRect& rect : drawing.dark) {
    const auto at = [&](int x) { return PixelAt(page, x, 10); };
    EXPECT_EQ(at(rect.x - 1), 255) << rect.x;
    EXPECT_EQ(at(rect.x), 0) << rect.x;
    EXPECT_EQ(at(rect.x + rect.width - 1), 0) << rect.x;
    EXPECT_EQ(at(rect.x + rect.width), 255) << rect.x;
  }
}

TEST(LabelPdf, LongTextStandsInItsPlace) {
  // Its outline has large numbers.
  Drawing drawing;
  drawing.width = 3'000;
  drawing.height = 30;
  drawing.texts = {test::TextAt(std::string(900, '1'), 6, 2, 20)};
  const PlacedGlyph last = drawing.texts.front().glyphs.back();
  ASSERT_LT(last.x, drawing.width - 10);
  const GreyImage page = GreyOfPdfs({{WritePdf(drawing), drawing.width, drawing.height}}).front();
  ASSERT_EQ(page.width, drawing.width);
  int rightmost = 0;
  for (int y = 0; y < page.height; ++y) {
    for (int x = 0; x < page.width; ++x) {
      if (PixelAt(page, x, y) < 200) {
        rightmost = std::max(rightmost, x);
      }
    }
  }
  EXPECT_NEAR(rightmost, last.x + 2, 1.5);
}

}  // namespace
}  // namespace barcode::label
