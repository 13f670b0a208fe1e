#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "support/barcode_object.h"
#include "support/capture.h"
#include "support/size_report.h"
#include "support/svg.h"

namespace barcode::test {
namespace {

using testing::HasSubstr;

// Eight pairs.
constexpr const char* kLong = "011234567890123110UNIVERSITY-OF-DEUSTO";
// Three pairs: 151 modules in one row.
constexpr const char* kWeight = "01900123456789083103001750";

class GS1DataBarExpandedDraw : public ::testing::Test {
 protected:
  BarcodeObject code{BARCODE_GS1_DATABAR_EXPANDED};

  std::vector<std::string> Bars(const char* text, int width, int height) {
    return BarElements(code.SvgOf(text, width, height));
  }

  // Rows of bars, separators included.
  std::size_t Rows(const char* text) {
    std::set<std::string> tops;
    for (const auto& bar : Bars(text, 1200, 600)) {
      tops.insert(Attribute(bar, "y"));
    }
    return tops.size();
  }
};

TEST_F(GS1DataBarExpandedDraw, OneRowIsTheDefault) {
  EXPECT_EQ(Rows(kLong), 1U);
  barcode_set_symbol_type_exp(code, "STACKED");
  EXPECT_EQ(Rows(kLong), 13U);
  for (const char* const unknown : {"stacked", "unstacked", "", "STACKED_OMNIDIRECTIONAL"}) {
    barcode_set_symbol_type_exp(code, unknown);
    EXPECT_EQ(Rows(kLong), 13U);
  }
  barcode_set_symbol_type_exp(code, nullptr);
  EXPECT_EQ(Rows(kLong), 13U);
  barcode_set_symbol_type_exp(code, "UNSTACKED");
  EXPECT_EQ(Rows(kLong), 1U);
  barcode_set_symbol_type_exp(code, "stacked");
  EXPECT_EQ(Rows(kLong), 1U);
}

TEST_F(GS1DataBarExpandedDraw, PairsPerRow) {
  barcode_set_symbol_type_exp(code, "STACKED");
  const std::vector<std::pair<int, std::size_t>> rows = {{0, 4}, {-1, 4}, {11, 4}, {2, 4}, {1, 8}, {3, 3},
                                                         {4, 2}, {6, 2},  {7, 2},  {8, 1}, {10, 1}};
  for (const auto& [pairs, symbolRows] : rows) {
    barcode_set_no_of_columns(code, pairs);
    EXPECT_EQ(Rows(kLong), 4 * symbolRows - 3) << pairs;
  }
}

TEST_F(GS1DataBarExpandedDraw, DrawStackedSelectsTheStackedForm) {
  EXPECT_EQ(barcode_draw_stacked(code, nullptr, 400, 300), 0);
  EXPECT_EQ(Rows(kLong), 1U);
  EXPECT_EQ(barcode_draw_stacked(code, kLong, 400, 300), 1);
  EXPECT_EQ(Rows(kLong), 13U);
  barcode_set_symbol_type_exp(code, "UNSTACKED");
  EXPECT_EQ(Rows(kLong), 1U);
  const BarcodeObject limited(BARCODE_GS1_DATABAR_LIMITED);
  EXPECT_EQ(barcode_draw_stacked(limited, "0012345678901", 400, 300), 0);
}

TEST_F(GS1DataBarExpandedDraw, MarkersChangeTheTextOnly) {
  barcode_set_show_text(code, 0);
  EXPECT_EQ(code.SvgOf("{AI}0190012345678908{AI}3103001750", 500, 100), code.SvgOf(kWeight, 500, 100));
  barcode_set_show_text(code, 1);
  barcode_set_text_even_spacing(code, 0);
  EXPECT_THAT(code.SvgOf(kWeight, 500, 100), HasSubstr(">(01)90012345678908(3103)001750<"));
  EXPECT_THAT(code.SvgOf("{AI}0190012345678908{AI}3103001750", 500, 100),
              HasSubstr(">(01)90012345678908(3103)001750<"));
}

TEST_F(GS1DataBarExpandedDraw, OneRowFillsTheWidthWhateverFitWidthSays) {
  for (const int fit : {0, 1}) {
    barcode_set_fit_width(code, fit);
    const auto bars = Bars(kWeight, 500, 100);
    EXPECT_EQ(Attribute(bars.at(0), "x"), "3.31");  // 500 / 151
    EXPECT_EQ(Attribute(bars.at(0), "height"), "75.00");
  }
}

TEST_F(GS1DataBarExpandedDraw, OneRowElementsAreAtLeastAPixel) {
  const auto bars = Bars(kWeight, 75, 100);  // half a pixel a module
  EXPECT_EQ(Attribute(bars.at(0), "x"), "1.00");
  EXPECT_EQ(Attribute(bars.at(0), "width"), "1.00");
  barcode_set_px_adjust_black(code, 2);
  EXPECT_EQ(Attribute(Bars(kWeight, 75, 100).at(0), "width"), "2.50");
}

TEST_F(GS1DataBarExpandedDraw, OneRowTextRunsAcrossTheRequestedWidth) {
  barcode_set_text_even_spacing(code, 0);
  barcode_set_px_adjust_white(code, 5);
  EXPECT_EQ(Attribute(SvgElements(code.SvgOf(kWeight, 500, 100), "text").at(0), "x"), "250.00");
}

TEST_F(GS1DataBarExpandedDraw, StackedModulesAreWholePixels) {
  barcode_set_symbol_type_exp(code, "STACKED");
  EXPECT_EQ(Attribute(Bars(kLong, 350, 300).at(0), "x"), "3.00");  // 102 modules
  EXPECT_EQ(Attribute(Bars(kLong, 50, 300).at(0), "x"), "1.00");
  barcode_set_fit_width(code, 1);
  EXPECT_EQ(Attribute(Bars(kLong, 357, 300).at(0), "x"), "3.50");
}

TEST_F(GS1DataBarExpandedDraw, StackedRowHeights) {
  barcode_set_symbol_type_exp(code, "STACKED");
  std::vector<std::pair<std::string, std::string>> rows;
  for (const auto& bar : Bars(kWeight, 306, 200)) {
    const std::pair row(Attribute(bar, "y"), Attribute(bar, "height"));
    if (rows.empty() || rows.back() != row) {
      rows.push_back(row);
    }
  }
  // 200 - 40 - 6 less three separators of three pixels is 145.
  EXPECT_THAT(rows, testing::ElementsAre(testing::Pair("0.00", "72.50"), testing::Pair("72.50", "3.00"),
                                         testing::Pair("75.50", "3.00"), testing::Pair("78.50", "3.00"),
                                         testing::Pair("81.50", "72.50")));
}

TEST_F(GS1DataBarExpandedDraw, StackedRowsAreAtLeastAPixel) {
  barcode_set_symbol_type_exp(code, "STACKED");
  EXPECT_EQ(Attribute(Bars(kLong, 306, 20).at(0), "height"), "1.00");
}

TEST_F(GS1DataBarExpandedDraw, StackedTextRunsAcrossTheModules) {
  barcode_set_symbol_type_exp(code, "STACKED");
  barcode_set_text_even_spacing(code, 0);
  EXPECT_EQ(Attribute(SvgElements(code.SvgOf(kLong, 350, 300), "text").at(0), "x"), "153.00");  // 306 / 2
}

TEST_F(GS1DataBarExpandedDraw, RasterRowsFollowTheModules) {
  barcode_set_symbol_type_exp(code, "STACKED");
  barcode_set_show_text(code, 0);
  ASSERT_EQ(barcode_draw_1d(code, "10123", 102, 60), 1);
  const Image image = code.Picture();
  const std::string modules =
      "01010000001000010110111111110000101000100000001011010001111101011100101111000000001000001100011010010"
      "1";
  std::string drawn;
  for (int x = 0; x < image.width; ++x) {
    drawn += image.At(x, 0) == kBlackPixel ? '1' : '0';
  }
  EXPECT_EQ(drawn, modules);
}

TEST_F(GS1DataBarExpandedDraw, SizeReport) {
  const auto captured = Capture([&] { EXPECT_EQ(barcode_draw_stacked(code, kLong, 350, 300), 1); });
  EXPECT_EQ(captured.out, SizeReport(350, 300, "306"));
  EXPECT_EQ(captured.err, "");
}

TEST_F(GS1DataBarExpandedDraw, Refusals) {
  for (const char* const form : {"UNSTACKED", "STACKED"}) {
    for (const char* const format : {"png", "svg"}) {
      barcode_set_symbol_type_exp(code, form);
      barcode_set_output_format(code, format);
      const auto refused = [&](const std::string& text) {
        return Capture([&] { EXPECT_EQ(barcode_draw_1d(code, text.c_str(), 300, 100), 0); }).err;
      };
      EXPECT_EQ(refused("10#"), "[GS1 DataBar Expanded] Invalid characters in input data\n");
      EXPECT_EQ(refused(std::string(71, '9')), "[GS1 DataBar Expanded] Input too long\n");
      EXPECT_EQ(refused(""), "");
      EXPECT_EQ(refused("{AI}"), "");
    }
  }
}

TEST_F(GS1DataBarExpandedDraw, AnUnknownFormatFailsWithoutAMessage) {
  barcode_set_output_format(code, "gif");
  EXPECT_EQ(Capture([&] { EXPECT_EQ(barcode_draw_1d(code, "#", 300, 100), 0); }).err, "");
}

}  // namespace
}  // namespace barcode::test
