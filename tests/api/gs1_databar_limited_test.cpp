#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "support/barcode_object.h"
#include "support/capture.h"
#include "support/size_report.h"
#include "support/svg.h"

namespace barcode::test {
namespace {

using testing::HasSubstr;

class GS1DataBarLimitedDraw : public ::testing::Test {
 protected:
  BarcodeObject code{BARCODE_GS1_DATABAR_LIMITED};

  std::vector<std::string> Bars(const char* text, int width, int height) {
    return BarElements(code.SvgOf(text, width, height));
  }
};

TEST_F(GS1DataBarLimitedDraw, BeginsWithASpace) {
  barcode_set_show_text(code, 0);
  ASSERT_EQ(barcode_draw_1d(code, "1501234567890", 160, 50), 1);
  std::vector<int> expected = {0};
  for (const char width : std::string("1132223212111123112111121122112121123213222211")) {
    expected.push_back(2 * (width - '0'));
  }
  expected.push_back(160 - 148);
  EXPECT_EQ(RunsOfRow(code.Picture(), 0), expected);
  EXPECT_EQ(RunsOfRow(code.Picture(), 49), expected);
}

TEST_F(GS1DataBarLimitedDraw, SizeReportAndNothingOnStandardError) {
  const auto captured = Capture([&] { EXPECT_EQ(barcode_draw_1d(code, "1501234567890", 300, 100), 1); });
  EXPECT_EQ(captured.out, SizeReport(300, 100, "296"));
  EXPECT_EQ(captured.err, "");
}

TEST_F(GS1DataBarLimitedDraw, ModulesAreAtLeastAPixel) {
  const auto captured = Capture([&] { EXPECT_EQ(barcode_draw_1d(code, "1501234567890", 40, 50), 1); });
  EXPECT_THAT(captured.out, HasSubstr("実際の描画サイズ: width=74\n"));
  EXPECT_EQ(Attribute(Bars("1501234567890", 200, 50).at(0), "x"), "2.00");
  barcode_set_fit_width(code, 1);
  EXPECT_EQ(Attribute(Bars("1501234567890", 185, 50).at(0), "x"), "2.50");
}

TEST_F(GS1DataBarLimitedDraw, AdjustmentsApplyToNominalWidths) {
  barcode_set_fit_width(code, 1);
  barcode_set_px_adjust_black(code, 1);
  barcode_set_px_adjust_white(code, -4);
  const auto bars = Bars("1501234567890", 37, 50);
  EXPECT_EQ(Attribute(bars.at(0), "x"), "1.00");
  EXPECT_EQ(Attribute(bars.at(0), "width"), "1.50");  // half a pixel and one
}

TEST_F(GS1DataBarLimitedDraw, TextRunsAcrossThePaintedWidth) {
  barcode_set_text_even_spacing(code, 0);
  const auto texts = SvgElements(code.SvgOf("150123456789", 160, 100), "text");
  ASSERT_EQ(texts.size(), 1U);
  EXPECT_THAT(texts[0], HasSubstr(">(01)01501234567899<"));
  EXPECT_EQ(Attribute(texts[0], "x"), "74.00");  // half of 148
  EXPECT_EQ(Attribute(Bars("1501234567890", 160, 100).at(0), "height"), "75.00");
}

TEST_F(GS1DataBarLimitedDraw, RefusalsAreTaggedLines) {
  for (const char* const format : {"png", "svg"}) {
    barcode_set_output_format(code, format);
    const auto refused = [&](const char* text) {
      return Capture([&] { EXPECT_EQ(barcode_draw_1d(code, text, 300, 100), 0); }).err;
    };
    EXPECT_EQ(refused("1234567"), "[GS1 DataBar Limited] Input must be 8-13 digits\n");
    EXPECT_EQ(refused("123456A"), "[GS1 DataBar Limited] GS1 DataBar Limited requires numeric digits only\n");
    EXPECT_EQ(refused("2000000000000"),
              "[GS1 DataBar Limited] GS1 DataBar Limited requires leading digit 0 or 1 after padding\n");
  }
}

TEST_F(GS1DataBarLimitedDraw, AnUnknownFormatFailsWithoutAMessage) {
  barcode_set_output_format(code, "gif");
  EXPECT_EQ(Capture([&] { EXPECT_EQ(barcode_draw_1d(code, "A", 300, 100), 0); }).err, "");
}

}  // namespace
}  // namespace barcode::test
