#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "support/barcode_object.h"
#include "support/capture.h"
#include "support/size_report.h"
#include "support/svg.h"

namespace barcode::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class GS1DataBar14Draw : public ::testing::Test {
 protected:
  BarcodeObject code{BARCODE_GS1_DATABAR_14};

  int Draw(const char* text, int width, int height) { return barcode_draw_1d(code, text, width, height); }

  std::vector<std::string> Bars(const char* text, int width, int height) {
    return BarElements(code.SvgOf(text, width, height));
  }
};

// Rows of a picture that look alike, from the top: their heights in pixels.
std::vector<int> RowBands(const Image& image) {
  std::vector<int> bands;
  for (int y = 0; y < image.height; ++y) {
    if (y == 0 || RunsOfRow(image, y) != RunsOfRow(image, y - 1)) {
      bands.push_back(0);
    }
    ++bands.back();
  }
  return bands;
}

TEST_F(GS1DataBar14Draw, Keywords) {
  EXPECT_STREQ(barcode_get_symbol_type_14(code), "OMNIDIRECTIONAL");
  for (const char* const keyword : {"STACKED", "STACKED_OMNIDIRECTIONAL", "OMNIDIRECTIONAL"}) {
    barcode_set_symbol_type_14(code, keyword);
    EXPECT_STREQ(barcode_get_symbol_type_14(code), keyword);
  }
  barcode_set_symbol_type_14(code, "STACKED");
  for (const char* const unknown : {"stacked", "", "STACKED ", "UNSTACKED"}) {
    barcode_set_symbol_type_14(code, unknown);
    EXPECT_STREQ(barcode_get_symbol_type_14(code), "STACKED") << unknown;
  }
  barcode_set_symbol_type_14(code, nullptr);
  EXPECT_STREQ(barcode_get_symbol_type_14(code), "STACKED");
}

TEST_F(GS1DataBar14Draw, OtherTypesHaveNoSuchOption) {
  const BarcodeObject limited(BARCODE_GS1_DATABAR_LIMITED);
  barcode_set_symbol_type_14(limited, "STACKED");
  EXPECT_STREQ(barcode_get_symbol_type_14(limited), "");
  EXPECT_EQ(barcode_encode_14(limited, "0012345678901"), 0);
}

TEST_F(GS1DataBar14Draw, OneRowBeginsWithABar) {
  barcode_set_show_text(code, 0);
  ASSERT_EQ(Draw("2001234567890", 250, 60), 1);
  const Image image = code.Picture();
  std::vector<int> expected;
  for (const char width : std::string("1111331151274111221215125121112112833212123211")) {
    expected.push_back(2 * (width - '0'));
  }
  expected.back() += 250 - 192;  // the last element is a space
  EXPECT_EQ(RunsOfRow(image, 0), expected);
  EXPECT_EQ(RowBands(image), std::vector<int>{60});
}

TEST_F(GS1DataBar14Draw, OneRowTextRunsAcrossThePaintedWidth) {
  barcode_set_text_even_spacing(code, 0);
  const auto texts = SvgElements(code.SvgOf("200123456789", 300, 100), "text");
  ASSERT_EQ(texts.size(), 1U);
  EXPECT_THAT(texts[0], HasSubstr(">(01)02001234567893<"));
  EXPECT_EQ(Attribute(texts[0], "x"), "144.00");  // half of 96 * 3
  EXPECT_EQ(Attribute(Bars("1", 300, 100).at(0), "height"), "75.00");
}

TEST_F(GS1DataBar14Draw, OneRowModuleWidth) {
  barcode_set_show_text(code, 0);
  EXPECT_EQ(Attribute(Bars("2001234567890", 50, 60).at(1), "x"), "2.00");  // at least a pixel
  barcode_set_fit_width(code, 1);
  EXPECT_EQ(Attribute(Bars("2001234567890", 120, 60).at(1), "x"), "2.50");
}

TEST_F(GS1DataBar14Draw, DiagnosticsOfOneRow) {
  const auto captured = Capture([&] { EXPECT_EQ(Draw("2001234567890", 300, 100), 1); });
  EXPECT_EQ(captured.err,
            "DEBUG DataBar14: m_rowCount=1\n"
            "DEBUG DataBar14: m_symbolType=0\n"
            "DEBUG DataBar14: row 0: height=-1, pattern[0:20]=11113311512741112212, pattern.length=46\n");
  EXPECT_EQ(captured.out, SizeReport(300, 100, "288"));
}

TEST_F(GS1DataBar14Draw, DiagnosticsOfAStackedDraw) {
  barcode_set_symbol_type_14(code, "STACKED");
  barcode_set_text_font_scale(code, 0.85);
  barcode_set_text_gap(code, 1.1);
  const auto captured = Capture([&] { EXPECT_EQ(Draw("2001234567890", 210, 130), 1); });
  EXPECT_EQ(captured.err,
            "DEBUG encode: row 0 bin[0:20]=01010001110100000100\n"
            "DEBUG encode: row 1 bin[0:20]=00001110101011011010\n"
            "DEBUG encode: row 2 bin[0:20]=10110000010010100101\n"
            "DEBUG DataBar14: m_rowCount=3\n"
            "DEBUG DataBar14: m_symbolType=1\n"
            "DEBUG DataBar14: row 0: height=5, pattern[0:20]=01111331151274111221, pattern.length=26\n"
            "DEBUG DataBar14: row 1: height=1, pattern[0:20]=04311111212112111111, pattern.length=36\n"
            "DEBUG DataBar14: row 2: height=7, pattern[0:20]=11251211121128332121, pattern.length=25\n"
            "DEBUG Draw: availableHeight=104, height=130\n"
            "DEBUG Draw: textHeight=22, verticalOffset=4\n"
            "DEBUG Draw: row 0: thisRowHeight=40, currentY=0\n"
            "DEBUG Draw: row 1: thisRowHeight=8, currentY=40\n"
            "DEBUG Draw: row 2: thisRowHeight=56, currentY=48\n"
            "DEBUG Draw: final currentY=104, barcode actual height=104\n"
            "DEBUG Draw: About to call RenderText with x=0, y=0, width=210, height=130\n");
  EXPECT_THAT(captured.out, HasSubstr("実際の描画サイズ: width=200\n"));
}

TEST_F(GS1DataBar14Draw, SvgDrawsWriteTheEncodersDiagnosticsOnly) {
  barcode_set_symbol_type_14(code, "STACKED");
  barcode_set_output_format(code, "SVG");
  const auto captured = Capture([&] { EXPECT_EQ(Draw("2001234567890", 210, 130), 1); });
  EXPECT_THAT(captured.err, StartsWith("DEBUG encode: row 0 "));
  EXPECT_THAT(captured.err, testing::Not(HasSubstr("DEBUG Draw: ")));
  EXPECT_EQ(captured.out, "");
}

TEST_F(GS1DataBar14Draw, StackedRowsShareTheHeightFiveOneSeven) {
  barcode_set_symbol_type_14(code, "STACKED");
  barcode_set_text_font_scale(code, 0.85);
  barcode_set_text_gap(code, 1.1);
  barcode_set_show_text(code, 0);
  ASSERT_EQ(Draw("2001234567890", 210, 130), 1);
  const Image image = code.Picture();
  EXPECT_EQ(RowBands(image), (std::vector<int>{40, 8, 56, 26}));
  // Four pixels a module; the top row begins with a space, the bottom row with a bar.
  EXPECT_EQ(RunsOfRow(image, 0)[0], 0);
  EXPECT_EQ(RunsOfRow(image, 0)[1], 4);
  EXPECT_EQ(RunsOfRow(image, 50)[0], 4);
}

TEST_F(GS1DataBar14Draw, StackedOmnidirectionalSeparatorsAreOneModuleHigh) {
  barcode_set_symbol_type_14(code, "STACKED_OMNIDIRECTIONAL");
  barcode_set_show_text(code, 0);
  ASSERT_EQ(Draw("2001234567890", 100, 160), 1);
  // 160 - 32 - 4 less three separators of two pixels is 118.
  EXPECT_EQ(RowBands(code.Picture()), (std::vector<int>{59, 2, 2, 2, 59, 36}));
}

TEST_F(GS1DataBar14Draw, StackedModuleWidth) {
  barcode_set_symbol_type_14(code, "STACKED");
  EXPECT_EQ(Attribute(Bars("2001234567890", 125, 100).at(0), "x"), "2.00");
  EXPECT_EQ(Attribute(Bars("2001234567890", 30, 100).at(0), "x"), "1.00");
  barcode_set_fit_width(code, 1);
  EXPECT_EQ(Attribute(Bars("2001234567890", 125, 100).at(0), "x"), "2.50");
}

TEST_F(GS1DataBar14Draw, StackedElementsAreAdjustedWithAPixelLeft) {
  barcode_set_symbol_type_14(code, "STACKED");
  barcode_set_px_adjust_white(code, 3);
  barcode_set_px_adjust_black(code, -9);
  const auto bars = Bars("2001234567890", 100, 100);
  EXPECT_EQ(Attribute(bars.at(0), "x"), "5.00");      // a space of one module
  EXPECT_EQ(Attribute(bars.at(0), "width"), "1.00");  // a bar of one module
  EXPECT_EQ(Attribute(bars.at(1), "x"), "11.00");
}

TEST_F(GS1DataBar14Draw, StackedTextRunsAcrossTheRequestedWidth) {
  barcode_set_symbol_type_14(code, "STACKED");
  barcode_set_text_even_spacing(code, 0);
  const auto texts = SvgElements(code.SvgOf("2001234567890", 240, 130), "text");
  ASSERT_EQ(texts.size(), 1U);
  EXPECT_EQ(Attribute(texts[0], "x"), "120.00");
  EXPECT_EQ(Attribute(texts[0], "y"), "104.00");
  EXPECT_THAT(texts[0], HasSubstr(">(01)20012345678909<"));
}

TEST_F(GS1DataBar14Draw, RowsWithoutHeightAreNotDrawn) {
  barcode_set_symbol_type_14(code, "STACKED_OMNIDIRECTIONAL");
  // Ten pixels of room and separators of eight: nothing is left for the data rows.
  for (const auto& bar : Bars("2001234567890", 400, 12)) {
    EXPECT_EQ(Attribute(bar, "height"), "8.00");
  }
}

TEST_F(GS1DataBar14Draw, RasterAndSvgAgree) {
  barcode_set_symbol_type_14(code, "STACKED_OMNIDIRECTIONAL");
  barcode_set_show_text(code, 0);
  const auto bars = Bars("0000000000000", 100, 160);
  barcode_set_output_format(code, "png");
  ASSERT_EQ(Draw("0000000000000", 100, 160), 1);
  const Image image = code.Picture();
  Image drawn{image.width, image.height, std::vector<Pixel>(image.pixels.size(), kWhitePixel)};
  for (const auto& bar : bars) {
    const auto edge = [&](const char* name) { return std::lround(std::stod(Attribute(bar, name))); };
    for (long y = edge("y"); y < edge("y") + edge("height"); ++y) {
      for (long x = edge("x"); x < edge("x") + edge("width"); ++x) {
        drawn.pixels[static_cast<std::size_t>(y * image.width + x)] = kBlackPixel;
      }
    }
  }
  EXPECT_EQ(image, drawn);
}

TEST_F(GS1DataBar14Draw, RefusalsAreTaggedLines) {
  const auto refused = [&](const char* text) {
    const auto captured = Capture([&] { EXPECT_EQ(Draw(text, 300, 100), 0); });
    EXPECT_EQ(captured.out, "");
    return captured.err;
  };
  for (const char* const form : {"OMNIDIRECTIONAL", "STACKED"}) {
    for (const char* const format : {"png", "svg"}) {
      barcode_set_symbol_type_14(code, form);
      barcode_set_output_format(code, format);
      EXPECT_EQ(refused("12345678901231"), "[GS1 DataBar] Input too long (max 13 digits)\n");
      EXPECT_EQ(refused("A"), "[GS1 DataBar] GS1 DataBar requires numeric digits only\n");
    }
  }
}

TEST_F(GS1DataBar14Draw, EncodeWithoutDrawing) {
  barcode_set_symbol_type_14(code, "STACKED");
  const auto good = Capture([&] { EXPECT_EQ(barcode_encode_14(code, "2001234567890"), 1); });
  EXPECT_THAT(good.err, StartsWith("DEBUG encode: row 0 bin[0:20]=01010001110100000100\n"));
  EXPECT_THAT(good.err, testing::EndsWith("pattern[0:20]=11251211121128332121, pattern.length=25\n"));
  EXPECT_TRUE(code.Png().empty());
  const auto bad = Capture([&] { EXPECT_EQ(barcode_encode_14(code, "12345678901231"), 0); });
  EXPECT_EQ(bad.err, "[GS1 DataBar] Input too long (max 13 digits)\n");
  EXPECT_EQ(barcode_encode_14(code, nullptr), 0);
}

TEST_F(GS1DataBar14Draw, AnUnknownFormatFailsWithoutAMessage) {
  barcode_set_output_format(code, "gif");
  for (const char* const form : {"OMNIDIRECTIONAL", "STACKED"}) {
    barcode_set_symbol_type_14(code, form);
    const auto captured = Capture([&] { EXPECT_EQ(Draw("A", 300, 100), 0); });
    EXPECT_EQ(captured.err, "");
  }
}

}  // namespace
}  // namespace barcode::test
