#include "linear/code128_encoder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <stdexcept>
#include <string>

#include "linear/width_string.h"
#include "support/all_texts.h"
#include "support/code128_decode.h"
#include "support/code128_reference.h"
#include "support/message_of.h"
#include "support/pattern.h"
#include "support/random_text.h"

namespace barcode::test {
namespace {

using testing::ElementsAre;

constexpr auto kModeA = Code128Mode::kA;
constexpr auto kModeB = Code128Mode::kB;
constexpr auto kModeC = Code128Mode::kC;
constexpr auto kAuto = Code128Mode::kAuto;

// Of a text that is refused.
std::string MessageFor(std::string_view text, Code128Mode mode) {
  return MessageOf<std::runtime_error>([&] { EncodeValues(text, mode); });
}

TEST(Code128Tables, EveryValueHasElevenModulesAndItsOwnPattern) {
  for (std::size_t value = 0; value < 106; ++value) {
    const std::string_view widths = kCode128Widths[value];
    ASSERT_EQ(widths.size(), 6U);
    EXPECT_EQ(ModuleCount(widths), 11U) << value;
    EXPECT_EQ((widths[0] + widths[2] + widths[4] - 3 * '0') % 2, 0) << "bars of " << value;
  }
  EXPECT_EQ(ModuleCount(kCode128Widths[kCode128Stop]), 13U);
  EXPECT_EQ(std::set<std::string_view>(kCode128Widths.begin(), kCode128Widths.end()).size(), 107U);
}

TEST(Code128Values, SetATakesTheByteItself) {
  for (int byte = 0; byte < 256; ++byte) {
    const std::string text(1, static_cast<char>(byte));
    EXPECT_EQ(CharValue(Code128Set::kA, text, 0), byte <= 95 ? byte : -1);
    EXPECT_EQ(CharValue(Code128Set::kB, text, 0), byte >= 32 && byte <= 126 ? byte - 32 : -1);
    EXPECT_EQ(CharValue(Code128Set::kC, text, 0), -1);
  }
}

// ISO/IEC 15417, table 1.
TEST(Code128Values, ByTheStandardSetABeginsWithTheSpaceAndSetBHasDel) {
  constexpr auto kRule = Code128Rule::kStandard;
  EXPECT_EQ(CharValue(Code128Set::kA, " ", 0, kRule), 0);
  EXPECT_EQ(CharValue(Code128Set::kA, "_", 0, kRule), 63);
  EXPECT_EQ(CharValue(Code128Set::kA, std::string_view("\0", 1), 0, kRule), 64);
  EXPECT_EQ(CharValue(Code128Set::kA, "\x1F", 0, kRule), 95);
  EXPECT_EQ(CharValue(Code128Set::kA, "`", 0, kRule), -1);
  EXPECT_EQ(CharValue(Code128Set::kB, " ", 0, kRule), 0);
  EXPECT_EQ(CharValue(Code128Set::kB, "\x7F", 0, kRule), 95);
  EXPECT_EQ(CharValue(Code128Set::kB, "\x1F", 0, kRule), -1);
  EXPECT_EQ(CharValue(Code128Set::kB, "\x80", 0, kRule), -1);
  EXPECT_EQ(CharValue(Code128Set::kC, "42", 0, kRule), 42);
}

TEST(Code128Values, SetCTakesTwoDigits) {
  EXPECT_EQ(CharValue(Code128Set::kC, "1234", 1), 23);
  EXPECT_EQ(CharValue(Code128Set::kC, "00", 0), 0);
  EXPECT_EQ(CharValue(Code128Set::kC, "99", 0), 99);
  EXPECT_EQ(CharValue(Code128Set::kC, "1a", 0), -1);
  EXPECT_EQ(CharValue(Code128Set::kC, "a1", 0), -1);
  EXPECT_EQ(CharValue(Code128Set::kC, "12", 1), -1);
}

TEST(Code128Values, RefusesEmptyText) {
  for (const Code128Mode mode : {kModeA, kModeB, kModeC, kAuto}) {
    EXPECT_EQ(MessageFor("", mode), "Empty string");
  }
}

TEST(Code128Values, FixedSetsEncodeValueByValue) {
  EXPECT_THAT(EncodeValues("A 1", kModeA),
              ElementsAre(103, 65, 32, 49, (103 + 65 + 2 * 32 + 3 * 49) % 103, 106));
  EXPECT_THAT(EncodeValues("A~1", kModeB),
              ElementsAre(104, 33, 94, 17, (104 + 33 + 2 * 94 + 3 * 17) % 103, 106));
  EXPECT_THAT(EncodeValues("123456", kModeC),
              ElementsAre(105, 12, 34, 56, (105 + 12 + 2 * 34 + 3 * 56) % 103, 106));
}

TEST(Code128Values, FixedSetsRefuseWhatTheyDoNotHold) {
  EXPECT_EQ(MessageFor("Ba", kModeA), "Invalid char for CODE_A");
  EXPECT_EQ(MessageFor("`", kModeA), "Invalid char for CODE_A");
  EXPECT_EQ(MessageFor("a\x7F", kModeB), "Invalid char for CODE_B");
  EXPECT_EQ(MessageFor("\x1F", kModeB), "Invalid char for CODE_B");
  EXPECT_EQ(MessageFor("12345", kModeC), "Not 2-digit at pos=4");
  EXPECT_EQ(MessageFor("123x", kModeC), "Not 2-digit at pos=2");
}

TEST(Code128Values, AutomaticPrefersSetAAmongEquals) {
  const Code128Values values = EncodeValues("ABC", kAuto);
  EXPECT_THAT(values, ElementsAre(103, 65, 66, 67, (103 + 65 + 2 * 66 + 3 * 67) % 103, 106));
}

TEST(Code128Values, AutomaticUsesSetCForDigits) {
  EXPECT_THAT(EncodeValues("1234", kAuto), ElementsAre(105, 12, 34, (105 + 12 + 2 * 34) % 103, 106));
}

TEST(Code128Values, AutomaticNamesOneMessageForWhatNoSetHolds) {
  EXPECT_EQ(MessageFor("AB\x7F", kAuto), "No valid start");
  EXPECT_EQ(MessageFor(std::string("12\xFF") + "34", kAuto), "No valid start");
}

void ExpectAsReference(const std::string& text) {
  if (text.empty()) {
    return;
  }
  const auto expected = ReferenceCode128(text).Encode();
  if (!expected) {
    EXPECT_THROW(EncodeValues(text, kAuto), std::runtime_error) << testing::PrintToString(text);
    return;
  }
  Code128Values values = EncodeValues(text, kAuto);
  ASSERT_GE(values.size(), 2U);
  EXPECT_EQ(values.back(), kCode128Stop);
  values.resize(values.size() - 2);
  EXPECT_EQ(values, *expected) << testing::PrintToString(text);
}

// One byte of each kind: digits, in A and B, in B only, in A only, in none.
TEST(Code128Values, AutomaticEqualsPlainRecursionForAllShortTexts) {
  ForAllTexts({"1", "2", "A", "a", "\x01", "\x7F"}, 5, ExpectAsReference);
}

TEST(Code128Values, AutomaticEqualsPlainRecursionForDigitRuns) {
  ForAllTexts({"7", "a"}, 10, ExpectAsReference);
  ForAllTexts({"12", "3", "a", "\x01"}, 6, ExpectAsReference);
}

// Start value and data.
Code128Values WithoutCheckAndStop(Code128Values values) {
  EXPECT_GE(values.size(), 3U);
  EXPECT_EQ(values.back(), kCode128Stop);
  values.pop_back();
  const int check = values.back();
  values.pop_back();
  EXPECT_EQ(check, CheckValue(values));
  return values;
}

void ExpectReadBack(const std::string& text, Code128Mode mode) {
  const Code128Values values = WithoutCheckAndStop(EncodeValues(text, mode, Code128Rule::kStandard));
  EXPECT_EQ(DecodeCode128(values, "{FNC1}"), text) << testing::PrintToString(text);
}

TEST(Code128Standard, FixedSetsReadBack) {
  std::string setA;
  for (int byte = 0; byte < 128; ++byte) {
    const std::string text(1, static_cast<char>(byte));
    if (byte < 96) {
      ExpectReadBack(text, kModeA);
      setA += text;
    } else {
      EXPECT_THROW(EncodeValues(text, kModeA, Code128Rule::kStandard), std::runtime_error) << byte;
    }
    if (byte >= 32) {
      ExpectReadBack(text, kModeB);
    } else {
      EXPECT_THROW(EncodeValues(text, kModeB, Code128Rule::kStandard), std::runtime_error) << byte;
    }
  }
  ExpectReadBack(setA, kModeA);
  ExpectReadBack("00102399", kModeC);
}

TEST(Code128Standard, AutomaticReadsBackInTheFewestValues) {
  ForAllTexts({"1", "2", "A", "a", "\x01", "\x7F"}, 5, [](const std::string& text) {
    if (text.empty()) {
      return;
    }
    ExpectReadBack(text, kAuto);
    EXPECT_EQ(EncodeValues(text, kAuto, Code128Rule::kStandard).size(), FewestCode128Values(text) + 2);
  });
  RandomText random(15417);
  for (int i = 0; i < 500; ++i) {
    std::string text;
    for (int piece = random.Number(1, 8); piece > 0; --piece) {
      text += random.Number(0, 1) == 0 ? random.Digits(1, 9) : random.Bytes(1, 5, 0, 127);
    }
    ExpectReadBack(text, kAuto);
    EXPECT_EQ(EncodeValues(text, kAuto, Code128Rule::kStandard).size(), FewestCode128Values(text) + 2);
  }
}

TEST(Code128Standard, NoSetHoldsBytesAboveDel) {
  for (int byte = 128; byte < 256; ++byte) {
    const std::string text = std::string("A") + static_cast<char>(byte);
    for (const Code128Mode mode : {kModeA, kModeB, kModeC, kAuto}) {
      EXPECT_THROW(EncodeValues(text, mode, Code128Rule::kStandard), std::runtime_error) << byte;
    }
    if (static_cast<char>(byte) != kCode128Fnc1Mark) {
      EXPECT_THROW(EncodeValuesWithFnc1(text), std::runtime_error) << byte;
    }
  }
}

TEST(Code128Standard, TheRulesAgreeWhereSetAIsNotUsed) {
  for (const std::string_view text : {"abc", "12345678", "Hello, 1234 world"}) {
    EXPECT_EQ(EncodeValues(text, kAuto, Code128Rule::kStandard), EncodeValues(text, kAuto));
  }
  EXPECT_NE(EncodeValues("ABC", kAuto, Code128Rule::kStandard), EncodeValues("ABC", kAuto));
  EXPECT_EQ(EncodeCode128("ABC", kAuto, Code128Rule::kStandard),
            ValuesToPattern(EncodeValues("ABC", kAuto, Code128Rule::kStandard)));
}

// FNC1 is the same value in every set: it never makes a switch, and it parts the digits of a pair.
TEST(Code128Standard, Fnc1ReadsBackInTheFewestValues) {
  ForAllTexts({"1", "23", "A", "a", "\x01", "\xF1"}, 5, [](const std::string& text) {
    if (text.empty()) {
      EXPECT_THROW(EncodeValuesWithFnc1(text), std::runtime_error);
      return;
    }
    const Code128Values values = WithoutCheckAndStop(EncodeValuesWithFnc1(text));
    EXPECT_EQ(DecodeCode128(values, "\xF1"), text) << testing::PrintToString(text);
    EXPECT_EQ(values.size(), FewestCode128Values(text)) << testing::PrintToString(text);
  });
  EXPECT_THAT(WithoutCheckAndStop(EncodeValuesWithFnc1("\xF1"
                                                       "0112")),
              ElementsAre(105, 102, 1, 12));
}

// Recursion over a text of this length would exhaust the stack.
TEST(Code128Values, AutomaticHoldsAMillionBytes) {
  std::string text;
  for (int i = 0; i < 100'000; ++i) {
    text += "ab12345\x01XY";
  }
  const Code128Values values = EncodeValues(text, kAuto);
  EXPECT_EQ(Code128Values(values.begin(), values.begin() + 11),
            (Code128Values{104, 65, 66, 17, 99, 23, 45, 101, 1, 88, 89}));
  EXPECT_EQ(values.back(), kCode128Stop);
}

TEST(Code128Values, CheckValueWeighsByPosition) {
  EXPECT_EQ(CheckValue({105}), 2);
  EXPECT_EQ(CheckValue({104, 1, 2, 3}), (104 + 1 + 4 + 9) % 103);
  Code128Values values(1, 103);
  long sum = 103;
  for (int i = 1; i < 1000; ++i) {
    values.push_back(i % 103);
    sum += static_cast<long>(i) * (i % 103);
  }
  EXPECT_EQ(CheckValue(values), sum % 103);
}

TEST(Code128Values, PatternIsTheWidthsWithoutGaps) {
  EXPECT_EQ(Digits(ValuesToPattern({103, 65, 106})),
            "211412"
            "121124"
            "2331112");
  for (int n = 1; n < 20; ++n) {
    const Code128Values values = EncodeValues(std::string(static_cast<std::size_t>(n), 'b'), kModeB);
    EXPECT_EQ(Modules(ValuesToPattern(values)), 11 * (values.size() - 1) + 13);
  }
}

TEST(Code128Values, OtherValuesHaveNoPattern) {
  const auto messageFor = [](const Code128Values& values) {
    return MessageOf<std::out_of_range>([&] { ValuesToPattern(values); });
  };
  for (const int value : {107, -1}) {
    EXPECT_EQ(messageFor({value}), "Invalid code value") << value;
    EXPECT_EQ(messageFor({103, value, 106}), "Invalid code value") << value;
  }
}

TEST(Code128Encode, IsThePatternOfTheValues) {
  for (const Code128Mode mode : {kModeA, kModeB, kModeC, kAuto}) {
    EXPECT_EQ(EncodeCode128("1234", mode), ValuesToPattern(EncodeValues("1234", mode)));
  }
  EXPECT_EQ(Digits(EncodeCode128("A", kModeA)),
            "211412"
            "121124"  // 65
            "121124"  // (103 + 65) % 103 = 65
            "2331112");
}

TEST(Code128Encode, Messages) {
  EXPECT_EQ(MessageOf<std::runtime_error>([] { EncodeCode128("", kAuto); }), "Empty string");
  EXPECT_EQ(MessageOf<std::runtime_error>([] { EncodeCode128("\xFF", kAuto); }), "No valid start");
  EXPECT_EQ(MessageOf<std::runtime_error>([] { EncodeCode128("a", kModeA); }), "Invalid char for CODE_A");
}

}  // namespace
}  // namespace barcode::test
