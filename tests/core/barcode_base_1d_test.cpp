#include "core/barcode_base_1d.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/font.h"
#include "layout/linear_layout.h"
#include "support/capture.h"
#include "support/image.h"
#include "support/size_report.h"
#include "support/svg.h"

namespace barcode {
namespace {

using test::Captured;
using test::CaptureInternal;
using test::Image;
using test::Pixel;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

using LayoutFunction =
    std::function<std::optional<SymbolDrawing>(const std::string& text, const DrawContext& context)>;

// Draws what a test tells it to.
class Strip : public BarcodeBase1D {
 public:
  explicit Strip(std::string_view format) : BarcodeBase1D(format, "[Strip] ") {}

  using BarcodeBase1D::DrawInFormat;
  using BarcodeBase1D::DrawKind;
  using BarcodeBase1D::Options;
  using BarcodeBase1D::PlainDrawing;

  float BarHeight() const { return m_barHeight; }

  LayoutFunction layout;
  std::function<std::optional<Box>(const std::string& text, const Box& box)> drawnBox;

 protected:
  std::optional<SymbolDrawing> Layout(const std::string& text, const DrawContext& context) const override {
    return layout(text, context);
  }
  std::optional<Box> DrawnBox(const std::string& text, const Box& box) const override {
    return drawnBox ? drawnBox(text, box) : BarcodeBase1D::DrawnBox(text, box);
  }
};

// Two bars without text.
SymbolDrawing TwoBars() {
  SymbolDrawing symbol;
  symbol.drawing.bars = {{1, 2, 3, 4}, {6, 0, 1, 8}};
  symbol.drawing.drawnWidth = 7.5F;
  symbol.drawing.barHeight = 8;
  return symbol;
}

LayoutFunction Always(const SymbolDrawing& symbol) {
  return [symbol](const std::string&, const DrawContext&) { return symbol; };
}

std::optional<SymbolDrawing> LayOutNothing(const std::string& /*text*/, const DrawContext& /*context*/) {
  return std::nullopt;
}

std::optional<SymbolDrawing> Refuse(const std::string& text, const DrawContext& /*context*/) {
  throw std::runtime_error("cannot draw " + text);
}

Image Picture(Strip& strip) {
  Image image;
  (void)CaptureInternal([&] { image = test::DecodePng(strip.GetImageData()); });
  return image;
}

Captured Draw(Strip& strip, bool drawn, const Box& box = {0, 0, 10, 8}) {
  return CaptureInternal([&] { EXPECT_EQ(strip.Draw("text", box.x, box.y, box.width, box.height), drawn); });
}

// A strip whose picture and document are those of TwoBars, with the layout of the next draw.
struct Drawn {
  explicit Drawn(LayoutFunction next) : strip("svg") {
    strip.layout = Always(TwoBars());
    (void)Draw(strip, true);
    document = strip.GetSvgDocument();
    strip.SetOutputFormat("png");
    (void)Draw(strip, true);
    picture = Picture(strip);
    strip.layout = std::move(next);
  }

  Strip strip;
  std::string document;
  Image picture;
};

TEST(BarcodeBase1D, TheRasterPaintsTheBarsAndEndsWithTheSizeReport) {
  Strip strip("png");
  strip.layout = Always(TwoBars());
  strip.SetForegroundColor(200, 0, 0, 100);
  strip.SetBackgroundColor(0, 0, 200, 50);
  const Captured captured = Draw(strip, true);
  EXPECT_EQ(captured.out, test::SizeReport(10, 8, "7.5"));
  EXPECT_EQ(captured.err, "");
  const Image image = Picture(strip);
  ASSERT_EQ(image.width, 10);
  ASSERT_EQ(image.height, 8);
  for (int y = 0; y < 8; ++y) {
    for (int x = 0; x < 10; ++x) {
      const bool isBar = (x >= 1 && x < 4 && y >= 2 && y < 6) || x == 6;
      ASSERT_EQ(image.At(x, y), (isBar ? Pixel{200, 0, 0, 100} : Pixel{0, 0, 200, 50})) << x << ", " << y;
    }
  }
  EXPECT_EQ(strip.BarHeight(), 8);
}

TEST(BarcodeBase1D, TheVectorDrawWritesTheBarsAndPrintsNothing) {
  Strip strip("svg");
  strip.layout = Always(TwoBars());
  strip.SetForegroundColor(200, 0, 0, 255);
  strip.SetBackgroundColor(0, 0, 200, 51);
  const Captured captured = Draw(strip, true);
  EXPECT_EQ(captured.out, "");
  EXPECT_EQ(captured.err, "");
  EXPECT_EQ(strip.GetSvgDocument(),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<svg xmlns=\"http://www.w3.org/2000/svg\" version=\"1.1\" width=\"10\" height=\"8\" "
            "viewBox=\"0 0 10 8\">\n"
            "  <rect x=\"0.00\" y=\"0.00\" width=\"10.00\" height=\"8.00\" fill=\"rgb(0,0,200)\" "
            "fill-opacity=\"0.20\"/>\n"
            "  <rect x=\"1.00\" y=\"2.00\" width=\"3.00\" height=\"4.00\" fill=\"rgb(200,0,0)\"/>\n"
            "  <rect x=\"6.00\" y=\"0.00\" width=\"1.00\" height=\"8.00\" fill=\"rgb(200,0,0)\"/>\n"
            "</svg>\n");
  EXPECT_EQ(strip.BarHeight(), 8);
}

TEST(BarcodeBase1D, DrawSvgIsTheVectorDrawWhateverTheFormat) {
  Strip strip("png");
  strip.layout = Always(TwoBars());
  const Captured captured = CaptureInternal([&] { EXPECT_TRUE(strip.DrawSvg("text", 0, 0, 10, 8)); });
  EXPECT_EQ(captured.out, "");
  EXPECT_EQ(test::BarElements(strip.GetSvgDocument()).size(), 2U);
  EXPECT_THAT(Picture(strip).pixels, IsEmpty());
}

// ---- what a layout is told ----

TEST(BarcodeBase1D, TheLayoutIsToldTextBoxAndGrid) {
  Strip strip("png");
  std::vector<std::pair<std::string, PixelGrid>> calls;
  strip.layout = [&](const std::string& text, const DrawContext& context) {
    calls.emplace_back(text, context.grid);
    EXPECT_EQ(context.box, (Box{3, 4, 50, 20}));
    return TwoBars();
  };
  (void)Draw(strip, true, {3, 4, 50, 20});
  strip.SetOutputFormat("svg");
  (void)Draw(strip, true, {3, 4, 50, 20});
  EXPECT_THAT(calls, ElementsAre(std::pair(std::string("text"), PixelGrid::kWhole),
                                 std::pair(std::string("text"), PixelGrid::kFractional)));
}

TEST(BarcodeBase1D, OnlyTheRasterMeasuresText) {
  Strip strip("png");
  std::vector<std::optional<TextExtent>> measures;
  strip.layout = [&](const std::string&, const DrawContext& context) {
    measures.push_back(context.measure("0000", 20));
    return TwoBars();
  };
  (void)Draw(strip, true);
  strip.SetOutputFormat("svg");
  (void)Draw(strip, true);
  ASSERT_EQ(measures.size(), 2U);
  ASSERT_TRUE(measures[0]);
  const std::optional<TextExtent> font = MeasureText("0000", 20);
  ASSERT_TRUE(font);
  EXPECT_EQ(measures[0]->width, font->width);
  EXPECT_EQ(measures[0]->height, font->height);
  EXPECT_FALSE(measures[1]);
}

TEST(BarcodeBase1D, TheOptionsAreThoseThatWereSet) {
  Strip strip("png");
  LinearOptions options = strip.Options();
  EXPECT_TRUE(options.text.show);
  EXPECT_EQ(options.text.fontScale, 1);
  EXPECT_EQ(options.text.marginScale, 1);
  EXPECT_EQ(options.text.gap, 1);
  EXPECT_TRUE(options.text.evenSpacing);
  EXPECT_FALSE(options.fitWidth);
  EXPECT_EQ(options.pxAdjustBlack, 0);
  EXPECT_EQ(options.pxAdjustWhite, 0);
  strip.SetShowText(false);
  strip.SetTextFontScale(2);
  strip.SetTextGap(3);
  strip.SetTextEvenSpacing(false);
  strip.SetFitWidth(true);
  strip.SetPxAdjustBlack(4);
  strip.SetPxAdjustWhite(-5);
  options = strip.Options();
  EXPECT_FALSE(options.text.show);
  EXPECT_EQ(options.text.fontScale, 2);
  EXPECT_EQ(options.text.gap, 3);
  EXPECT_FALSE(options.text.evenSpacing);
  EXPECT_TRUE(options.fitWidth);
  EXPECT_EQ(options.pxAdjustBlack, 4);
  EXPECT_EQ(options.pxAdjustWhite, -5);
}

TEST(BarcodeBase1D, ThePlainDrawingIsThePlainLayoutWithTheseOptions) {
  Strip strip("png");
  strip.SetPxAdjustBlack(1);
  const Box box{1, 2, 100, 50};
  const TextMeasure measure = [](const std::string&, int) { return std::nullopt; };
  const SymbolDrawing symbol = strip.PlainDrawing({1, 2, 3}, "AB", {box, PixelGrid::kFractional, measure});
  const Drawing layout = LayoutLinear({1, 2, 3}, "AB", box, strip.Options(), PixelGrid::kFractional);
  EXPECT_EQ(symbol.drawing.bars, layout.bars);
  EXPECT_EQ(symbol.drawing.texts, layout.texts);
  EXPECT_EQ(symbol.drawing.drawnWidth, layout.drawnWidth);
  EXPECT_EQ(symbol.report, "");
}

// ---- texts ----

TextRun TextAt(std::string text, TextAnchor anchor, double x) {
  TextRun run;
  run.text = std::move(text);
  run.size = 16;
  run.anchor = anchor;
  run.x = x;
  run.box.top = 10.5;
  return run;
}

std::string TextElement(const std::string& x, const std::string& anchor, const std::string& text) {
  return "  <text x=\"" + x +
         "\" y=\"10.50\" font-family=\"Arial, sans-serif\" font-size=\"16\" fill=\"rgb(0,0,0)\" "
         "text-anchor=\"" +
         anchor + "\" dominant-baseline=\"hanging\">" + text + "</text>";
}

TEST(BarcodeBase1D, VectorTextsStandByTheirAnchorsBehindTheBars) {
  SymbolDrawing symbol = TwoBars();
  symbol.drawing.texts = {TextAt("start", TextAnchor::kStart, 2.5), TextAt("middle", TextAnchor::kMiddle, 30),
                          TextAt("abc", TextAnchor::kMiddle, 0)};
  symbol.drawing.texts[2].spacing = EvenSpacing{.first = -5, .pitch = 7};
  Strip strip("svg");
  strip.layout = Always(symbol);
  (void)Draw(strip, true);
  const std::string& document = strip.GetSvgDocument();
  EXPECT_THAT(test::SvgElements(document, "text"),
              ElementsAre(TextElement("2.50", "start", "start"), TextElement("30.00", "middle", "middle"),
                          TextElement("-5.00", "middle", "a"), TextElement("2.00", "middle", "b"),
                          TextElement("9.00", "middle", "c")));
  EXPECT_LT(document.rfind("<rect"), document.find("<text"));
}

TEST(BarcodeBase1D, RasterTextsStandByTheirAnchors) {
  const auto columnsOf = [](TextRun run) {
    SymbolDrawing symbol;
    symbol.drawing.texts = {std::move(run)};
    Strip strip("png");
    strip.layout = Always(symbol);
    (void)Draw(strip, true, {0, 0, 200, 40});
    return test::InkedColumns(Picture(strip), 0);
  };
  ASSERT_TRUE(InitTextRendering());
  const int width = MeasureText("00000", 16).value().width;
  const std::vector<int> start = columnsOf(TextAt("00000", TextAnchor::kStart, 100));
  ASSERT_FALSE(start.empty());
  EXPECT_NEAR(start.front(), 100, 3);
  EXPECT_NEAR(start.back(), 100 + width, 3);
  const auto movedBy = [&](int pixels) {
    std::vector<int> columns = start;
    for (int& column : columns) {
      column += pixels;
    }
    return columns;
  };
  EXPECT_EQ(columnsOf(TextAt("00000", TextAnchor::kMiddle, 100)), movedBy(-(width / 2)));
  TextRun within = TextAt("00000", TextAnchor::kWithin, 50);
  within.width = 120;
  EXPECT_EQ(columnsOf(within), movedBy(-50 + (120 - width) / 2));
}

// ---- draws that fail ----

TEST(BarcodeBase1D, ALayoutOfNothingFailsWithoutAWord) {
  Drawn drawn(LayOutNothing);
  const Captured raster = Draw(drawn.strip, false);
  EXPECT_EQ(raster.out, "");
  EXPECT_EQ(raster.err, "");
  EXPECT_TRUE(test::IsBlank(Picture(drawn.strip)));
  drawn.strip.SetOutputFormat("svg");
  const Captured vector = Draw(drawn.strip, false);
  EXPECT_EQ(vector.out, "");
  EXPECT_EQ(vector.err, "");
  EXPECT_EQ(drawn.strip.GetSvgDocument(), drawn.document);
}

TEST(BarcodeBase1D, AnExceptionBecomesTagAndMessage) {
  Drawn drawn(Refuse);
  const Captured raster = Draw(drawn.strip, false);
  EXPECT_EQ(raster.out, "");
  EXPECT_EQ(raster.err, "[Strip] cannot draw text\n");
  EXPECT_TRUE(test::IsBlank(Picture(drawn.strip)));
  drawn.strip.SetOutputFormat("svg");
  const Captured vector = Draw(drawn.strip, false);
  EXPECT_EQ(vector.out, "");
  EXPECT_EQ(vector.err, "[Strip] cannot draw text\n");
  EXPECT_EQ(drawn.strip.GetSvgDocument(), drawn.document);
  EXPECT_NE(drawn.document, "");
}

TEST(BarcodeBase1D, AFailedDrawLeavesTheResultsOfTheLastOne) {
  Drawn drawn(Refuse);
  (void)Draw(drawn.strip, false);
  drawn.strip.layout = LayOutNothing;
  (void)Draw(drawn.strip, false);
  EXPECT_EQ(drawn.strip.BarHeight(), 8);
}

TEST(BarcodeBase1D, WithoutCanvasNothingIsLaidOut) {
  Strip strip("gif");
  strip.layout = Refuse;
  const Captured unknown = Draw(strip, false);
  EXPECT_EQ(unknown.err, "");
  EXPECT_EQ(unknown.out, "");
  strip.SetOutputFormat("png");
  const Captured impossible = Draw(strip, false, {0, 0, 0xFFFFFFFF, 8});
  EXPECT_THAT(impossible.err, StartsWith("サーフェス作成に失敗: "));
  EXPECT_EQ(impossible.err.find("[Strip]"), std::string::npos);
}

// ---- the box ----

TEST(BarcodeBase1D, ABoxThatIsRefusedChangesNothingAndIsSilent) {
  Drawn drawn(Refuse);
  drawn.strip.drawnBox = [](const std::string&, const Box&) { return std::nullopt; };
  for (const char* const format : {"png", "svg"}) {
    drawn.strip.SetOutputFormat(format);
    const Captured captured = Draw(drawn.strip, false, {0, 0, 30, 30});
    EXPECT_EQ(captured.out, "") << format;
    EXPECT_EQ(captured.err, "") << format;
  }
  const Captured captured = CaptureInternal([&] { EXPECT_FALSE(drawn.strip.DrawSvg("text", 0, 0, 30, 30)); });
  EXPECT_EQ(captured.err, "");
  EXPECT_EQ(drawn.strip.GetSvgDocument(), drawn.document);
  EXPECT_EQ(Picture(drawn.strip), drawn.picture);
}

TEST(BarcodeBase1D, TheDrawnBoxIsTheBoxOfPictureAndReport) {
  Strip strip("png");
  Box asked;
  strip.drawnBox = [&](const std::string& text, const Box& box) {
    EXPECT_EQ(text, "text");
    asked = box;
    return Box{box.x, box.y, 20, 12};
  };
  strip.layout = [](const std::string&, const DrawContext& context) {
    EXPECT_EQ(context.box, (Box{1, 2, 20, 12}));
    return TwoBars();
  };
  EXPECT_EQ(Draw(strip, true, {1, 2, 10, 8}).out, test::SizeReport(20, 12, "7.5"));
  EXPECT_EQ(asked, (Box{1, 2, 10, 8}));
  EXPECT_EQ(Picture(strip).width, 20);
  EXPECT_EQ(Picture(strip).height, 12);
  strip.SetOutputFormat("svg");
  (void)Draw(strip, true, {1, 2, 10, 8});
  EXPECT_NE(strip.GetSvgDocument().find("width=\"20\" height=\"12\""), std::string::npos);
}

// ---- reports ----

TEST(BarcodeBase1D, ALineOfItsOwnReplacesTheSizeReport) {
  SymbolDrawing symbol = TwoBars();
  symbol.report = "Strip: text (CD=7)";
  for (const char* const format : {"png", "svg"}) {
    Strip strip(format);
    strip.layout = Always(symbol);
    EXPECT_EQ(Draw(strip, true).out, "Strip: text (CD=7)\n") << format;
  }
}

TEST(BarcodeBase1D, TheSizeReportNamesTheCanvasThatRemains) {
  Drawn drawn(Always(TwoBars()));
  drawn.strip.SetOutputFormat("gif");
  EXPECT_EQ(Draw(drawn.strip, true, {0, 0, 300, 100}).out,
            "指定サイズ: width=300, height=100\n実際の描画サイズ: width=7.5\n"
            "サーフェスサイズ: width=10, height=8\n");
}

// ---- a second drawing beside Draw ----

TEST(BarcodeBase1D, AnotherKindOfDrawHasItsOwnTagLayoutAndFontError) {
  Strip strip("png");
  strip.layout = Refuse;
  strip.drawnBox = [](const std::string&, const Box&) { return std::nullopt; };  // asked by Draw alone
  const auto draw = [&](const Strip::DrawKind& kind, bool drawn) {
    return CaptureInternal([&] { EXPECT_EQ(strip.DrawInFormat(kind, {0, 0, 10, 8}), drawn); });
  };
  Strip::DrawKind kind{.tag = "[Other] ", .fontError = "no font: "};
  kind.layout = [](const DrawContext&) -> std::optional<SymbolDrawing> {
    throw std::runtime_error("refused");
  };
  EXPECT_EQ(draw(kind, false).err, "[Other] refused\n");

  TextRun huge = TextAt("text", TextAnchor::kStart, 0);
  huge.size = 100'000;  // beyond the font library
  SymbolDrawing symbol = TwoBars();
  symbol.drawing.texts = {huge};
  kind.layout = [&](const DrawContext& context) {
    EXPECT_EQ(context.grid, PixelGrid::kWhole);
    return symbol;
  };
  const Captured raster = draw(kind, true);
  EXPECT_EQ(raster.out, test::SizeReport(10, 8, "7.5"));
  EXPECT_NE(raster.err.find("\nno font: "), std::string::npos) << raster.err;
  EXPECT_EQ(Picture(strip).At(6, 0), test::kBlackPixel);

  strip.SetOutputFormat("svg");
  kind.layout = [&](const DrawContext& context) {
    EXPECT_EQ(context.grid, PixelGrid::kFractional);
    return symbol;
  };
  const Captured vector = draw(kind, true);
  EXPECT_EQ(vector.out, "");
  EXPECT_EQ(vector.err, "");
  EXPECT_EQ(test::SvgElements(strip.GetSvgDocument(), "text").size(), 1U);
}

TEST(BarcodeBase1D, DrawNamesFontsThatCannotBeOpenedInItsOwnWords) {
  TextRun huge = TextAt("text", TextAnchor::kStart, 0);
  huge.size = 100'000;
  SymbolDrawing symbol = TwoBars();
  symbol.drawing.texts = {huge};
  Strip strip("png");
  strip.layout = Always(symbol);
  const Captured captured = Draw(strip, true);
  EXPECT_NE(captured.err.find("\nTTF_OpenFont error: "), std::string::npos) << captured.err;
}

}  // namespace
}  // namespace barcode
