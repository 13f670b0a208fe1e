#include "qr/qr.h"

#include <gtest/gtest.h>

#include "support/capture.h"

namespace barcode {
namespace {

using test::CaptureInternal;

std::string OutputOf(const std::function<void(QR&)>& call) {
  QR symbol("svg");
  return CaptureInternal([&] { call(symbol); }).out;
}

std::string SvgInMode(std::string_view mode) {
  QR symbol("svg");
  symbol.SetEncodeMode(mode);
  EXPECT_TRUE(symbol.Draw("0123456789", 0, 0, 100, 100));
  return symbol.GetSvg();
}

TEST(Qr, OnlyTheKeywordOfNumericModeMakesADifference) {
  const std::string bytes = SvgInMode("BYTE");
  EXPECT_NE(SvgInMode("NUMERIC"), bytes);
  for (const char* const mode : {"AUTO", "ALPHANUMERIC", "KANJI", "numeric", "N", ""}) {
    EXPECT_EQ(SvgInMode(mode), bytes) << mode;
  }
}

TEST(Qr, AnyOtherEncodeModeReplacesTheOneBeforeWithoutAWord) {
  QR symbol("svg");
  symbol.SetEncodeMode("NUMERIC");
  EXPECT_EQ(CaptureInternal([&] { symbol.SetEncodeMode("x"); }).out, "");
  EXPECT_TRUE(symbol.Draw("0123456789", 0, 0, 100, 100));
  EXPECT_EQ(symbol.GetSvg(), SvgInMode("BYTE"));
}

TEST(Qr, AnyOtherLevelIsM) {
  const auto svgAtLevel = [](std::string_view level) {
    QR symbol("svg");
    symbol.SetErrorCorrectionLevel("H");
    symbol.SetErrorCorrectionLevel(level);
    EXPECT_TRUE(symbol.Draw("level", 0, 0, 100, 100));
    return symbol.GetSvg();
  };
  const std::string m = svgAtLevel("M");
  for (const char* const level : {"", "l", "h", "LL", "X"}) {
    EXPECT_EQ(svgAtLevel(level), m) << level;
  }
  for (const char* const level : {"L", "Q", "H"}) {
    EXPECT_NE(svgAtLevel(level), m) << level;
  }
}

TEST(Qr, AVersionAboveTheRangeOfIntIsReportedAsANegativeNumber) {
  EXPECT_EQ(OutputOf([](QR& symbol) { symbol.SetVersion(0x80000000); }),
            "Warning: Invalid QR Code version (-2147483648). Setting to auto.\n");
}

TEST(Qr, DrawMatrixTakesTheBytesAsTheyAre) {
  QR symbol("svg");
  const std::string sjis = "\x93\xFA\x96\x7B";
  EXPECT_TRUE(symbol.DrawMatrix(sjis, 0, 0, 100, 100));
  const std::string raw = symbol.GetSvg();
  EXPECT_TRUE(symbol.Draw(sjis, 0, 0, 100, 100));
  EXPECT_NE(symbol.GetSvg(), raw);
  symbol.SetStringEncoding("shift-jis");
  EXPECT_TRUE(symbol.Draw(sjis, 0, 0, 100, 100));
  EXPECT_EQ(symbol.GetSvg(), raw);
}

}  // namespace
}  // namespace barcode
