#include <gtest/gtest.h>

#include <cstddef>
#include <random>
#include <string>
#include <string_view>

#include "label/drawings.h"
#include "label/writers.h"
#include "label_proof/picture.h"
#include "linear/code39_encoder.h"
#include "qr/qr_encoder.h"

namespace barcode::label {
namespace {

using barcode::test::GreyOfSvg;

std::string Between(const std::string& text, std::string_view before, std::string_view after) {
  const std::size_t begin = text.find(before);
  if (begin == std::string::npos) {
    return "none";
  }
  const std::size_t from = begin + before.size();
  return text.substr(from, text.find(after, from) - from);
}

Drawing OneBar() {
  Drawing drawing;
  drawing.width = 30;
  drawing.height = 20;
  drawing.dark = {{4, 1, 2, 17}};
  drawing.title = "A";
  return drawing;
}

TEST(LabelSvg, WholeDocument) {
  Drawing drawing = OneBar();
  drawing.dark = {{4, 1, 2, 17}, {8, 1, 4, 17}};
  EXPECT_EQ(WriteSvg(drawing),
            "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"30\" height=\"20\" viewBox=\"0 0 30 20\" "
            "role=\"img\"><title>A</title><path fill=\"#fff\" d=\"M0 0h30v20H0\"/>"
            "<path shape-rendering=\"crispEdges\" stroke=\"#000\" stroke-width=\"17\" "
            "d=\"M4 9.5h2m2 0h4\"/></svg>\n");
}

TEST(LabelSvg, PhysicalSizeIsInMillimetres) {
  Drawing drawing = OneBar();
  drawing.dpi = 300;
  EXPECT_EQ(Between(WriteSvg(drawing), "2000/svg\" ", " role"),
            "width=\"2.54mm\" height=\"1.6933333mm\" viewBox=\"0 0 30 20\"");
  drawing.dpi = 50;
  drawing.width = 100'000'000;
  drawing.height = 1;
  EXPECT_EQ(Between(WriteSvg(drawing), "width=\"", "\""), "50800000mm");
  drawing.dpi = 4'800;
  drawing.width = 1;
  EXPECT_EQ(Between(WriteSvg(drawing), "width=\"", "\""), "0.0052916667mm");
}

TEST(LabelSvg, Colours) {
  Drawing drawing = OneBar();
  drawing.foreground = {18, 52, 86, 255};
  drawing.background = {170, 187, 204, 51};
  const std::string document = WriteSvg(drawing);
  EXPECT_NE(document.find("<path fill=\"#abc\" fill-opacity=\".2\" d"), std::string::npos);
  EXPECT_NE(document.find("stroke=\"#123456\" stroke-width"), std::string::npos);
  drawing.foreground.a = 128;
  drawing.background.a = 0;
  const std::string translucent = WriteSvg(drawing);
  EXPECT_NE(translucent.find("stroke=\"#123456\" stroke-opacity=\".502\""), std::string::npos);
  EXPECT_EQ(translucent.find("fill"), std::string::npos);
}

TEST(LabelSvg, TitleIsEscaped) {
  Drawing drawing = OneBar();
  const auto titleOf = [&drawing](std::string_view title) {
    drawing.title = title;
    const std::string document = WriteSvg(drawing);
    // The renderer's parser refuses what is not well-formed.
    EXPECT_EQ(GreyOfSvg(document, drawing.width, drawing.height).width, drawing.width) << title;
    return Between(document, "<title>", "</title>");
  };
  using std::string_view_literals::operator""sv;
  EXPECT_EQ(titleOf(""), "");
  EXPECT_EQ(titleOf("a<b & \"c\" ]]>"), "a&lt;b &amp; &quot;c&quot; ]]&gt;");
  EXPECT_EQ(titleOf("<!--<![CDATA[&#0;"), "&lt;!--&lt;![CDATA[&amp;#0;");
  EXPECT_EQ(titleOf("\t\n\r"), "\t\n&#13;");
  EXPECT_EQ(titleOf("\0\x1D\x7F"sv), "\uFFFD\uFFFD\x7F");
  EXPECT_EQ(titleOf("\u3042\U0001F600"), "\u3042\U0001F600");
  EXPECT_EQ(titleOf("\xEF\xBF\xBE\xEF\xBF\xBF"), "\uFFFD\uFFFD");            // U+FFFE, U+FFFF
  EXPECT_EQ(titleOf("\xED\xA0\x80|\xC0\x80|\xFF"), "\uFFFD|\uFFFD|\uFFFD");  // a surrogate; overlong; no lead
  EXPECT_EQ(titleOf("\xE3\x81"), "\uFFFD");
}

TEST(LabelSvg, AParserRefusesWhatIsNotEscaped) {
  std::string document = WriteSvg(OneBar());
  document.replace(document.find("<title>A"), 8, "<title>&");
  EXPECT_EQ(GreyOfSvg(document, 30, 20).width, 0);
}

TEST(LabelSvg, AnyBytesInTheTitle) {
  std::mt19937 random(3);
  Drawing drawing = OneBar();
  for (int i = 0; i < 300; ++i) {
    drawing.title.resize(random() % 40);
    for (char& byte : drawing.title) {
      byte = static_cast<char>(random());
    }
    ASSERT_EQ(GreyOfSvg(WriteSvg(drawing), 30, 20).width, 30) << i;
  }
}

TEST(LabelSvg, BarsAreCountedInModules) {
  Drawing drawing = OneBar();
  drawing.dark = {{7, 3, 6, 12}, {16, 3, 3, 12}};
  EXPECT_NE(
      WriteSvg(drawing).find("stroke-width=\"4\" transform=\"translate(7 3)scale(3)\" d=\"M0 2h2m1 0h1\""),
      std::string::npos);
  // Modules of the height of the lines need no width.
  drawing.dark = {{0, 0, 5, 5}, {10, 5, 15, 5}};
  EXPECT_NE(WriteSvg(drawing).find("stroke=\"#000\" transform=\"scale(5)\" d=\"M0 0.5h1m1 1h3\""),
            std::string::npos);
}

TEST(LabelSvg, RunsAreMerged) {
  Drawing drawing = OneBar();
  drawing.dark = {{4, 1, 2, 1}, {6, 1, 1, 1}, {7, 1, 3, 1}, {4, 2, 1, 1}};
  EXPECT_EQ(Between(WriteSvg(drawing), "stroke=\"#000\"", "/>"), " d=\"M4 1.5h6m-6 1h1\"");
}

TEST(LabelSvg, TurnedBarsAreLinesDown) {
  Drawing drawing = OneBar();
  drawing.dark = {{1, 4, 17, 3}, {1, 9, 17, 1}};
  EXPECT_EQ(Between(WriteSvg(drawing), "crispEdges\"", "/>"),
            " stroke=\"#000\" stroke-width=\"17\" d=\"M9.5 4v3m0 2v1\"");
}

TEST(LabelSvg, BarsOfSeveralHeightsOnOneLineAreAComb) {
  Drawing drawing = OneBar();
  drawing.dark = {{4, 1, 2, 17}, {8, 1, 3, 12}};
  EXPECT_EQ(Between(WriteSvg(drawing), "crispEdges\"", "/>"), " d=\"M4 1V18h2V1h2V13h3V1\"");
}

TEST(LabelSvg, OtherBarsAreAreas) {
  Drawing drawing = OneBar();
  drawing.dark = {{4, 1, 2, 17}, {8, 3, 3, 12}};
  EXPECT_EQ(Between(WriteSvg(drawing), "crispEdges\"", "/>"), " d=\"m4 1h2v17h-2zm4 2h3v12h-3z\"");
}

TEST(LabelSvg, TextIsOnePathOfItsOwn) {
  Drawing drawing = OneBar();
  drawing.texts = {test::TextAt("1", 16, 3.25, 15)};
  const std::string document = WriteSvg(drawing);
  const std::string text = document.substr(document.rfind("<path"));
  EXPECT_TRUE(text.starts_with("<path transform=\"translate(3.25 15)scale(.125)\" d=\"m")) << text;
  EXPECT_EQ(text.find("crispEdges"), std::string::npos);
  drawing.texts = {test::TextAt("  ", 16, 3, 15)};
  EXPECT_EQ(WriteSvg(drawing), WriteSvg(OneBar()));
}

TEST(LabelSvg, NoBars) {
  Drawing drawing = OneBar();
  drawing.dark.clear();
  EXPECT_EQ(WriteSvg(drawing).find("crispEdges"), std::string::npos);
}

TEST(LabelSvg, DocumentsAreSmall) {
  std::mt19937 random(4);
  std::string text(2'000, ' ');
  for (char& character : text) {
    character = static_cast<char>(random());
  }
  const QrSymbol symbol = EncodeQr(text, {.level = QrLevel::kL});
  EXPECT_LT(WriteSvg(test::MatrixDrawing(symbol.matrix, 4)).size(), 60'000U);
  EXPECT_LT(WriteSvg(test::LinearDrawing(EncodeCode39("ABC-1234"), 2, 60)).size(), 700U);
}

}  // namespace
}  // namespace barcode::label
