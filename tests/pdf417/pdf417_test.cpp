#include "pdf417/pdf417.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/capture.h"

namespace barcode {
namespace {

using ::testing::StartsWith;

TEST(PDF417, OptionsReachTheEncoder) {
  PDF417 symbol("svg");
  symbol.SetCodeColumns(4);
  symbol.SetCodeRows(5);
  symbol.SetErrorLevel(6);
  symbol.SetAspectRatio(7.5);
  symbol.SetYHeight(8);
  symbol.SetStringEncoding("shift_jis");
  const test::Captured captured =
      test::CaptureInternal([&] { EXPECT_TRUE(symbol.DrawMatrix("A", 0, 0, 100, 50)); });
  EXPECT_THAT(captured.out,
              StartsWith("C++ props: Encoding=shift_jis, SizeKind=AUTO, CodeColumns=4, CodeRows=5, "
                         "UseAutoErrorLevel=True, ErrorLevel(now)=6, AspectRatio=7.5, YHeight=8\n"));
}

TEST(PDF417, RefusedTextIsReportedAndLeavesNoDocument) {
  PDF417 symbol("svg");
  const test::Captured captured =
      test::CaptureInternal([&] { EXPECT_FALSE(symbol.DrawMatrix("", 0, 0, 100, 50)); });
  EXPECT_EQ(captured.out,
            "C++ props: Encoding=utf-8, SizeKind=AUTO, CodeColumns=0, CodeRows=0, UseAutoErrorLevel=True, "
            "ErrorLevel(now)=2, AspectRatio=0.5, YHeight=3\n"
            "Text cannot be null.\n");
  EXPECT_EQ(captured.err, "[PDF417] Text cannot be null.\n");
  EXPECT_EQ(symbol.GetSvgDocument(), "");
}

}  // namespace
}  // namespace barcode
