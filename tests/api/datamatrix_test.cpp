// Data Matrix through the exported functions: both outputs, options, streams.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "support/barcode_object.h"
#include "support/capture.h"
#include "support/svg.h"
#include "support/target_lines.h"

namespace barcode::test {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

constexpr const char* kFailed =
    "[DataMatrix] Failed to encode data. Data may be empty or contain invalid characters.\n";

class DataMatrixDraw : public ::testing::Test {
 protected:
  BarcodeObject code{BARCODE_DATAMATRIX};

  Captured Draw(const std::string& text, int width, int height, int expected = 1) {
    return Capture([&] { EXPECT_EQ(barcode_draw_2d_rect(code, text.c_str(), width, height), expected); });
  }

  // "columns x rows" of the symbol, as the size line tells; empty when the text was refused.
  std::string SizeOf(const std::string& text) {
    barcode_set_output_format(code, "png");
    const Captured captured = Capture([&] { barcode_draw_2d_rect(code, text.c_str(), 300, 300); });
    const std::string before = "  パターンサイズ: ";
    const std::size_t at = captured.out.find(before);
    if (at == std::string::npos) {
      return "";
    }
    const std::size_t begin = at + before.size();
    return captured.out.substr(begin, captured.out.find('\n', at) - begin);
  }

  std::string Svg(const std::string& text, int width, int height) {
    barcode_set_output_format(code, "svg");
    EXPECT_EQ(barcode_draw_2d_rect(code, text.c_str(), width, height), 1);
    return barcode_get_svg(code);
  }
};

TEST_F(DataMatrixDraw, LinesOfARasterDraw) {
  const Captured captured = Draw("123456", 100, 60);
  // The dump is the figure of ISO/IEC 16022 column by column, each from top to bottom.
  EXPECT_EQ(captured.out, TargetLines("100x60") +
                              "  パターンサイズ: 10列 x 10行\n"
                              "  モジュールサイズ: 6.00\n"
                              "  実際の描画サイズ: 60 x 60\n"
                              "【Debug: DataMatrixのビットパターン出力 10列x10行】\n"
                              "1111111111\n0111101101\n1000001101\n0000000111\n"
                              "1100001011\n0001001111\n1101110101\n0111010011\n"
                              "1000010001\n0101010101\n"
                              "【Debug: 出力終了】\n"
                              "--- DataMatrix::Draw 終了 (成功) ---\n");
  EXPECT_EQ(captured.err, "");
}

TEST_F(DataMatrixDraw, ModulesAreSquareFromTheTopLeftCorner) {
  (void)Draw("123456", 100, 60);
  const Image image = code.Picture();
  ASSERT_EQ(image.width, 100);
  ASSERT_EQ(image.height, 60);
  EXPECT_EQ(RunsOfRow(image, 0), (std::vector<int>{6, 6, 6, 6, 6, 6, 6, 6, 6, 46}));
  EXPECT_EQ(RunsOfRow(image, 59), (std::vector<int>{60, 40}));
  for (int x = 60; x < 100; ++x) {
    for (int y = 0; y < 60; ++y) {
      ASSERT_EQ(image.At(x, y), kWhitePixel);
    }
  }
}

TEST_F(DataMatrixDraw, EmptyTextIsRefused) {
  const Captured captured = Draw("", 100, 100, 0);
  EXPECT_EQ(captured.err, kFailed);
  EXPECT_EQ(captured.out, TargetLines("100x100"));
  // The new canvas is there, with the background only.
  EXPECT_EQ(code.Picture().At(0, 0), kWhitePixel);
  barcode_set_output_format(code, "svg");
  const Captured svg = Draw("", 100, 100, 0);
  EXPECT_EQ(svg.err, kFailed);
  EXPECT_EQ(svg.out, "");
}

TEST_F(DataMatrixDraw, ARefusedTextLeavesTheEarlierSvgDocument) {
  const std::string before = Svg("123456", 100, 100);
  EXPECT_EQ(Draw("", 100, 100, 0).err, kFailed);
  EXPECT_EQ(barcode_get_svg(code), before);
}

TEST_F(DataMatrixDraw, TextTooLongForTheSizeIsRefused) {
  barcode_set_code_size(code, "10x10");
  EXPECT_EQ(Draw(std::string(50, 'A'), 100, 100, 0).err, kFailed);
}

TEST_F(DataMatrixDraw, TextTooLongForEverySizeIsRefused) {
  EXPECT_EQ(SizeOf(std::string(1558, 'A')), "144列 x 144行");
  const Captured captured = Draw(std::string(1559, 'A'), 200, 200, 0);
  EXPECT_EQ(captured.err, kFailed);
  EXPECT_EQ(captured.out, TargetLines("200x200"));
}

TEST_F(DataMatrixDraw, EncoderMessagesGoToStandardOutput) {
  const Captured buffer = Draw(std::string(4097, 'A'), 200, 200, 0);
  EXPECT_EQ(buffer.out, TargetLines("200x200") + "Can't push input word, encoded length exceeds limits!\n");
  EXPECT_EQ(buffer.err, kFailed);
  const Captured megabyte = Draw(std::string(1 << 20, '1'), 200, 200, 0);
  EXPECT_EQ(megabyte.out, TargetLines("200x200") + "Encoding failed, data length out of range!\n");
  EXPECT_EQ(megabyte.err, kFailed);
}

TEST_F(DataMatrixDraw, SizeKeywords) {
  constexpr const char* kSquares[] = {"10x10", "12x12", "14x14",   "16x16",   "18x18",   "20x20",
                                      "22x22", "24x24", "26x26",   "32x32",   "36x36",   "40x40",
                                      "44x44", "48x48", "52x52",   "64x64",   "72x72",   "80x80",
                                      "88x88", "96x96", "104x104", "120x120", "132x132", "144x144"};
  constexpr const char* kRectangles[] = {"8x18", "8x32", "12x26", "12x36", "16x36", "16x48"};
  const auto expected = [](const std::string& keyword) {
    const std::size_t by = keyword.find('x');
    return keyword.substr(by + 1) + "列 x " + keyword.substr(0, by) + "行";  // rows come first in keywords
  };
  for (const char* const keyword : kSquares) {
    barcode_set_code_size(code, keyword);
    EXPECT_EQ(SizeOf("123456"), expected(keyword));
  }
  for (const char* const keyword : kRectangles) {
    barcode_set_code_size(code, keyword);
    EXPECT_EQ(SizeOf("123456"), expected(keyword));
  }
}

TEST_F(DataMatrixDraw, OtherSizeKeywordsSelectTheSmallestSquare) {
  for (const char* const keyword : {"AUTO", "11x11", "", "10X10", "10x10 ", "auto"}) {
    barcode_set_code_size(code, "52x52");
    const Captured captured = Capture([&] { barcode_set_code_size(code, keyword); });
    EXPECT_EQ(captured.out + captured.err, "");
    EXPECT_EQ(SizeOf("123456"), "10列 x 10行") << keyword;
  }
  barcode_set_code_size(code, "52x52");
  barcode_set_code_size(code, nullptr);
  EXPECT_EQ(SizeOf("123456"), "52列 x 52行");
}

// Six upper-case letters take 6 codewords in ASCII (14x14), 5 in C40, TEXT 9 (16x16), Base 256 8 (14x14).
TEST_F(DataMatrixDraw, SchemeKeywords) {
  EXPECT_EQ(SizeOf("AIMAIM"), "14列 x 14行");  // a new object encodes in ASCII
  struct Case {
    const char* keyword;
    const char* size;
  };
  constexpr Case kCases[] = {{"AUTO", "12列 x 12行"},    {"ASCII", "14列 x 14行"},
                             {"C40", "12列 x 12行"},     {"TEXT", "16列 x 16行"},
                             {"X12", "12列 x 12行"},     {"EDIFACT", "14列 x 14行"},
                             {"BASE256", "14列 x 14行"}, {"BASE64", "12列 x 12行"},
                             {"ascii", "12列 x 12行"},   {"", "12列 x 12行"}};
  for (const Case& testCase : kCases) {
    const Captured captured = Capture([&] { barcode_set_encode_scheme(code, testCase.keyword); });
    EXPECT_EQ(captured.out + captured.err, "");
    EXPECT_EQ(SizeOf("AIMAIM"), testCase.size) << testCase.keyword;
  }
}

TEST_F(DataMatrixDraw, ACharacterOutsideAFixedSchemeIsRefused) {
  for (const char* const keyword : {"X12", "EDIFACT"}) {
    barcode_set_encode_scheme(code, keyword);
    EXPECT_EQ(Draw("ABCa", 100, 100, 0).err, kFailed) << keyword;
  }
}

TEST_F(DataMatrixDraw, FitWidthFillsTheSmallerSide) {
  barcode_set_fit_width(code, 1);
  const Captured captured = Draw("123456", 100, 65);
  EXPECT_THAT(captured.out, HasSubstr("  モジュールサイズ: 6.50\n  実際の描画サイズ: 65 x 65\n"));
  // Edges at 0, 6.5, 13, 19.5, ...: halves are rounded up.
  EXPECT_EQ(RunsOfRow(code.Picture(), 0), (std::vector<int>{7, 6, 7, 6, 7, 6, 7, 6, 7, 41}));
}

TEST_F(DataMatrixDraw, DrawnSizeIsRoundedUp) {
  barcode_set_fit_width(code, 1);
  barcode_set_code_size(code, "8x18");
  EXPECT_THAT(Draw("123456", 100, 100).out,
              HasSubstr("  モジュールサイズ: 5.56\n  実際の描画サイズ: 100 x 45\n"));  // 44.44
  barcode_set_code_size(code, "14x14");
  // 14 * (29 / 14.0) is a little more than 29 in floating point.
  EXPECT_THAT(Draw("123456", 29, 29).out, HasSubstr("  実際の描画サイズ: 30 x 30\n"));
  EXPECT_THAT(Svg("123456", 29, 29), HasSubstr("width=\"30\" height=\"30\""));
}

TEST_F(DataMatrixDraw, ABoxSmallerThanTheSymbolHasModulesOfNoSize) {
  const Captured captured = Draw("123456", 9, 100);
  EXPECT_THAT(captured.out, HasSubstr("  モジュールサイズ: 0.00\n  実際の描画サイズ: 0 x 0\n"));
  const Image empty = code.Picture();
  EXPECT_TRUE(IsBlank(empty));
  // The adjustment gives them one: all of them at the corner.
  barcode_set_px_adjust_black(code, 2);
  (void)Draw("123456", 9, 100);
  const Image image = code.Picture();
  EXPECT_EQ(image.At(0, 0), kBlackPixel);
  EXPECT_EQ(image.At(1, 1), kBlackPixel);
  EXPECT_EQ(image.At(2, 0), kWhitePixel);
  EXPECT_EQ(image.At(0, 2), kWhitePixel);
}

TEST_F(DataMatrixDraw, AdjustmentWidensDarkModulesBothWays) {
  barcode_set_px_adjust_black(code, 2);
  (void)Draw("123456", 100, 100);
  const Image image = code.Picture();
  EXPECT_EQ(RunsOfRow(image, 0), (std::vector<int>{12, 8, 12, 8, 12, 8, 12, 8, 12, 8}));
  EXPECT_EQ(RunsOfRow(image, 89), (std::vector<int>{12, 18, 32, 8, 12, 18}));
  barcode_set_px_adjust_black(code, -10);
  (void)Draw("123456", 100, 100);
  EXPECT_TRUE(IsBlank(code.Picture()));  // no module is left
}

TEST_F(DataMatrixDraw, Colours) {
  barcode_set_foreground_color(code, 1, 2, 3, 128);
  barcode_set_background_color(code, 250, 251, 252, 0);
  (void)Draw("123456", 100, 110);
  const Image image = code.Picture();
  EXPECT_EQ(image.At(0, 0), (Pixel{1, 2, 3, 128}));
  EXPECT_EQ(image.At(10, 0), (Pixel{250, 251, 252, 0}));
  EXPECT_EQ(image.At(99, 109), (Pixel{250, 251, 252, 0}));
}

TEST_F(DataMatrixDraw, ExportsAgree) {
  (void)Draw("123456", 100, 100);
  const Image rectangle = code.Picture();
  (void)Capture([&] { EXPECT_EQ(barcode_draw_2d(code, "123456", 100), 1); });
  EXPECT_EQ(code.Picture(), rectangle);
  (void)Capture([&] { EXPECT_EQ(barcode_draw_1d(code, "123456", 100, 100), 1); });
  EXPECT_EQ(code.Picture(), rectangle);
}

TEST_F(DataMatrixDraw, FormatsWithoutACanvas) {
  barcode_set_output_format(code, "PNG");
  const Captured unknown = Draw("", 100, 100, 0);
  EXPECT_THAT(unknown.out,
              EndsWith("  BarcodeBase::Draw 呼び出し完了。\n"
                       "エラー: BarcodeBase::Draw の後で有効な描画サーフェス (m_surface) がありません。\n"));
  EXPECT_EQ(unknown.err, "");
  barcode_set_output_format(code, "");
  EXPECT_EQ(Draw("123456", 100, 100, 0).out,
            "[ステップ1] 描画コンテキストを準備します...\n"
            "エラー: 描画コンテキストが指定されていません (m_canvas も m_format も無効)。\n");
}

TEST_F(DataMatrixDraw, SvgDocumentHasTheDrawnSize) {
  const std::string document = Svg("123456", 100, 65);
  EXPECT_THAT(document, HasSubstr("width=\"60\" height=\"60\" viewBox=\"0 0 60 60\">\n"));
  const auto rects = SvgElements(document, "rect");
  ASSERT_EQ(rects.size(), 1U + 55U);
  EXPECT_EQ(rects[0],
            "  <rect x=\"0.00\" y=\"0.00\" width=\"60.00\" height=\"60.00\" fill=\"rgb(255,255,255)\"/>");
  EXPECT_EQ(rects[1], "  <rect x=\"0.00\" y=\"0.00\" width=\"6.00\" height=\"6.00\" fill=\"rgb(0,0,0)\"/>");
  EXPECT_EQ(Attribute(rects[2], "x"), "12.00");  // the clock track
  EXPECT_EQ(Attribute(rects.back(), "x"), "54.00");
  EXPECT_EQ(Attribute(rects.back(), "y"), "54.00");
  EXPECT_THAT(document, EndsWith("</svg>\n"));
}

TEST_F(DataMatrixDraw, SvgPrintsNothing) {
  barcode_set_output_format(code, "SVG");
  const Captured captured = Draw("123456", 100, 100);
  EXPECT_EQ(captured.out + captured.err, "");
}

TEST_F(DataMatrixDraw, SvgEdgesDivideTheDocument) {
  barcode_set_fit_width(code, 1);
  barcode_set_code_size(code, "8x18");
  barcode_set_px_adjust_black(code, 1);
  const auto rects = SvgElements(Svg("123456", 100, 100), "rect");
  EXPECT_EQ(Attribute(rects.at(0), "width"), "100.00");
  EXPECT_EQ(Attribute(rects.at(0), "height"), "45.00");  // 44.44, rounded up
  EXPECT_EQ(Attribute(rects.at(1), "width"), "6.56");    // 100 / 18 + 1
  EXPECT_EQ(Attribute(rects.at(1), "height"), "6.62");   // 45 / 8 + 1: 6.625, to even
  EXPECT_EQ(Attribute(rects.back(), "x"), "94.44");
  EXPECT_EQ(Attribute(rects.back(), "y"), "39.38");
}

TEST_F(DataMatrixDraw, SvgKeepsModulesOfNoSize) {
  const auto plain = SvgElements(Svg("123456", 9, 9), "rect");
  EXPECT_EQ(plain.size(), 1U + 55U);
  EXPECT_EQ(Attribute(plain.at(0), "width"), "0.00");
  EXPECT_EQ(Attribute(plain.at(1), "width"), "0.00");
  barcode_set_px_adjust_black(code, -8);
  const auto negative = SvgElements(Svg("123456", 60, 60), "rect");
  EXPECT_EQ(negative.size(), 1U + 55U);
  EXPECT_EQ(Attribute(negative.at(1), "width"), "-2.00");
}

TEST_F(DataMatrixDraw, SvgColours) {
  barcode_set_foreground_color(code, 1, 2, 3, 128);
  EXPECT_THAT(Svg("123456", 60, 60), HasSubstr("fill=\"rgb(1,2,3)\" fill-opacity=\"0.50\"/>"));
}

TEST_F(DataMatrixDraw, HugeBoxesAreDefined) {
  constexpr int kMax = std::numeric_limits<int>::max();
  EXPECT_THAT(Svg("123456", kMax, kMax), HasSubstr("width=\"2147483640\" height=\"2147483640\""));
  EXPECT_THAT(Svg("123456", -1, -1), HasSubstr("width=\"4294967290\" height=\"4294967290\""));
  barcode_set_fit_width(code, 1);
  EXPECT_THAT(Svg("123456", -1, -1), HasSubstr("width=\"4294967295\" height=\"4294967295\""));
  EXPECT_THAT(Svg("123456", -1, 1), HasSubstr("width=\"1\" height=\"1\""));
  barcode_set_output_format(code, "png");
  const Captured captured = Draw("123456", kMax, kMax, 0);
  EXPECT_THAT(captured.out, HasSubstr("エラー: BarcodeBase::Draw が false を返しました"));
  EXPECT_THAT(captured.err, Not(HasSubstr("[DataMatrix]")));
}

TEST_F(DataMatrixDraw, OptionsOfOtherSymbologiesDoNothing) {
  barcode_set_version(code, 40);
  barcode_set_error_correction_level(code, "H");
  barcode_set_columns(code, 5);
  EXPECT_EQ(SizeOf("123456"), "10列 x 10行");
}

TEST(DataMatrixOptions, ServeNoOtherSymbology) {
  const BarcodeObject qr(BARCODE_QR);
  (void)Capture([&] { EXPECT_EQ(barcode_draw_2d(qr, "123456", 100), 1); });
  const Image before = qr.Picture();
  barcode_set_code_size(qr, "144x144");
  barcode_set_encode_scheme(qr, "BASE256");
  barcode_set_code_size(nullptr, "10x10");
  barcode_set_encode_scheme(nullptr, "ASCII");
  (void)Capture([&] { EXPECT_EQ(barcode_draw_2d(qr, "123456", 100), 1); });
  EXPECT_EQ(qr.Picture(), before);
}

}  // namespace
}  // namespace barcode::test
