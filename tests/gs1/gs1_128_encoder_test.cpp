#include "gs1/gs1_128_encoder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "support/all_texts.h"
#include "support/code128_decode.h"
#include "support/pattern.h"

namespace barcode::test {
namespace {

using testing::ElementsAreArray;

// Start value and data of a text.
std::vector<int> Data(const std::string& text) {
  Code128Values values = Gs1_128Values(text);
  EXPECT_EQ(values.back(), kCode128Stop);
  values.pop_back();
  const int check = values.back();
  values.pop_back();
  EXPECT_EQ(check, CheckValue(values));
  return values;
}

struct Example {
  std::string text;
  std::vector<int> data;
};

void ExpectData(const std::vector<Example>& examples) {
  for (const Example& example : examples) {
    EXPECT_THAT(Data(example.text), ElementsAreArray(example.data)) << testing::PrintToString(example.text);
  }
}

TEST(Gs1_128Encoder, ThreeLeadingDigitsStartInSetC) {
  ExpectData({
      {"123ABC", {105, 12, 100, 19, 33, 34, 35}},
      {"12ABC", {104, 17, 18, 33, 34, 35}},
      {"{FNC1}12{AI}3A", {105, 102, 12, 100, 19, 33}},
      {"{FNC1}12{AI}A", {104, 102, 17, 18, 33}},
  });
}

TEST(Gs1_128Encoder, TheLastCharacterIsNotCounted) {
  ExpectData({
      {"123", {104, 17, 18, 19}},
      {"1234", {105, 12, 34}},
      {"1", {104, 17}},
      {"123{AI}", {105, 12, 100, 19}},
  });
}

TEST(Gs1_128Encoder, OtherTextsStartInSetAWhenAControlCharacterComesBeforeSmallLetters) {
  ExpectData({
      {"A\x01z", {103, 33, 65, 100, 90}},
      {"Az\x01", {104, 33, 90, 101, 65}},
      {"AB", {104, 33, 34}},
      {"\x1F", {103, 95}},
      {"A\x7F\x01", {103, 33, 65}},         // DEL is no B-only character, and set A does not hold it
      {"{FNC1}\x01", {104, 102, 101, 65}},  // the marker's own brace is B-only
  });
}

TEST(Gs1_128Encoder, EmptyTextIsStartCheckAndStop) {
  EXPECT_THAT(Gs1_128Values(""), testing::ElementsAre(104, 1, 106));
}

TEST(Gs1_128Encoder, PatternIsThatOfTheValues) {
  // Start C, FNC1, the pair 12, code B, the digit 3, check value 92, stop.
  EXPECT_EQ(Digits(EncodeGs1_128("{FNC1}123{AI}")),
            "211232"
            "411131"
            "112232"
            "114131"
            "221132"
            "111143"
            "2331112");
  EXPECT_EQ(EncodeGs1_128("A\x01z"), ValuesToPattern(Gs1_128Values("A\x01z")));
}

TEST(Gs1_128Encoder, FourDigitsSwitchToSetC) {
  ExpectData({
      {"A1234B", {104, 33, 99, 12, 34, 100, 34}},
      {"A123B", {104, 33, 17, 18, 19, 34}},
      {"A1234", {104, 33, 99, 12, 34}},
      {"A12{AI}34", {104, 33, 17, 18, 19, 20}},
      {"A\x01"
       "1234a",
       {103, 33, 65, 99, 12, 34, 100, 65}},
  });
}

TEST(Gs1_128Encoder, CharactersOfTheOtherSetSwitch) {
  ExpectData({
      {"\x01z\x02", {103, 65, 100, 90, 101, 66}},
      {"`~\x7F", {104, 64, 94, 95}},
      {"\x01_", {103, 65, 63}},
  });
}

TEST(Gs1_128Encoder, LeavesSetCByTheRestOfTheText) {
  ExpectData({
      {"1234A\x01z", {105, 12, 34, 101, 33, 65, 100, 90}},
      {"1234Az\x01", {105, 12, 34, 100, 33, 90, 101, 65}},
      {"12345", {105, 12, 34, 100, 21}},
      {"12345\x01", {105, 12, 34, 101, 21, 65}},
      {"12345{FNC1}\x01", {105, 12, 34, 100, 21, 102, 101, 65}},
  });
}

TEST(Gs1_128Encoder, MarkersKeepTheSet) {
  ExpectData({
      {"12{FNC1}34{AI}5678", {105, 12, 102, 34, 56, 78}},
      {"{FNC1}0104912345678904{FNC1}10ABC",
       {105, 102, 1, 4, 91, 23, 45, 67, 89, 4, 102, 10, 100, 33, 34, 35}},
      {"\x01{FNC1}A", {103, 65, 102, 33}},
  });
}

TEST(Gs1_128Encoder, AiMarkersChangeNothing) {
  EXPECT_EQ(Gs1_128Values("{AI}0104912345678904{AI}10AB"), Gs1_128Values("010491234567890410AB"));
}

TEST(Gs1_128Encoder, OnlyCompleteMarkersAreMarkers) {
  ExpectData({
      {"1234{FNC", {105, 12, 34, 100, 91, 38, 46, 35}},
      {"{ai}", {104, 91, 65, 73, 93}},
  });
}

TEST(Gs1_128Encoder, LeavesOutWhatNoSetHolds) {
  ExpectData({
      {"A\xFF"
       "B",
       {104, 33, 34}},
      {"\x01\x7F", {103, 65}},
      {"1234\xFF", {105, 12, 34, 100}},
      {"1234\x80\x01", {105, 12, 34, 101, 65}},
      {"12\x80"
       "34",
       {104, 17, 18, 19, 20}},
  });
}

TEST(Gs1_128Encoder, CheckValueCountsSwitchesAndFnc1) {
  const int sum = 105 + 1 * 102 + 2 * 12 + 3 * 100 + 4 * 19;
  EXPECT_THAT(Gs1_128Values("{FNC1}123"), testing::Not(testing::Contains(105)));  // two digits counted: set B
  EXPECT_THAT(Gs1_128Values("{FNC1}123{AI}"), testing::ElementsAre(105, 102, 12, 100, 19, sum % 103, 106));
}

std::string Without(std::string text, const std::string& piece) {
  std::size_t at = text.find(piece);
  while (at != std::string::npos) {
    text.erase(at, piece.size());
    at = text.find(piece, at);
  }
  return text;
}

TEST(Gs1_128Encoder, EveryTextReadsBackByTheStandardsTables) {
  ForAllTexts({"1", "23", "A", "a", "\x01", "\xFF", "{FNC1}", "{AI}"}, 5, [](const std::string& text) {
    EXPECT_EQ(DecodeCode128(Data(text), "{FNC1}"), Without(Without(text, "{AI}"), "\xFF"))
        << testing::PrintToString(text);
  });
}

// The choice of the set on leaving set C depends on all of the rest: it must not make long texts quadratic.
TEST(Gs1_128Encoder, HoldsAMillionBytes) {
  std::string text;
  for (int i = 0; i < 200'000; ++i) {
    text += "1234A";
  }
  EXPECT_EQ(Gs1_128Values(text).size(), 1 + 5 * 200'000U - 1 + 2);
}

std::string Replaced(std::string text, const std::string& piece, char by) {
  for (std::size_t at = text.find(piece); at != std::string::npos; at = text.find(piece, at)) {
    text.replace(at, piece.size(), 1, by);
  }
  return text;
}

TEST(Gs1_128Encoder, InTheFewestValuesEveryTextReadsBackWhole) {
  ForAllTexts({"1", "23", "A", "a", "\x01", "\x7F", "{FNC1}", "{AI}", "{F"}, 4, [](const std::string& text) {
    const std::string data = Replaced(Without(text, "{AI}"), "{FNC1}", '\xF1');
    if (data.empty()) {
      EXPECT_THROW(Gs1_128Values(text, Gs1_128Rule::kFewestValues), std::runtime_error);
      return;
    }
    Code128Values values = Gs1_128Values(text, Gs1_128Rule::kFewestValues);
    values.resize(values.size() - 2);
    EXPECT_EQ(DecodeCode128(values, "\xF1"), data) << testing::PrintToString(text);
    EXPECT_EQ(values.size(), FewestCode128Values(data)) << testing::PrintToString(text);
  });
}

TEST(Gs1_128Encoder, TheFewestValuesMayBeFewerThanByLeadingDigits) {
  const std::string text =
      "{FNC1}10A1234567";  // by leading digits set C begins at the 1 and leaves the 7 over
  EXPECT_EQ(EncodeGs1_128(text, Gs1_128Rule::kFewestValues),
            ValuesToPattern(Gs1_128Values(text, Gs1_128Rule::kFewestValues)));
  EXPECT_EQ(Gs1_128Values(text, Gs1_128Rule::kFewestValues).size(), Gs1_128Values(text).size() - 1);
}

TEST(Gs1_128Encoder, InTheFewestValuesNothingIsLeftOut) {
  for (int byte = 128; byte < 256; ++byte) {
    const std::string text = std::string("{FNC1}10A") + static_cast<char>(byte);
    EXPECT_THROW(Gs1_128Values(text, Gs1_128Rule::kFewestValues), std::runtime_error) << byte;
  }
}

TEST(Gs1_128DisplayText, PutsApplicationIdentifiersInParentheses) {
  EXPECT_EQ(Gs1_128DisplayText("{FNC1}0104912345678904{FNC1}10ABC"), "(01)04912345678904(10)ABC");
  EXPECT_EQ(Gs1_128DisplayText("{AI}0104912345678904{AI}10ABC"), "(01)04912345678904(10)ABC");
}

TEST(Gs1_128DisplayText, LooksUpTheLengthOfTheIdentifier) {
  const std::vector<std::pair<std::string, std::string>> examples = {
      {"230123456", "(230)123456"},
      {"240123456", "(240)123456"},
      {"250123456", "(250)123456"},
      {"300123456", "(30)0123456"},
      {"370123456", "(37)0123456"},
      {"430123456", "(43)0123456"},
      {"310123456", "(3101)23456"},
      {"420123456", "(420)123456"},
      {"700123456", "(7001)23456"},
      {"800123456", "(8001)23456"},
      {"210123456", "(21)0123456"},
      {"910123456", "(91)0123456"},
      {"AB0", "(AB)0"},
  };
  for (const auto& [input, shown] : examples) {
    EXPECT_EQ(Gs1_128DisplayText("{AI}" + input), shown);
  }
}

TEST(Gs1_128DisplayText, ShowsTextBeforeTheFirstMarkerAsItIs) {
  EXPECT_EQ(Gs1_128DisplayText("0112{AI}10A"), "0112(10)A");
  EXPECT_EQ(Gs1_128DisplayText("(01)12"), "(01)12");
  EXPECT_EQ(Gs1_128DisplayText(""), "");
}

TEST(Gs1_128DisplayText, EmptyIdentifiersShowNothing) {
  EXPECT_EQ(Gs1_128DisplayText("{FNC1}{AI}10A{FNC1}"), "(10)A");
}

TEST(Gs1_128DisplayText, AnIdentifierEndsAtTheNextMarker) {
  EXPECT_EQ(Gs1_128DisplayText("{AI}80{AI}1"), "(80)(1)");
}

TEST(Gs1_128DisplayText, OnlyCompleteMarkersAreMarkers) {
  EXPECT_EQ(Gs1_128DisplayText("{AI}10{FNC{AI}11"), "(10){FNC(11)");
}

}  // namespace
}  // namespace barcode::test
