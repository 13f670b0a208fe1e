// The symbologies that are drawn by the plain linear draw alone: what each adds to it.
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "support/barcode_object.h"
#include "support/capture.h"
#include "support/size_report.h"
#include "support/svg.h"

namespace barcode::test {
namespace {

struct Refusal {
  std::string text;
  std::string line;  // on standard error
};

struct PlainType {
  int type;
  std::string name;
  std::string text;
  std::string shown;
  int modules;  // of the symbol of that text
  std::vector<Refusal> refusals;
};

void PrintTo(const PlainType& plain, std::ostream* out) {
  *out << plain.name;
}

const std::vector<PlainType> kTypes = {
    {BARCODE_CODE93,
     "Code93",
     "abc!A",
     "abc!A",
     9 * 8 + 10,
     {{"", "[Code93] Empty string\n"}, {"a_b", "[Code93] Invalid character in CODE93: _\n"}}},
    {BARCODE_CODE128,
     "Code128",
     "ABC",
     "ABC",
     11 * 5 + 13,
     {{"", "[Code128] Empty string\n"}, {"A\x7F", "[Code128] No valid start\n"}}},
    {BARCODE_GS1_128,
     "GS1_128",
     "{FNC1}0104912345678904{FNC1}10ABC",
     "(01)04912345678904(10)ABC",
     11 * 17 + 13,
     {}},
    {BARCODE_NW7,
     "NW7",
     "a12b",
     "a12b",
     13 + 2 + 11 + 2 + 11 + 2 + 13,
     {{"", "[NW7] Empty string\n"},
      {"a12", "[NW7] Invalid start/stop character combination in NW7: A12\n"},
      {"1x", "[NW7] Invalid character in NW7: X\n"}}},
    {BARCODE_MATRIX_2OF5,
     "Matrix2of5",
     "79",
     "79",
     8 + 9 + 1 + 9 + 7,
     {{"", "[Matrix2of5] Empty string\n"},
      {"7A", "[Matrix2of5] Matrix 2 of 5 barcode requires numeric digits only\n"}}},
    {BARCODE_NEC_2OF5,
     "NEC2of5",
     "79",
     "79",
     8 + 9 + 1 + 9 + 7,
     {{"", "[NEC2of5] Empty string\n"},
      {" 7", "[NEC2of5] NEC 2 of 5 barcode requires numeric digits only\n"}}},
    {BARCODE_ITF,
     "ITF",
     "123",
     "0123",
     4 + 36 + 5,
     {{"", "[ITF] Empty string\n"}, {"1 2", "[ITF] ITF barcode requires numeric digits only\n"}}},
};

class PlainLinearTypes : public ::testing::TestWithParam<PlainType> {
 protected:
  BarcodeObject object{GetParam().type};

  int Draw(const std::string& text, int width = 400, int height = 60) {
    return barcode_draw_1d(object, text.c_str(), width, height);
  }
};

TEST_P(PlainLinearTypes, DrawsItsModulesInWholePixels) {
  const int width = 2 * GetParam().modules + 1;
  const auto captured = Capture([&] { EXPECT_EQ(Draw(GetParam().text, width), 1); });
  EXPECT_EQ(captured.err, "");
  EXPECT_EQ(captured.out, SizeReport(width, 60, std::to_string(width - 1)));
}

TEST_P(PlainLinearTypes, BothOutputsHaveTheSameBars) {
  ASSERT_EQ(Draw(GetParam().text), 1);
  const std::vector<int> runs = RunsOfRow(object.Picture(), 0);
  const auto rects = SvgElements(object.SvgOf(GetParam().text, 400, 60), "rect");
  std::size_t run = 0;
  int pen = 0;
  for (std::size_t bar = 1; bar < rects.size(); ++bar) {  // the first is the background
    ASSERT_LT(run, runs.size());
    EXPECT_EQ(Attribute(rects[bar], "x"), std::to_string(pen) + ".00");
    EXPECT_EQ(Attribute(rects[bar], "width"), std::to_string(runs[run]) + ".00");
    EXPECT_EQ(Attribute(rects[bar], "y"), "0.00");
    EXPECT_EQ(Attribute(rects[bar], "height"), "45.00");  // 60 - 12 - 3
    pen += runs[run] + (run + 1 < runs.size() ? runs[run + 1] : 0);
    run += 2;
  }
  EXPECT_GE(run + 1, runs.size());
}

TEST_P(PlainLinearTypes, ShowsItsText) {
  barcode_set_text_even_spacing(object, 0);
  const auto texts = SvgElements(object.SvgOf(GetParam().text, 400, 60), "text");
  ASSERT_EQ(texts.size(), 1U);
  EXPECT_NE(texts[0].find(">" + GetParam().shown + "</text>"), std::string::npos) << texts[0];
}

// GS1-128 accepts every text; the others refuse some.
class RefusingTypes : public PlainLinearTypes {};

std::vector<PlainType> TypesThatRefuse() {
  std::vector<PlainType> types;
  std::copy_if(kTypes.begin(), kTypes.end(), std::back_inserter(types),
               [](const PlainType& plain) { return !plain.refusals.empty(); });
  return types;
}

TEST_P(RefusingTypes, RefusedTextsGiveOneLineAndAnEmptyCanvas) {
  for (const Refusal& refusal : GetParam().refusals) {
    ASSERT_EQ(Draw(GetParam().text), 1);
    const auto captured = Capture([&] { EXPECT_EQ(Draw(refusal.text), 0); });
    EXPECT_EQ(captured.err, refusal.line);
    EXPECT_EQ(captured.out, "");
    const Image image = object.Picture();
    EXPECT_EQ(image.width, 400);
    EXPECT_TRUE(IsBlank(image));
  }
}

TEST_P(RefusingTypes, RefusedTextsKeepTheEarlierSvgDocument) {
  const std::string document = object.SvgOf(GetParam().text, 400, 60);
  EXPECT_NE(document, "");
  for (const Refusal& refusal : GetParam().refusals) {
    const auto captured = Capture([&] { EXPECT_EQ(Draw(refusal.text), 0); });
    EXPECT_EQ(captured.err, refusal.line);
    EXPECT_EQ(barcode_get_svg(object), document);
  }
}

constexpr auto kName = [](const ::testing::TestParamInfo<PlainType>& info) { return info.param.name; };
INSTANTIATE_TEST_SUITE_P(Types, PlainLinearTypes, ::testing::ValuesIn(kTypes), kName);
INSTANTIATE_TEST_SUITE_P(Types, RefusingTypes, ::testing::ValuesIn(TypesThatRefuse()), kName);

std::string ShownText(BarcodeHandle handle, const char* text) {
  barcode_set_output_format(handle, "svg");
  barcode_set_text_even_spacing(handle, 0);
  EXPECT_EQ(barcode_draw_1d(handle, text, 300, 100), 1);
  const auto texts = SvgElements(barcode_get_svg(handle), "text");
  if (texts.empty()) {
    return "";
  }
  const std::size_t begin = texts[0].find('>') + 1;
  return texts[0].substr(begin, texts[0].find('<', begin) - begin);
}

TEST(Code39Draw, StartAndStopMayBeHidden) {
  const BarcodeObject code(BARCODE_CODE39);
  EXPECT_EQ(ShownText(code, "abc"), "*abc*");
  barcode_set_show_start_stop(code, 0);
  EXPECT_EQ(ShownText(code, "abc"), "abc");
  barcode_set_show_start_stop(code, 1);
  EXPECT_EQ(ShownText(code, "abc"), "*abc*");
}

TEST(Code39Draw, HidingStartAndStopLeavesTheBars) {
  const BarcodeObject code(BARCODE_CODE39);
  const auto bars = SvgElements(code.SvgOf("ABC", 300, 100), "rect");
  EXPECT_EQ(bars.size(), 1U + 5 * 5);
  barcode_set_show_start_stop(code, 0);
  EXPECT_EQ(SvgElements(code.SvgOf("ABC", 300, 100), "rect"), bars);
}

TEST(Nw7Draw, StartAndStopMayBeHidden) {
  const BarcodeObject code(BARCODE_NW7);
  EXPECT_EQ(ShownText(code, "a12B"), "a12B");
  barcode_set_show_start_stop(code, 0);
  EXPECT_EQ(ShownText(code, "a12B"), "12");
  EXPECT_EQ(ShownText(code, "12"), "12");
  EXPECT_EQ(ShownText(code, "A"), "");
  barcode_set_show_start_stop(code, 1);
  EXPECT_EQ(ShownText(code, "a12B"), "a12B");
}

TEST(Nw7Draw, HidingStartAndStopLeavesTheBars) {
  const BarcodeObject code(BARCODE_NW7);
  const auto bars = SvgElements(code.SvgOf("A12B", 300, 100), "rect");
  barcode_set_show_start_stop(code, 0);
  EXPECT_EQ(SvgElements(code.SvgOf("A12B", 300, 100), "rect"), bars);
}

TEST(Code128Draw, CodeModesByKeyword) {
  const BarcodeObject code(BARCODE_CODE128);
  const std::string automatic = code.SvgOf("1234", 300, 100);
  std::vector<std::string> documents;
  for (const char* const mode : {"A", "B", "C"}) {
    barcode_set_code_mode(code, mode);
    documents.push_back(code.SvgOf("1234", 300, 100));
  }
  EXPECT_NE(documents[0], documents[1]);
  EXPECT_NE(documents[1], documents[2]);
  EXPECT_EQ(documents[2], automatic);
  // Unknown keywords and none at all leave set C.
  barcode_set_code_mode(code, "auto");
  barcode_set_code_mode(code, nullptr);
  EXPECT_EQ(code.SvgOf("1234", 300, 100), documents[2]);
  EXPECT_EQ(code.SvgOf("123a", 300, 100), "");
  barcode_set_code_mode(code, "AUTO");
  EXPECT_NE(code.SvgOf("123a", 300, 100), "");
}

// The element widths of a Code 128 symbol of so many values, the stop value included.
std::string ElementsOf(const BarcodeObject& code, const char* text, int values) {
  barcode_set_show_text(code, 0);
  EXPECT_EQ(barcode_draw_1d(code, text, 11 * values + 2, 10), 1);
  std::string elements;
  for (const int run : RunsOfRow(code.Picture(), 0)) {
    elements += std::to_string(run);
  }
  return elements;
}

TEST(Code128Draw, KeywordsChooseTheCodeSet) {
  const BarcodeObject code(BARCODE_CODE128);
  barcode_set_code_mode(code, "A");
  EXPECT_EQ(ElementsOf(code, "12", 5),
            "211412"  // start A
            "211331"  // 49
            "231131"  // 50
            "113321"  // (103 + 49 + 2 * 50) % 103 = 46
            "2331112");
  barcode_set_code_mode(code, "B");
  EXPECT_EQ(ElementsOf(code, "12", 5),
            "211214"  // start B
            "123221"  // 17
            "223211"  // 18
            "311123"  // (104 + 17 + 2 * 18) % 103 = 54
            "2331112");
  barcode_set_code_mode(code, "C");
  EXPECT_EQ(ElementsOf(code, "12", 4),
            "211232"  // start C
            "112232"  // 12
            "122231"  // (105 + 12) % 103 = 14
            "2331112");
}

TEST(Code128Draw, IsAutomaticByDefaultAndAgainByKeyword) {
  const BarcodeObject code(BARCODE_CODE128);
  const std::string digits = code.SvgOf("1234", 300, 100);
  const std::string mixed = code.SvgOf("a\x01", 300, 100);  // in no set alone
  EXPECT_NE(digits, "");
  EXPECT_NE(mixed, "");
  barcode_set_code_mode(code, "B");
  EXPECT_NE(code.SvgOf("1234", 300, 100), digits);
  EXPECT_EQ(code.SvgOf("a\x01", 300, 100), "");
  barcode_set_code_mode(code, "AUTO");
  EXPECT_EQ(code.SvgOf("1234", 300, 100), digits);
  EXPECT_EQ(code.SvgOf("a\x01", 300, 100), mixed);
}

TEST(Code128Draw, OtherKeywordsChangeNothing) {
  const BarcodeObject code(BARCODE_CODE128);
  for (const char* const mode : {"A", "B", "C", "AUTO"}) {
    barcode_set_code_mode(code, mode);
    const std::string document = code.SvgOf("1234", 300, 100);
    for (const char* const keyword : {"", "a", "auto", "D", "AUTO ", " B"}) {
      barcode_set_code_mode(code, keyword);
      EXPECT_EQ(code.SvgOf("1234", 300, 100), document) << mode << " then " << keyword;
    }
  }
}

TEST(Code128Draw, ShowsTheTextAsGiven) {
  EXPECT_EQ(ShownText(BarcodeObject(BARCODE_CODE128), "a\x01 1"), "a\x01 1");
}

TEST(Code128Draw, FixedSetsNameWhatTheyRefuse) {
  const BarcodeObject code(BARCODE_CODE128);
  const auto errorOf = [&](const char* mode, const char* text) {
    barcode_set_code_mode(code, mode);
    return Capture([&] { EXPECT_EQ(barcode_draw_1d(code, text, 300, 100), 0); }).err;
  };
  EXPECT_EQ(errorOf("A", "a"), "[Code128] Invalid char for CODE_A\n");
  EXPECT_EQ(errorOf("B", "\x7F"), "[Code128] Invalid char for CODE_B\n");
  EXPECT_EQ(errorOf("C", "12345"), "[Code128] Not 2-digit at pos=4\n");
}

TEST(Code128Draw, TheModeIsNoOptionOfOtherTypes) {
  const BarcodeObject code(BARCODE_CODE93);
  const std::string document = code.SvgOf("1234", 300, 100);
  barcode_set_code_mode(code, "C");
  EXPECT_EQ(code.SvgOf("1234", 300, 100), document);
}

TEST(Gs1_128Draw, AnEmptyTextIsStartCheckAndStop) {
  const BarcodeObject code(BARCODE_GS1_128);
  const auto captured = Capture([&] { EXPECT_EQ(barcode_draw_1d(code, "", 100, 50), 1); });
  EXPECT_NE(captured.out.find("実際の描画サイズ: width=70\n"), std::string::npos);  // 11 + 11 + 13 modules
}

TEST(Gs1_128Draw, ABoxNarrowerThanTheSymbolClipsIt) {
  const BarcodeObject code(BARCODE_GS1_128);
  const auto captured = Capture([&] { EXPECT_EQ(barcode_draw_1d(code, "123ABC", 20, 50), 1); });
  EXPECT_NE(captured.out.find("実際の描画サイズ: width=101\n"), std::string::npos);  // 8 values and the stop
  EXPECT_EQ(code.Picture().width, 20);
}

}  // namespace
}  // namespace barcode::test
