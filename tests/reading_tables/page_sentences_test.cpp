// What README.md and docs/symbologies say in sentences of results that a host would not expect.
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <functional>
#include <string>

#include "label_proof/picture.h"
#include "label_proof/reading_rules.h"
#include "reading_tables/drawn.h"
#include "reading_tables/several_symbols.h"
#include "reading_tables/texts.h"
#include "reading_tables/zbar_at_a_till.h"
#include "support/barcode_object.h"
#include "support/capture.h"
#include "support/readers.h"

namespace barcode::test {
namespace {

// Readings of the one-row DataBar in black on white that are another number. The number itself is never read.
int WrongReadings(ReaderId reader, const std::function<std::optional<Reading>(const GreyImage&)>& read) {
  constexpr int kNumbers = 1000;
  RandomText random(20);
  int wrong = 0;
  for (int i = 0; i < kNumbers; ++i) {
    const std::string text = random.Digits(13, 13);
    const std::optional<GreyImage> picture = Drawn("mkbarcode library databar TEXT", text, 20);
    const std::optional<Reading> reading = read(picture.value());
    if (reading) {
      EXPECT_NE(reading->data,
                ExpectedData(reader, Symbology::kDataBar14, ContentOf(Symbology::kDataBar14, text)));
      ++wrong;
    }
  }
  return wrong;
}

TEST(PageSentences, DataBarInBlackOnWhiteReadsAsAnotherNumberNowAndThen) {
  EXPECT_EQ(WrongReadings(ReaderId::kZxing,
                          [](const GreyImage& picture) { return ReadWithZxing(picture, "DataBar"); }),
            8);
  EXPECT_EQ(WrongReadings(ReaderId::kZbar,
                          [](const GreyImage& picture) { return ReadWithZbar(picture, "databar"); }),
            8);
  ZbarAtATill till;
  EXPECT_EQ(WrongReadings(ReaderId::kZbar, [&](const GreyImage& picture) { return till.Read(picture); }), 41);
}

TEST(PageSentences, ZxingThatLooksForSeveralSymbolsEndsAtStackedDataBar) {
  for (const char* const command :
       {"mkbarcode library databar TEXT --symbol-type-14 STACKED",
        "mkbarcode library databar TEXT --symbol-type-14 STACKED_OMNIDIRECTIONAL",
        "mkbarcode library databar-expanded TEXT --stacked", "mkbarcode databar TEXT --form stacked",
        "mkbarcode databar TEXT --form stacked-omnidirectional",
        "mkbarcode databar-expanded TEXT --form stacked"}) {
    const bool isExpanded = std::string(command).find("expanded") != std::string::npos;
    const auto picture = Drawn(command, isExpanded ? "01950123456789033103001234" : "2001234567890", 20);
    EXPECT_EXIT(ReadSeveralWithZxing(picture.value()), testing::KilledBySignal(SIGABRT), "lineCount")
        << command;
  }
}

std::string QrBytes(const std::string& text, const char* encoding) {
  const BarcodeObject object(BARCODE_QR);
  barcode_set_string_encoding(object, encoding);
  Image picture;
  Capture([&] {
    barcode_draw_2d(object, text.c_str(), 210);
    picture = object.Picture();
  });
  const auto reading = ReadWithZxing(WithQuietZone(picture, 40));
  return reading ? reading->data : "nothing";
}

TEST(PageSentences, QrReplacesWhatTheCharacterSetLacks) {
  EXPECT_EQ(QrBytes("1\xE2\x82\xAC", "shift-jis"), "1?");
  EXPECT_EQ(QrBytes("A\xF0\x9F\x98\x80", "shift-jis"), "A??");
  EXPECT_EQ(QrBytes("A\x81\xAD", "utf-8"), "A\xE3\x83\xBB");
  EXPECT_EQ(QrBytes("A\x81\xAD", "shift-jis"), "A\x81\xAD");
}

bool DataMatrixHolds(const char* scheme, char character, int characters) {
  const BarcodeObject object(BARCODE_DATAMATRIX);
  barcode_set_encode_scheme(object, scheme);
  bool holds = false;
  Capture([&] {
    holds = !object.SvgOf(std::string(static_cast<std::size_t>(characters), character), 144, 144).empty();
  });
  return holds;
}

TEST(PageSentences, LongestTextsOfDataMatrix) {
  struct Longest {
    const char* scheme;
    char character;
    int characters;
  };
  for (const auto& [scheme, character, characters] :
       {Longest{"ASCII", '1', 3116}, Longest{"ASCII", 'a', 1558}, Longest{"C40", 'A', 2335},
        Longest{"X12", 'A', 2335}, Longest{"TEXT", 'a', 2335}, Longest{"EDIFACT", '!', 2076},
        Longest{"BASE256", 'a', 1556}}) {
    EXPECT_TRUE(DataMatrixHolds(scheme, character, characters)) << scheme;
    EXPECT_FALSE(DataMatrixHolds(scheme, character, characters + 1)) << scheme;
  }
}

Captured DrawnLines(int type, const char* text, int expected) {
  const BarcodeObject object(type);
  return Capture([&] { EXPECT_EQ(barcode_draw_1d(object, text, 300, 100), expected); });
}

TEST(PageSentences, ASymbolThatIsCutIsNoError) {
  const Captured lines = DrawnLines(BARCODE_CODE39, "01234567890123456789", 1);
  EXPECT_EQ(lines.err, "");
  EXPECT_NE(lines.out.find("351"), std::string::npos) << lines.out;
}

TEST(PageSentences, DataBarWritesToStandardErrorWhenItDraws) {
  const Captured lines = DrawnLines(BARCODE_GS1_DATABAR_14, "2001234567890", 1);
  EXPECT_EQ(std::ranges::count(lines.err, '\n'), 3);
  EXPECT_TRUE(lines.err.starts_with("DEBUG ")) << lines.err;
  EXPECT_EQ(DrawnLines(BARCODE_GS1_DATABAR_14, "A", 0).err,
            "[GS1 DataBar] GS1 DataBar requires numeric digits only\n");
  EXPECT_EQ(DrawnLines(BARCODE_GS1_DATABAR_LIMITED, "12345678", 1).err, "");
  EXPECT_EQ(DrawnLines(BARCODE_GS1_DATABAR_EXPANDED, "0195012345678903", 1).err, "");
}

bool IsXml(int type, const std::string& text, int evenSpacing) {
  const BarcodeObject object(type);
  barcode_set_text_even_spacing(object, evenSpacing);
  const std::string svg = object.SvgOf(text, 300, 100);
  EXPECT_NE(svg, "");
  return !GreyOfSvg(svg, 300, 100).pixels.empty();
}

TEST(PageSentences, SvgIsXmlUnlessTheTextIsNot) {
  for (const int evenSpacing : {0, 1}) {
    EXPECT_TRUE(IsXml(BARCODE_CODE128, "a>b\"'", evenSpacing));
    EXPECT_FALSE(IsXml(BARCODE_CODE128, "a&b", evenSpacing));
    EXPECT_FALSE(IsXml(BARCODE_CODE128, "a<b", evenSpacing));
    EXPECT_FALSE(IsXml(BARCODE_CODE128, "a\x01", evenSpacing));
    EXPECT_FALSE(IsXml(BARCODE_GS1_128, "\xE9", evenSpacing));
  }
  EXPECT_TRUE(IsXml(BARCODE_GS1_128, "\xC3\xA9", 0));
  EXPECT_FALSE(IsXml(BARCODE_GS1_128, "\xC3\xA9", 1));
}

// librsvg takes the place of a text for its baseline, whatever baseline the document asks for.
TEST(PageSentences, LibrsvgSetsTheTextOverTheBars) {
  const BarcodeObject object(BARCODE_CODE39);
  const std::string svg = object.SvgOf("ABC-123", 300, 100);
  ASSERT_NE(svg.find("y=\"80.00\""), std::string::npos);
  const GreyImage picture = GreyOfSvg(svg, 300, 100);
  const auto firstBelow = picture.pixels.begin() + std::ptrdiff_t{300} * 82;
  EXPECT_TRUE(std::all_of(firstBelow, picture.pixels.end(), [](int grey) { return grey == 255; }));
}

}  // namespace
}  // namespace barcode::test
