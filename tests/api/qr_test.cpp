#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
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

// Modules of a symbol as the draw prints them: a line for each column, from top to bottom.
using Columns = std::vector<std::string>;

const std::string kTargetLines = TargetLines("100x100");
const std::string kDumpStart = "【Debug: QRコードのビットパターン出力】\n";
const std::string kDumpEnd = "【Debug: 出力終了】\n--- QR::Draw 終了 (成功) ---\n";

constexpr const char* kTooLong =
    "[QR] Data too long for QR Code. Data requires more capacity than Version 40 can provide. Reduce data "
    "length or "
    "use a lower error correction level.\n";

class Qr : public ::testing::Test {
 protected:
  BarcodeObject code{BARCODE_QR};

  Captured Draw(const std::string& text, int width = 100, int height = 100) {
    return Capture([&] { EXPECT_EQ(barcode_draw_2d_rect(code, text.c_str(), width, height), 1); });
  }

  Columns Modules(const std::string& text) {
    const std::string out = Draw(text).out;
    const std::size_t begin = out.find(kDumpStart) + kDumpStart.size();
    std::istringstream lines(out.substr(begin, out.find(kDumpEnd) - begin));
    Columns columns;
    for (std::string line; std::getline(lines, line);) {
      columns.push_back(line);
    }
    return columns;
  }

  // The symbol's data bits begin at the lower right corner: the two columns at the right edge, upwards, under
  // the mask, whose number stands in the format information of row 8.
  std::string ModeBits(const Columns& modules) {
    const std::size_t last = modules.size() - 1;
    const auto format = [&](std::size_t x) { return modules[x][8] - '0'; };
    const int mask = (format(2) ^ 1) * 4 + format(3) * 2 + (format(4) ^ 1);  // XOR 101
    std::string bits;
    for (std::size_t i = 0; i < 4; ++i) {
      const std::size_t x = last - i % 2;
      const std::size_t y = last - i / 2;
      const std::size_t product = x * y;
      const std::size_t zeroWhere[] = {(x + y) % 2,
                                       y % 2,
                                       x % 3,
                                       (x + y) % 3,
                                       (y / 2 + x / 3) % 2,
                                       product % 2 + product % 3,
                                       (product % 2 + product % 3) % 2,
                                       ((x + y) % 2 + product % 3) % 2};
      const bool dark = modules[x][y] == '1';
      bits += dark != (zeroWhere[mask] == 0) ? '1' : '0';
    }
    return bits;
  }
};

TEST_F(Qr, LinesOfARasterDraw) {
  const Captured captured = Draw("HELLO");
  EXPECT_EQ(captured.err, "");
  EXPECT_THAT(captured.out, StartsWith(kTargetLines + kDumpStart));
  EXPECT_THAT(captured.out, EndsWith("\n" + kDumpEnd));
  const Columns columns = Modules("HELLO");
  ASSERT_EQ(columns.size(), 21U);
  std::string whole = kTargetLines + kDumpStart;
  for (const std::string& column : columns) {
    EXPECT_EQ(column.size(), 21U);
    EXPECT_EQ(column.find_first_not_of("01"), std::string::npos);
    whole += column + '\n';
  }
  EXPECT_EQ(captured.out, whole + kDumpEnd);
  // The first line is the leftmost column: finder, separator, data, separator, finder.
  EXPECT_EQ(columns[0].substr(0, 8), "11111110");
  EXPECT_EQ(columns[0].substr(13), "01111111");
  EXPECT_EQ(columns[20].substr(13), Modules("HELLO")[20].substr(13));
  EXPECT_NE(columns[20].substr(13), "01111111");  // no finder at the lower right
}

TEST_F(Qr, EveryDrawPrintsTheSameLines) {
  const std::string first = Draw("HELLO").out;
  EXPECT_EQ(Draw("HELLO").out, first);
  EXPECT_EQ(Capture([&] { barcode_draw_2d(code, "HELLO", 100); }).out, first);
  EXPECT_EQ(Capture([&] { barcode_draw_1d(code, "HELLO", 100, 100); }).out, first);
}

TEST_F(Qr, PixelsAreTheModulesThatWerePrinted) {
  const Columns columns = Modules("HELLO");
  Draw("HELLO", 210, 210);
  const Image image = code.Picture();
  ASSERT_EQ(image.width, 210);
  ASSERT_EQ(image.height, 210);
  for (int x = 0; x < 210; ++x) {
    for (int y = 0; y < 210; ++y) {
      const bool dark = columns[static_cast<std::size_t>(x / 10)][static_cast<std::size_t>(y / 10)] == '1';
      ASSERT_EQ(image.At(x, y), dark ? kBlackPixel : kWhitePixel) << x << ' ' << y;
    }
  }
  barcode_set_fit_width(code, 1);
  Draw("HELLO", 210, 210);
  EXPECT_EQ(code.Picture(), image);
}

TEST_F(Qr, WholePixelModulesStandAtTheTopLeftCorner) {
  const std::string text = "twenty-five modules";  // version 2
  ASSERT_EQ(Modules(text).size(), 25U);
  Draw(text, 110, 112);
  const Image image = code.Picture();
  EXPECT_EQ(RunsOfRow(image, 0)[0], 28);  // the finder: seven modules of four pixels
  EXPECT_EQ(RunsOfRow(image, 27)[0], 28);
  EXPECT_EQ(RunsOfRow(image, 28)[0], 0);  // the separator under it
  for (int i = 0; i < 112; ++i) {
    EXPECT_EQ(image.At(105, i), kWhitePixel);  // what is left over at the right and at the bottom
    EXPECT_EQ(image.At(std::min(i, 109), 105), kWhitePixel);
  }
}

TEST_F(Qr, WidthAndHeightAreTreatedSeparately) {
  Draw("HELLO", 105, 42);
  const Image image = code.Picture();
  EXPECT_EQ(RunsOfRow(image, 0)[0], 35);
  EXPECT_EQ(RunsOfRow(image, 13)[0], 35);
  EXPECT_EQ(RunsOfRow(image, 14)[0], 0);
}

TEST_F(Qr, FitWidthRoundsTheEdges) {
  barcode_set_fit_width(code, 1);
  Draw("HELLO", 100, 100);
  // Edges of the first modules at 0, 5, 10, 14, 19, ...: the finder's second row, dark, five light, dark.
  const std::vector<int> runs = RunsOfRow(code.Picture(), 7);
  ASSERT_GT(runs.size(), 3U);
  EXPECT_EQ(runs[0], 5);
  EXPECT_EQ(runs[1], 29 - 5);
  EXPECT_EQ(runs[2], 33 - 29);
}

TEST_F(Qr, ATargetNarrowerThanTheSymbolClipsIt) {
  const Columns columns = Modules("HELLO");
  Draw("HELLO", 15, 10);
  const Image image = code.Picture();
  ASSERT_EQ(image.width, 15);
  for (int x = 0; x < 15; ++x) {
    for (int y = 0; y < 10; ++y) {
      const bool dark = columns[static_cast<std::size_t>(x)][static_cast<std::size_t>(y)] == '1';
      EXPECT_EQ(image.At(x, y), dark ? kBlackPixel : kWhitePixel);
    }
  }
}

TEST_F(Qr, BlackAdjustmentGrowsModulesToTheRightAndDownwards) {
  barcode_set_px_adjust_black(code, 2);
  Draw("HELLO", 210, 210);
  Image image = code.Picture();
  EXPECT_EQ(RunsOfRow(image, 0)[0], 72);
  EXPECT_EQ(image.At(0, 71), kBlackPixel);
  EXPECT_EQ(image.At(0, 72), kWhitePixel);

  barcode_set_px_adjust_black(code, -3);
  Draw("HELLO", 210, 210);
  image = code.Picture();
  EXPECT_EQ(RunsOfRow(image, 0)[0], 7);  // each module for itself, a gap after each
  EXPECT_EQ(RunsOfRow(image, 0)[1], 3);
  EXPECT_EQ(RunsOfRow(image, 7)[0], 0);

  barcode_set_px_adjust_black(code, -10);
  Draw("HELLO", 210, 210);
  EXPECT_TRUE(IsBlank(code.Picture()));
}

TEST_F(Qr, WhiteAdjustmentChangesNothing) {
  Draw("HELLO");
  const Image plain = code.Picture();
  barcode_set_px_adjust_white(code, 3);
  Draw("HELLO");
  EXPECT_EQ(code.Picture(), plain);
}

TEST_F(Qr, OptionsOfLinearSymbolsChangeNothing) {
  Draw("HELLO");
  const Image plain = code.Picture();
  barcode_set_show_text(code, 0);
  barcode_set_text_font_scale(code, 3.0);
  barcode_set_show_start_stop(code, 0);
  Draw("HELLO");
  EXPECT_EQ(code.Picture(), plain);
}

TEST_F(Qr, ColoursAreStoredAsTheyAre) {
  barcode_set_foreground_color(code, 10, 20, 30, 40);
  barcode_set_background_color(code, 50, 60, 70, 80);
  Draw("HELLO", 21, 21);
  const Image image = code.Picture();
  EXPECT_EQ(image.At(0, 0), (Pixel{10, 20, 30, 40}));
  EXPECT_EQ(image.At(7, 7), (Pixel{50, 60, 70, 80}));
}

TEST_F(Qr, EncodeModes) {
  const std::string digits = "0123456789";
  const auto bitsOf = [&](const char* mode) {
    barcode_set_encode_mode(code, mode);
    return ModeBits(Modules(digits));
  };
  EXPECT_EQ(ModeBits(Modules(digits)), "0100");
  EXPECT_EQ(bitsOf("NUMERIC"), "0001");
  for (const char* const mode : {"AUTO", "BYTE", "ALPHANUMERIC", "KANJI", "numeric", "N", ""}) {
    EXPECT_EQ(bitsOf(mode), "0100") << mode;
  }
  // A null keyword leaves the mode as it is.
  bitsOf("NUMERIC");
  barcode_set_encode_mode(code, nullptr);
  EXPECT_EQ(ModeBits(Modules(digits)), "0001");
}

TEST_F(Qr, NoKeywordOfTheEncodeModePrintsAWarning) {
  const Captured captured = Capture([&] {
    for (const char* const mode : {"AUTO", "NUMERIC", "ALPHANUMERIC", "BYTE", "KANJI", "other"}) {
      barcode_set_encode_mode(code, mode);
    }
  });
  EXPECT_EQ(captured.out, "");
}

TEST_F(Qr, Versions) {
  const std::string needsVersion3(40, 'x');
  barcode_set_version(code, 1);
  Captured captured = Capture([&] { barcode_draw_2d(code, needsVersion3.c_str(), 100); });
  EXPECT_THAT(captured.out, Not(HasSubstr("Warning")));
  EXPECT_EQ(captured.err, "");
  EXPECT_EQ(Modules(needsVersion3).size(), 29U);
  barcode_set_version(code, 10);
  EXPECT_EQ(Modules("short").size(), 57U);
  barcode_set_version(code, 40);
  EXPECT_EQ(Modules("short").size(), 177U);
  barcode_set_version(code, 0);
  EXPECT_EQ(Modules("short").size(), 21U);
}

TEST_F(Qr, AVersionOutOfRangeIsReportedAndAutomatic) {
  barcode_set_version(code, 10);
  EXPECT_EQ(Capture([&] { barcode_set_version(code, 41); }).out,
            "Warning: Invalid QR Code version (41). Setting to auto.\n");
  EXPECT_EQ(Modules("short").size(), 21U);
  barcode_set_version(code, 10);
  EXPECT_EQ(Capture([&] { barcode_set_version(code, -1); }).out,
            "Warning: Invalid QR Code version (-1). Setting to auto.\n");
  EXPECT_EQ(Modules("short").size(), 21U);
  EXPECT_EQ(Capture([&] { barcode_set_version(code, 40); }).out, "");
}

TEST_F(Qr, Levels) {
  const Columns levelM = Modules("level");
  // Format information of the level: the first two modules of row 8, XOR 10.
  const auto indicator = [&](const char* level) {
    const Captured captured = Capture([&] { barcode_set_error_correction_level(code, level); });
    EXPECT_EQ(captured.out + captured.err, "");
    const Columns modules = Modules("level");
    return std::string{modules[0][8] == '1' ? '0' : '1', modules[1][8]};
  };
  EXPECT_EQ(indicator("L"), "01");
  EXPECT_EQ(indicator("M"), "00");
  EXPECT_EQ(Modules("level"), levelM);
  EXPECT_EQ(indicator("Q"), "11");
  EXPECT_EQ(indicator("H"), "10");
  for (const char* const level : {"m", "l", "h", "", "LL", "high"}) {
    barcode_set_error_correction_level(code, "H");
    EXPECT_EQ(indicator(level), "00") << level;
  }
}

TEST_F(Qr, ATextTooLongIsRefused) {
  barcode_set_error_correction_level(code, "L");
  const Captured captured =
      Capture([&] { EXPECT_EQ(barcode_draw_2d(code, std::string(2954, 'x').c_str(), 100), 0); });
  EXPECT_EQ(captured.out, kTargetLines);
  EXPECT_EQ(captured.err, kTooLong);
  EXPECT_TRUE(IsBlank(code.Picture()));
  Draw(std::string(2953, 'x'));
}

TEST_F(Qr, AnEmptyTextIsABackgroundInRaster) {
  const Captured captured = Draw("");
  EXPECT_EQ(captured.out, kTargetLines + kDumpStart + kDumpEnd);
  EXPECT_EQ(captured.err, "");
  EXPECT_TRUE(IsBlank(code.Picture()));
}

TEST_F(Qr, AnEmptyFormatHasNoTarget) {
  barcode_set_output_format(code, "");
  const Captured captured = Capture([&] { EXPECT_EQ(barcode_draw_2d(code, "HELLO", 100), 0); });
  EXPECT_EQ(captured.out,
            "[ステップ1] 描画コンテキストを準備します...\n"
            "エラー: 描画コンテキストが指定されていません (m_canvas も m_format も無効)。\n");
}

TEST_F(Qr, AnUnknownFormatHasNoSurface) {
  barcode_set_output_format(code, "PNG");
  const Captured captured = Capture([&] { EXPECT_EQ(barcode_draw_2d(code, "HELLO", 100), 0); });
  EXPECT_EQ(captured.out,
            "[ステップ1] 描画コンテキストを準備します...\n"
            "  ターゲット: 画像ファイル用サーフェス (m_surface) の準備を開始します...\n"
            "  BarcodeBase::Draw 呼び出し完了。\n"
            "エラー: BarcodeBase::Draw の後で有効な描画サーフェス (m_surface) がありません。\n");
}

TEST_F(Qr, AnUnknownFormatDrawsIntoTheCanvasThatRemains) {
  Draw("OLD", 100, 100);
  barcode_set_output_format(code, "gif");
  const Captured captured = Draw("HELLO", 300, 300);
  EXPECT_THAT(captured.out, StartsWith(kTargetLines));
  const Image image = code.Picture();
  EXPECT_EQ(image.width, 100);
  EXPECT_EQ(RunsOfRow(image, 0)[0], 28);
  barcode_set_output_format(code, "png");
  Draw("HELLO", 100, 100);
  EXPECT_EQ(code.Picture(), image);
}

TEST_F(Qr, ASurfaceThatCannotBeMade) {
  const Captured captured = Capture([&] { EXPECT_EQ(barcode_draw_2d(code, "HELLO", -1), 0); });
  EXPECT_EQ(captured.out,
            "[ステップ1] 描画コンテキストを準備します...\n"
            "  ターゲット: 画像ファイル用サーフェス (m_surface) の準備を開始します...\n"
            "エラー: BarcodeBase::Draw が false を返しました (サーフェス準備失敗の可能性)。\n");
  EXPECT_THAT(captured.err, StartsWith("サーフェス作成に失敗: "));
}

TEST_F(Qr, TextIsConvertedToTheChosenEncoding) {
  const std::string utf8 = "\xE6\x97\xA5\xE6\x9C\xAC";
  const std::string sjis = "\x93\xFA\x96\x7B";
  const Columns asUtf8 = Modules(utf8);
  EXPECT_EQ(Modules(sjis), asUtf8);
  barcode_set_string_encoding(code, "shift_jis");
  const Columns asSjis = Modules(utf8);
  EXPECT_EQ(Modules(sjis), asSjis);
  EXPECT_NE(asSjis, asUtf8);
  barcode_set_string_encoding(code, "Shift_JIS");  // no keyword: UTF-8
  EXPECT_EQ(Modules(utf8), asUtf8);
}

class QrSvg : public Qr {
 protected:
  QrSvg() { barcode_set_output_format(code, "svg"); }

  std::vector<std::string> Rects(const std::string& text, int width, int height) {
    return SvgElements(code.SvgOf(text, width, height), "rect");
  }
};

TEST_F(QrSvg, ADarkModuleIsARectangle) {
  barcode_set_output_format(code, "png");
  const Columns columns = Modules("HELLO");
  barcode_set_output_format(code, "SVG");
  const Captured captured = Capture([&] { EXPECT_EQ(barcode_draw_2d_rect(code, "HELLO", 110, 50), 1); });
  EXPECT_EQ(captured.out + captured.err, "");
  std::string expected =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<svg xmlns=\"http://www.w3.org/2000/svg\" version=\"1.1\" width=\"110\" height=\"50\" viewBox=\"0 0 "
      "110 50\">\n"
      "  <rect x=\"0.00\" y=\"0.00\" width=\"110.00\" height=\"50.00\" fill=\"rgb(255,255,255)\"/>\n";
  for (std::size_t y = 0; y < 21; ++y) {
    for (std::size_t x = 0; x < 21; ++x) {
      if (columns[x][y] == '1') {
        expected += "  <rect x=\"" + std::to_string(5 * x) + ".00\" y=\"" + std::to_string(2 * y) +
                    ".00\" width=\"5.00\" height=\"2.00\" fill=\"rgb(0,0,0)\"/>\n";
      }
    }
  }
  EXPECT_EQ(barcode_get_svg(code), expected + "</svg>\n");
}

TEST_F(QrSvg, FitWidthEdgesAreNotRounded) {
  barcode_set_fit_width(code, 1);
  const auto rects = Rects("HELLO", 100, 100);
  ASSERT_GT(rects.size(), 3U);
  EXPECT_EQ(Attribute(rects[3], "x"), "9.52");
  EXPECT_EQ(Attribute(rects[3], "y"), "0.00");
  EXPECT_EQ(Attribute(rects[3], "width"), "4.76");
}

TEST_F(QrSvg, ModulesOfABoxTooSmallAreOnePixel) {
  const auto rects = Rects("HELLO", 5, 0);
  EXPECT_EQ(Attribute(rects[0], "width"), "5.00");
  EXPECT_EQ(Attribute(rects[2], "x"), "1.00");
  EXPECT_EQ(Attribute(rects[2], "height"), "1.00");
}

TEST_F(QrSvg, ModulesWithoutExtentAreLeftOut) {
  barcode_set_fit_width(code, 1);
  EXPECT_EQ(Rects("HELLO", 100, 0).size(), 1U);
}

TEST_F(QrSvg, AdjustmentIsAddedWhateverTheResult) {
  const std::size_t count = Rects("HELLO", 105, 105).size();
  barcode_set_px_adjust_black(code, 2);
  EXPECT_EQ(Attribute(Rects("HELLO", 105, 105)[1], "width"), "7.00");
  barcode_set_px_adjust_black(code, -6);
  const auto rects = Rects("HELLO", 105, 105);
  EXPECT_EQ(rects.size(), count);
  EXPECT_EQ(Attribute(rects[1], "width"), "-1.00");
  EXPECT_EQ(Attribute(rects[1], "height"), "-1.00");
}

TEST_F(QrSvg, AnEmptyTextDrawsNothing) {
  const std::string before = code.SvgOf("HELLO", 100, 100);
  const Captured captured = Capture([&] { EXPECT_EQ(barcode_draw_2d(code, "", 100), 0); });
  EXPECT_EQ(captured.out + captured.err, "");
  EXPECT_EQ(barcode_get_svg(code), before);
}

TEST_F(QrSvg, ATextTooLongLeavesTheDocument) {
  const std::string before = code.SvgOf("HELLO", 100, 100);
  const Captured captured =
      Capture([&] { EXPECT_EQ(barcode_draw_2d(code, std::string(3000, 'x').c_str(), 100), 0); });
  EXPECT_EQ(captured.out, "");
  EXPECT_EQ(captured.err, kTooLong);
  EXPECT_EQ(barcode_get_svg(code), before);
}

}  // namespace
}  // namespace barcode::test
