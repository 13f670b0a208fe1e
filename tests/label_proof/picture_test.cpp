#include "label_proof/picture.h"

#include <gtest/gtest.h>

namespace barcode::test {
namespace {

GreyImage Corner() {
  return {3, 2, {0, 255, 255, 255, 255, 255}};
}

TEST(LabelProofPicture, QuarterTurnsAreClockwise) {
  EXPECT_EQ(Turned(Corner(), 0).pixels, Corner().pixels);
  const GreyImage quarter = Turned(Corner(), 1);
  EXPECT_EQ(quarter.width, 2);
  EXPECT_EQ(quarter.height, 3);
  EXPECT_EQ(quarter.pixels, (std::vector<std::uint8_t>{255, 0, 255, 255, 255, 255}));
  EXPECT_EQ(Turned(Corner(), 2).pixels, (std::vector<std::uint8_t>{255, 255, 255, 255, 255, 0}));
  EXPECT_EQ(Turned(Corner(), 3).pixels, (std::vector<std::uint8_t>{255, 255, 255, 255, 0, 255}));
}

TEST(LabelProofPicture, EnlargedDots) {
  const GreyImage large = Enlarged({2, 1, {1, 2}}, 2);
  EXPECT_EQ(large.width, 4);
  EXPECT_EQ(large.height, 2);
  EXPECT_EQ(large.pixels, (std::vector<std::uint8_t>{1, 1, 2, 2, 1, 1, 2, 2}));
}

TEST(LabelProofPicture, DarkIsWhatIsDarkInThePicture) {
  const DarkPixels pixels(GreyImage{5, 1, {200, 90, 90, 200, 100}});
  EXPECT_EQ(pixels.Runs(0), (std::vector<int>{1, 2, 1, 1}));
  EXPECT_TRUE(pixels.AnyIn(4, 0, 5, 1));
  EXPECT_FALSE(pixels.AnyIn(3, 0, 4, 1));
}

constexpr const char* kSvg =
    R"(<svg xmlns="http://www.w3.org/2000/svg" version="1.1" width="4mm" height="2mm" viewBox="0 0 4 2">)"
    R"(<path fill="#000" d="M1 0h1v2h-1z" shape-rendering="crispEdges"/></svg>)";

TEST(LabelProofPicture, SvgAtOnePixelAUnit) {
  const GreyImage image = GreyOfSvg(kSvg, 4, 2);
  EXPECT_EQ(image.width, 4);
  EXPECT_EQ(image.pixels, (std::vector<std::uint8_t>{255, 0, 255, 255, 255, 0, 255, 255}));
  EXPECT_TRUE(GreyOfSvg("<svg", 4, 2).pixels.empty());
}

TEST(LabelProofPicture, SvgWithWhatStandsOutside) {
  std::string svg = kSvg;
  svg.replace(svg.find("M1 0"), 4, "M4 1");
  EXPECT_FALSE(DarkPixels(GreyOfSvg(svg, 4, 2)).AnyIn(0, 0, 4, 2));
  const GreyImage image = GreyOfSvg(svg, 4, 2, 3);
  EXPECT_EQ(image.width, 10);
  EXPECT_TRUE(DarkPixels(image).AnyIn(7, 4, 8, 6));
}

// A page of 4 x 2 pixels of 1/96 inch with one of them filled.
std::string SmallPdf() {
  const std::string content = "0 0 0 rg 0.75 0.75 0.75 0.75 re f";
  return "%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n"
         "2 0 obj<</Type/Pages/Kids[3 0 R]/Count 1>>endobj\n"
         "3 0 obj<</Type/Page/Parent 2 0 R/MediaBox [0 0 3 1.5]/Contents 4 0 R/Resources<<>>>>endobj\n"
         "4 0 obj<</Length " +
         std::to_string(content.size()) + ">>stream\n" + content +
         "\nendstream endobj\ntrailer<</Root 1 0 R/Size 5>>\n%%EOF\n";
}

TEST(LabelProofPicture, PdfAtItsPixels) {
  const std::vector<GreyImage> images = GreyOfPdfs({{SmallPdf(), 4, 2}, {"no PDF", 4, 2}});
  ASSERT_EQ(images.size(), 2U);
  EXPECT_EQ(images[0].width, 4);
  EXPECT_EQ(images[0].height, 2);
  const DarkPixels pixels(images[0]);
  EXPECT_EQ(pixels.Runs(0), (std::vector<int>{1, 1, 2}));
  EXPECT_FALSE(pixels.AnyIn(0, 1, 4, 2));
  EXPECT_TRUE(images[1].pixels.empty());
}

TEST(LabelProofPicture, SizeOfAPage) {
  const Millimetres page = PageOfPdf(SmallPdf());
  EXPECT_NEAR(page.width, 3 * 25.4 / 72, 1e-9);
  EXPECT_NEAR(page.height, 1.5 * 25.4 / 72, 1e-9);
}

}  // namespace
}  // namespace barcode::test
