#include "core/barcode_base_2d.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "support/capture.h"
#include "support/image.h"
#include "support/svg.h"
#include "support/target_lines.h"

namespace barcode {
namespace {

using test::Captured;
using test::CaptureInternal;
using test::Image;
using test::TargetLines;
using ::testing::ElementsAre;
using ::testing::StartsWith;

// A symbol of 2 x 1 modules, the right one dark; "empty" has no symbol, "bad" is refused. It reports what it
// is asked for.
class Domino : public BarcodeBase2D {
 public:
  explicit Domino(std::string_view format,
                  const MatrixDrawStyle& style = {.tag = "[Domino] ", .doneLine = {}})
      : BarcodeBase2D(format, style) {}

  using BarcodeBase2D::PrintModules;

  bool enlarges = false;  // draws boxes of double width
  bool layoutFails = false;

  std::vector<std::string> EncodedTexts() const { return m_encodedTexts; }

 protected:
  ModuleMatrix Encode(const std::string& text, EncoderLines& lines) const override {
    m_encodedTexts.push_back(text);
    if (text == "silent") {
      return Symbol();
    }
    lines.Add("encodes ", text.size(), " bytes");
    if (text == "bad") {
      throw std::runtime_error("cannot encode bad");
    }
    return text == "empty" ? ModuleMatrix() : Symbol();
  }

  MatrixDrawing Layout(const ModuleMatrix& matrix, std::uint32_t width, std::uint32_t height,
                       PixelGrid grid) const override {
    if (layoutFails) {
      throw std::runtime_error("cannot lay out");
    }
    PrintLine("lays out ", width, 'x', height, grid == PixelGrid::kWhole ? " whole" : " fractional");
    return LayoutStretched(matrix, width, height, m_fitWidth, grid,
                           {.adjust = static_cast<double>(m_pxAdjustBlack), .skip = SkipModules::kNone});
  }

  Box DrawnBox(const ModuleMatrix& matrix, const Box& box) const override {
    Box drawn = BarcodeBase2D::DrawnBox(matrix, box);
    if (enlarges && !matrix.Empty()) {
      drawn.width *= 2;
    }
    return drawn;
  }

  void ReportSymbol(const ModuleMatrix& matrix, const MatrixDrawing& drawing) const override {
    PrintLine("reports ", matrix.Columns(), 'x', matrix.Rows(), " of ", drawing.module.width);
  }

 private:
  static ModuleMatrix Symbol() {
    ModuleMatrix matrix(2, 1);
    matrix.Set(1, 0, true);
    return matrix;
  }

  mutable std::vector<std::string> m_encodedTexts;
};

Captured Draw(Domino& domino, const std::string& text, bool drawn, const Box& box = {5, 6, 8, 4}) {
  return CaptureInternal(
      [&] { EXPECT_EQ(domino.Draw(text, box.x, box.y, box.width, box.height), drawn) << text; });
}

Image Picture(Domino& domino) {
  Image image;
  (void)CaptureInternal([&] { image = test::DecodePng(domino.GetImageData()); });
  return image;
}

// ---- the text ----

TEST(BarcodeBase2D, DrawConvertsTheTextAndDrawMatrixDoesNot) {
  Domino domino("png");
  const std::string sjis = "\x82\xA0";
  const std::string utf8 = "\xE3\x81\x82";
  (void)CaptureInternal([&] {
    EXPECT_TRUE(domino.Draw(sjis, 0, 0, 4, 4));
    EXPECT_TRUE(domino.DrawSquare(sjis, 0, 0, 4));
    EXPECT_TRUE(domino.DrawMatrix(sjis, 0, 0, 4, 4));
    EXPECT_TRUE(domino.DrawMatrixSquare(sjis, 0, 0, 4));
    domino.SetStringEncoding("Shift-JIS");
    EXPECT_TRUE(domino.Draw(utf8, 0, 0, 4, 4));
  });
  EXPECT_THAT(domino.EncodedTexts(), ElementsAre(utf8, utf8, sjis, sjis, sjis));
}

TEST(BarcodeBase2D, SquaresAreAsHighAsWide) {
  Domino domino("png");
  (void)CaptureInternal([&] { EXPECT_TRUE(domino.DrawSquare("A", 0, 0, 9)); });
  EXPECT_EQ(Picture(domino).width, 9);
  EXPECT_EQ(Picture(domino).height, 9);
  (void)CaptureInternal([&] { EXPECT_TRUE(domino.DrawMatrixSquare("A", 0, 0, 7)); });
  EXPECT_EQ(Picture(domino).width, 7);
  EXPECT_EQ(Picture(domino).height, 7);
}

TEST(BarcodeBase2D, ThereIsNoVectorDrawBesideTheFormat) {
  Domino domino("png");
  EXPECT_FALSE(domino.DrawSvg("A", 0, 0, 4, 4));
  EXPECT_EQ(domino.GetSvgDocument(), "");
}

// ---- the raster ----

TEST(BarcodeBase2D, ARasterDrawReportsItsStepsInOrder) {
  Domino domino("png", {.tag = "[Domino] ", .doneLine = "done"});
  const Captured captured = Draw(domino, "A", true);
  EXPECT_EQ(captured.out,
            TargetLines("8x4") + "encodes 1 bytes\nlays out 8x4 whole\nreports 2x1 of 4\ndone\n");
  EXPECT_EQ(captured.err, "");
}

// The symbol stands at the corner of its own surface, whatever the x and y.
TEST(BarcodeBase2D, TheDarkModulesArePaintedOnTheBackground) {
  Domino domino("png");
  domino.SetForegroundColor(200, 0, 0, 100);
  domino.SetBackgroundColor(0, 0, 200, 50);
  domino.SetPxAdjustBlack(-1);
  (void)Draw(domino, "A", true);
  const Image image = Picture(domino);
  ASSERT_EQ(image.width, 8);
  ASSERT_EQ(image.height, 4);
  for (int y = 0; y < 4; ++y) {
    for (int x = 0; x < 8; ++x) {
      const bool isDark = x >= 4 && x < 7 && y < 3;
      ASSERT_EQ(image.At(x, y), (isDark ? test::Pixel{200, 0, 0, 100} : test::Pixel{0, 0, 200, 50}))
          << x << ", " << y;
    }
  }
}

TEST(BarcodeBase2D, WithoutFormatThereIsNoTarget) {
  Domino domino("");
  const Captured captured = Draw(domino, "A", false);
  EXPECT_EQ(captured.out,
            "[ステップ1] 描画コンテキストを準備します...\n"
            "エラー: 描画コンテキストが指定されていません (m_canvas も m_format も無効)。\n");
  EXPECT_EQ(captured.err, "");
}

TEST(BarcodeBase2D, AClassThatPrintsNoStepsIsSilent) {
  const MatrixDrawStyle silent{.tag = "[Domino] ", .printsSteps = false, .doneLine = {}};
  Domino domino("png", silent);
  EXPECT_EQ(Draw(domino, "silent", true).out, "lays out 8x4 whole\nreports 2x1 of 4\n");
  for (const char* const format : {"", "gif"}) {
    Domino failing(format, silent);
    const Captured captured = Draw(failing, "silent", false);
    EXPECT_EQ(captured.out, "") << format;
    EXPECT_EQ(captured.err, "") << format;
  }
}

TEST(BarcodeBase2D, AnUnknownFormatDrawsIntoTheCanvasThatRemains) {
  Domino domino("png");
  (void)Draw(domino, "A", true);
  domino.SetOutputFormat("gif");
  const Captured captured = Draw(domino, "A", true, {0, 0, 100, 100});
  EXPECT_EQ(captured.out, TargetLines("8x4") + "encodes 1 bytes\nlays out 8x4 whole\nreports 2x1 of 4\n");
  EXPECT_EQ(Picture(domino).width, 8);
}

TEST(BarcodeBase2D, ASymbolWithoutModulesIsABackgroundInRaster) {
  Domino domino("png");
  EXPECT_EQ(Draw(domino, "empty", true).err, "");
  EXPECT_TRUE(test::IsBlank(Picture(domino)));
}

TEST(BarcodeBase2D, ARefusedTextIsReportedBehindWhatTheEncoderSaid) {
  Domino domino("png");
  (void)Draw(domino, "A", true);
  const Captured captured = Draw(domino, "bad", false, {0, 0, 6, 6});
  EXPECT_EQ(captured.out, TargetLines("6x6") + "encodes 3 bytes\n");
  EXPECT_EQ(captured.err, "[Domino] cannot encode bad\n");
  // The canvas was new.
  EXPECT_EQ(Picture(domino).width, 6);
  EXPECT_TRUE(test::IsBlank(Picture(domino)));
}

TEST(BarcodeBase2D, AClassThatEncodesFirstKeepsTheEarlierCanvas) {
  Domino domino("png", {.tag = "[Domino] ", .encodesFirst = true, .doneLine = {}});
  EXPECT_EQ(Draw(domino, "A", true).out,
            "encodes 1 bytes\n" + TargetLines("8x4") + "lays out 8x4 whole\nreports 2x1 of 4\n");
  const Image before = Picture(domino);
  const Captured captured = Draw(domino, "bad", false, {0, 0, 6, 6});
  EXPECT_EQ(captured.out, "encodes 3 bytes\n");
  EXPECT_EQ(captured.err, "[Domino] cannot encode bad\n");
  EXPECT_EQ(Picture(domino), before);
}

TEST(BarcodeBase2D, ACanvasThatCannotBeMadeFails) {
  Domino domino("png");
  const Captured captured = Draw(domino, "A", false, {0, 0, 0xFFFFFFFF, 4});
  EXPECT_THAT(captured.err, StartsWith("サーフェス作成に失敗: "));
  EXPECT_THAT(domino.EncodedTexts(), ElementsAre());
}

TEST(BarcodeBase2D, TheDrawnBoxIsTheSizeOfThePicture) {
  Domino domino("png", {.tag = "[Domino] ", .encodesFirst = true, .doneLine = {}});
  domino.enlarges = true;
  (void)Draw(domino, "A", true);
  EXPECT_EQ(Picture(domino).width, 16);
  EXPECT_EQ(Picture(domino).height, 4);
  domino.SetOutputFormat("svg");
  EXPECT_EQ(Draw(domino, "A", true).out, "encodes 1 bytes\nlays out 16x4 fractional\n");
  EXPECT_NE(domino.GetSvgDocument().find("width=\"16\" height=\"4\""), std::string::npos);
}

// ---- the vector draw ----

TEST(BarcodeBase2D, ADarkModuleIsARectangleOfTheDocument) {
  Domino domino("svg");
  domino.SetBackgroundColor(0, 0, 200, 51);
  domino.SetPxAdjustBlack(1);
  const Captured captured = Draw(domino, "A", true);
  EXPECT_EQ(captured.out, "encodes 1 bytes\nlays out 8x4 fractional\n");
  EXPECT_EQ(captured.err, "");
  EXPECT_EQ(domino.GetSvgDocument(),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<svg xmlns=\"http://www.w3.org/2000/svg\" version=\"1.1\" width=\"8\" height=\"4\" "
            "viewBox=\"0 0 8 4\">\n"
            "  <rect x=\"0.00\" y=\"0.00\" width=\"8.00\" height=\"4.00\" fill=\"rgb(0,0,200)\" "
            "fill-opacity=\"0.20\"/>\n"
            "  <rect x=\"4.00\" y=\"0.00\" width=\"5.00\" height=\"5.00\" fill=\"rgb(0,0,0)\"/>\n"
            "</svg>\n");
}

TEST(BarcodeBase2D, AFailedVectorDrawLeavesTheEarlierDocument) {
  Domino domino("svg");
  (void)Draw(domino, "A", true);
  const std::string document = domino.GetSvgDocument();
  ASSERT_NE(document, "");

  const Captured empty = Draw(domino, "empty", false);
  EXPECT_EQ(empty.out, "encodes 5 bytes\n");
  EXPECT_EQ(empty.err, "");
  EXPECT_EQ(domino.GetSvgDocument(), document);

  const Captured bad = Draw(domino, "bad", false);
  EXPECT_EQ(bad.out, "encodes 3 bytes\n");
  EXPECT_EQ(bad.err, "[Domino] cannot encode bad\n");
  EXPECT_EQ(domino.GetSvgDocument(), document);

  domino.layoutFails = true;
  EXPECT_EQ(Draw(domino, "A", false).err, "[Domino] cannot lay out\n");
  EXPECT_EQ(domino.GetSvgDocument(), document);
}

// ---- the dump of the modules ----

TEST(BarcodeBase2D, ModulesArePrintedColumnByColumn) {
  ModuleMatrix matrix(2, 3);
  matrix.Set(0, 1, true);
  matrix.Set(1, 2, true);
  const Captured captured = CaptureInternal([&] { Domino::PrintModules("modules", matrix); });
  EXPECT_EQ(captured.out, "modules\n010\n001\n【Debug: 出力終了】\n");
  const Captured none = CaptureInternal([] { Domino::PrintModules("modules", {}); });
  EXPECT_EQ(none.out, "modules\n【Debug: 出力終了】\n");
}

}  // namespace
}  // namespace barcode
