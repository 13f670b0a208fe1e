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

TEST(Qr, EncodeModeIsALetterInEitherCase) {
  EXPECT_EQ(OutputOf([](QR& symbol) {
              for (const char* const mode : {"N", "A", "B", "K", "n", "a", "b", "k"}) {
                symbol.SetEncodeMode(mode);
              }
            }),
            "");
  EXPECT_EQ(SvgInMode("n"), SvgInMode("N"));
  EXPECT_NE(SvgInMode("N"), SvgInMode("B"));
  EXPECT_EQ(SvgInMode("A"), SvgInMode("B"));
  EXPECT_EQ(SvgInMode("K"), SvgInMode("B"));
}

TEST(Qr, AnyOtherEncodeModeIsReportedAsGivenAndEncodesBytes) {
  EXPECT_EQ(OutputOf([](QR& symbol) { symbol.SetEncodeMode("num"); }),
            "Warning: Invalid QR Code encode mode ('num'). Setting to Binary ('B').\n");
  EXPECT_EQ(OutputOf([](QR& symbol) { symbol.SetEncodeMode(""); }),
            "Warning: Invalid QR Code encode mode (''). Setting to Binary ('B').\n");
  CaptureInternal([] {
    QR symbol("svg");
    symbol.SetEncodeMode("N");
    symbol.SetEncodeMode("x");
    EXPECT_TRUE(symbol.Draw("0123456789", 0, 0, 100, 100));
    EXPECT_EQ(symbol.GetSvg(), SvgInMode("B"));
  });
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
