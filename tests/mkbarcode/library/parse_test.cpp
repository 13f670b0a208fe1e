#include "mkbarcode/library/parse.h"

#include <gtest/gtest.h>

namespace barcode::tool {
namespace {

TEST(ParseSize, TakesABoxOrOneNumber) {
  EXPECT_EQ(ParseSize("300x100"), (Size{300, 100, false}));
  EXPECT_EQ(ParseSize("1X2147483647"), (Size{1, 2147483647, false}));
  EXPECT_EQ(ParseSize("200"), (Size{200, 200, true}));
}

TEST(ParseSize, RefusesEverythingElse) {
  for (const std::string_view text :
       {"", "x", "300x", "x100", "0", "0x100", "300x0", "-5", "300x-100", "+300x100", "300 x 100",
        "300x100x50", "300x100 ", "3.5x2", "2147483648", "abc", "300*100"}) {
    EXPECT_EQ(ParseSize(text), std::nullopt) << text;
  }
}

TEST(ParseColor, TakesHexadecimalDigits) {
  EXPECT_EQ(ParseColor("#12ab9F"), (Color{0x12, 0xAB, 0x9F, 255}));
  EXPECT_EQ(ParseColor("#00000000"), (Color{0, 0, 0, 0}));
  EXPECT_EQ(ParseColor("#ffffff80"), (Color{255, 255, 255, 128}));
}

TEST(ParseColor, TakesDecimalChannels) {
  EXPECT_EQ(ParseColor("0,128,255"), (Color{0, 128, 255, 255}));
  EXPECT_EQ(ParseColor("1,2,3,4"), (Color{1, 2, 3, 4}));
}

TEST(ParseColor, RefusesEverythingElse) {
  for (const std::string_view text :
       {"", "#", "#12345", "#1234567", "#123456789", "#12345g", "#-12345", "#+1+1+1", "123456", "1,2",
        "1,2,3,4,5", "1,2,256", "1,2,-1", "1,2,3,", ",1,2,3", "1, 2, 3", "red"}) {
    EXPECT_EQ(ParseColor(text), std::nullopt) << text;
  }
}

TEST(ParseInteger, TakesWholeNumbersOfTheirRange) {
  EXPECT_EQ(ParseInteger("-2147483648"), -2147483647 - 1);
  EXPECT_EQ(ParseInteger("0"), 0);
  for (const std::string_view text : {"", "2147483648", "1.0", "1 ", " 1", "0x10", "+1", "one"}) {
    EXPECT_EQ(ParseInteger(text), std::nullopt) << text;
  }
}

TEST(ParseReal, TakesFiniteNumbers) {
  EXPECT_EQ(ParseReal("0.5"), 0.5);
  EXPECT_EQ(ParseReal("2"), 2.0);
  EXPECT_EQ(ParseReal("-1e2"), -100.0);
  for (const std::string_view text : {"", "0,5", "nan", "inf", "-inf", "1e999", "1.0x", " 1"}) {
    EXPECT_EQ(ParseReal(text), std::nullopt) << text;
  }
}

TEST(FormatOfFile, FollowsTheSuffix) {
  EXPECT_EQ(FormatOfFile("out.png"), "png");
  EXPECT_EQ(FormatOfFile("dir.svg/out.JPG"), "jpg");
  EXPECT_EQ(FormatOfFile("a.b.jpeg"), "jpeg");
  EXPECT_EQ(FormatOfFile(".svg"), "svg");
  for (const std::string_view file :
       {"", "-", "png", "out", "out.gif", "out.png.gz", "out.", "dir.png/out"}) {
    EXPECT_EQ(FormatOfFile(file), std::nullopt) << file;
  }
}

}  // namespace
}  // namespace barcode::tool
