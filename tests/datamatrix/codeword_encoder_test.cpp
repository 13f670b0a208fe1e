#include "datamatrix/codeword_encoder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>

#include "datamatrix/codeword_decoder.h"
#include "datamatrix/corpus.h"
#include "datamatrix/error_correction.h"
#include "datamatrix/symbol_sizes.h"
#include "support/processor_time.h"

namespace barcode::datamatrix {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using Codewords = std::vector<std::uint8_t>;

// What a case or a loop may select: a scheme of its own or, without one, automatic. The same of sizes.
using SchemeOption = std::optional<Scheme>;
using SizeOption = std::optional<std::size_t>;

constexpr auto kAscii = Scheme::kAscii;
constexpr auto kC40 = Scheme::kC40;
constexpr auto kText = Scheme::kText;
constexpr auto kX12 = Scheme::kX12;
constexpr auto kEdifact = Scheme::kEdifact;
constexpr auto kBase256 = Scheme::kBase256;
constexpr auto kAutomatic = std::nullopt;

constexpr SchemeOption kSchemeOptions[] = {kAutomatic, kAscii, kC40, kText, kX12, kEdifact, kBase256};

constexpr std::size_t k10x10 = 0;
constexpr std::size_t k12x12 = 1;
constexpr std::size_t k14x14 = 2;
constexpr std::size_t k16x16 = 3;
constexpr std::size_t k26x26 = 8;
constexpr std::size_t k64x64 = 15;
constexpr std::size_t k144x144 = 23;
constexpr std::size_t k8x32 = 25;

Codewords Encode(std::string_view text, SchemeOption scheme, SizeOption size = {}) {
  EncoderLines lines;
  Codewords codewords = EncodeCodewords(text, {scheme, size}, lines);
  EXPECT_TRUE(lines.Empty());
  return codewords;
}

// What a reader of the padded symbol decodes.
std::string Decode(Codewords codewords, SizeOption size = {}) {
  PadCodewords(codewords, *FindSize(AdmittedSizes(size), codewords.size()));
  return DecodeCodewords(codewords);
}

std::string_view NameOf(SchemeOption scheme) {
  return scheme ? kSchemeKeywords[static_cast<std::size_t>(*scheme)].first : "AUTO";
}

struct Case {
  const char* name;
  Scheme scheme;
  std::size_t size;
  std::string_view text;
  Codewords codewords;
};

void PrintTo(const Case& testCase, std::ostream* out) {
  *out << testCase.name;
}

const Case kCases[] = {
    {"digit pairs", kAscii, k10x10, "123456", {142, 164, 186}},
    {"digit pairs greedily from the left", kAscii, k12x12, "A12345", {66, 142, 164, 54}},
    {"upper shift", kAscii, k12x12, "\xE9\x80", {235, 106, 235, 1}},
    {"control characters", kAscii, k10x10, std::string_view("\0\x7F", 2), {1, 128}},

    {"C40 fills the symbol", kC40, k10x10, "AIM", {230, 91, 11}},
    {"C40 unlatches before pads", kC40, k12x12, "AIM", {230, 91, 11, 254}},
    {"C40 with one codeword left", kC40, k14x14, "AIMAIMAIM", {230, 91, 11, 91, 11, 91, 11}},
    {"C40 two left for two values", kC40, k12x12, "AIMAI", {230, 91, 11, 90, 241}},
    {"C40 two left for one value", kC40, k12x12, "AIMA", {230, 91, 11, 254, 66}},
    {"C40 one left for one value", kC40, k14x14, "AIMAIMAIMA", {230, 91, 11, 91, 11, 91, 11, 66}},
    {"C40 one left for a digit pair", kC40, k14x14, "AIMAIMAIM12", {230, 91, 11, 91, 11, 91, 11, 142}},
    {"C40 one left for a shifted character", kC40, k14x14, "AIMAIMAIMa", {230, 91, 11, 91, 11, 91, 11, 98}},
    {"C40 two values with room to spare", kC40, k26x26, "AIMAI", {230, 91, 11, 90, 241, 254}},
    {"C40 one value with room to spare", kC40, k26x26, "AIMA", {230, 91, 11, 254, 66}},
    {"C40 shifted character cut by a triplet", kC40, k26x26, "AIa", {230, 90, 241, 254, 98}},
    {"TEXT", kText, k10x10, "aim", {239, 91, 11}},
    {"TEXT two left for two values", kText, k12x12, "aimai", {239, 91, 11, 90, 241}},
    {"TEXT one left for one value", kText, k14x14, "aimaimaima", {239, 91, 11, 91, 11, 91, 11, 98}},

    {"X12 separators", kX12, k10x10, "\r*>", {238, 0, 43}},
    {"X12 unlatches before pads", kX12, k12x12, "AIM", {238, 91, 11, 254}},
    {"X12 two left for one value", kX12, k12x12, "AIMA", {238, 91, 11, 254, 66}},
    {"X12 one left for one value", kX12, k14x14, "AIMAIMAIMA", {238, 91, 11, 91, 11, 91, 11, 66}},
    {"X12 never completes a triplet", kX12, k14x14, "AIMAI", {238, 91, 11, 254, 66, 74}},

    {"EDIFACT with one codeword left", kEdifact, k12x12, "ABCD", {240, 4, 32, 196}},
    {"EDIFACT one left for one character", kEdifact, k12x12, "ABCDE", {240, 4, 32, 196, 70}},
    {"EDIFACT one left for a digit pair", kEdifact, k12x12, "ABCD12", {240, 4, 32, 196, 142}},
    {"EDIFACT unlatches alone", kEdifact, k14x14, "ABCD", {240, 4, 32, 196, 124}},
    {"EDIFACT unlatches behind one", kEdifact, k14x14, "ABCDE", {240, 4, 32, 196, 21, 240}},
    {"EDIFACT unlatches behind two", kEdifact, k14x14, "ABCDEF", {240, 4, 32, 196, 20, 103, 192}},
    {"EDIFACT unlatches behind three", kEdifact, k14x14, "ABCDEFG", {240, 4, 32, 196, 20, 97, 223}},
    {"EDIFACT two left for one character",
     kEdifact,
     k16x16,
     "ABCDABCDABCDE",
     {240, 4, 32, 196, 4, 32, 196, 4, 32, 196, 70}},
    {"EDIFACT two left for two characters",
     kEdifact,
     k16x16,
     "ABCDABCDABCDEF",
     {240, 4, 32, 196, 4, 32, 196, 4, 32, 196, 70, 71}},
    {"EDIFACT fills the symbol", kEdifact, k8x32, "ABCDABCDABCD", {240, 4, 32, 196, 4, 32, 196, 4, 32, 196}},

    {"Base 256", kBase256, k10x10, "\x01", {231, 45, 194}},
};

class CodewordCases : public ::testing::TestWithParam<Case> {};

TEST_P(CodewordCases, EncodesAsTheStandardSaysAndDecodes) {
  const Case& testCase = GetParam();
  const Codewords codewords = Encode(testCase.text, testCase.scheme, testCase.size);
  EXPECT_THAT(codewords, ElementsAreArray(testCase.codewords));
  EXPECT_EQ(Decode(codewords, testCase.size), testCase.text);
}

INSTANTIATE_TEST_SUITE_P(DataMatrix, CodewordCases, ::testing::ValuesIn(kCases));

TEST(CodewordEncoder, EmptyTextGivesNoCodewords) {
  for (const SchemeOption scheme : kSchemeOptions) {
    EXPECT_THAT(Encode("", scheme), IsEmpty());
  }
}

TEST(CodewordEncoder, ByteOutsideAFixedSchemeGivesNoCodewords) {
  EXPECT_THAT(Encode("ABCa", kX12), IsEmpty());
  EXPECT_THAT(Encode("ABC!", kX12), IsEmpty());
  EXPECT_THAT(Encode("ABC_", kEdifact), IsEmpty());
  EXPECT_THAT(Encode("ABC\n", kEdifact), IsEmpty());
}

TEST(CodewordEncoder, EndOfDataFollowsTheChosenSize) {
  // 12x12 holds five codewords, so AUTO needs no unlatch; in 16x16 the same text does.
  EXPECT_THAT(Encode("AIMAIM", kC40), SizeIs(5));
  EXPECT_THAT(Encode("AIMAIM", kC40, k16x16), SizeIs(6));
}

TEST(CodewordEncoder, Base256LengthCodewords) {
  EXPECT_THAT(Encode(std::string(249, '\x80'), kBase256), SizeIs(2 + 249));
  EXPECT_THAT(Encode(std::string(250, '\x80'), kBase256), SizeIs(3 + 250));
  // 64x64 holds 280: a field to the end of the symbol needs no second length codeword.
  EXPECT_THAT(Encode(std::string(277, '\x80'), kBase256, k64x64), SizeIs(280));
  EXPECT_THAT(Encode(std::string(278, '\x80'), kBase256, k64x64), SizeIs(280));
  EXPECT_THAT(Encode(std::string(279, '\x80'), kBase256, k64x64), IsEmpty());
  EXPECT_EQ(Decode(Encode(std::string(278, '\x80'), kBase256), k64x64), std::string(278, '\x80'));
}

TEST(CodewordEncoder, LargestTexts) {
  struct Largest {
    SchemeOption scheme;
    char character;
    std::size_t longest;
  };
  // 1,558 codewords.
  constexpr Largest kLargest[] = {{kAscii, '1', 3116},       {kAscii, 'A', 1558},     {kAscii, '\xE9', 779},
                                  {kC40, 'A', 2335},         {kText, 'a', 2335},      {kX12, 'A', 2335},
                                  {kEdifact, 'A', 2076},     {kBase256, 'A', 1556},   {kAutomatic, '1', 3116},
                                  {kAutomatic, 'A', 2335},   {kAutomatic, 'a', 2335}, {kAutomatic, '!', 2076},
                                  {kAutomatic, '\xE9', 1556}};
  for (const Largest& largest : kLargest) {
    SCOPED_TRACE(NameOf(largest.scheme));
    const std::string text(largest.longest, largest.character);
    EXPECT_EQ(Decode(Encode(text, largest.scheme), k144x144), text);
    EncoderLines lines;
    EXPECT_THAT(EncodeCodewords(text + largest.character, {largest.scheme, k144x144}, lines), IsEmpty());
  }
}

TEST(CodewordEncoder, TextBeyondTheBufferStopsWithAMessage) {
  EncoderLines lines;
  EXPECT_THAT(EncodeCodewords(std::string(4097, 'A'), {}, lines), IsEmpty());
  constexpr std::string_view kLine = "Can't push input word, encoded length exceeds limits!\n";
  EXPECT_EQ(lines.Text(), kLine);
  EncoderLines automatic;
  EXPECT_THAT(EncodeCodewords(std::string(8000, 'A'), {.scheme = kAutomatic}, automatic), IsEmpty());
  std::string_view rest = automatic.Text();
  std::size_t count = 0;
  for (; rest.starts_with(kLine); ++count) {
    rest.remove_prefix(kLine.size());
  }
  EXPECT_EQ(rest, "");
  EXPECT_GE(count, 1U);
  EXPECT_LT(count, 50U);
}

TEST(CodewordEncoder, MegabyteIsRefusedAtOnce) {
  const std::string text(1 << 20, '1');
  for (const SchemeOption scheme : kSchemeOptions) {
    const double seconds = test::ProcessorTime([&] {
      EncoderLines lines;
      EXPECT_THAT(EncodeCodewords(text, {.scheme = scheme}, lines), IsEmpty());
      EXPECT_EQ(lines.Text(), "Encoding failed, data length out of range!\n");
    });
    EXPECT_LT(seconds, 0.05);
  }
}

TEST(CodewordEncoder, EverySchemeDecodesToTheText) {
  for (const Scheme scheme : kSchemes) {
    Corpus corpus(static_cast<unsigned>(scheme) + 1);
    for (int round = 0; round < 30'000; ++round) {
      const std::string text = corpus.ForScheme(scheme, 60);
      const Codewords codewords = Encode(text, scheme);
      ASSERT_EQ(Decode(codewords), text) << NameOf(scheme);
    }
  }
}

TEST(CodewordEncoder, LongTextsDecodeToTheText) {
  for (const SchemeOption scheme : kSchemeOptions) {
    Corpus corpus(scheme ? static_cast<unsigned>(*scheme) + 11 : 10);
    for (int round = 0; round < 100; ++round) {
      const std::string text = corpus.ForScheme(scheme.value_or(kAscii), 750);
      ASSERT_EQ(Decode(Encode(text, scheme)), text) << NameOf(scheme);
    }
  }
}

TEST(CodewordEncoder, AutomaticDecodesAndIsNeverLongerThanAFixedScheme) {
  Corpus corpus(7);
  for (int round = 0; round < 30'000; ++round) {
    const std::string text = corpus.Mixed(40);
    const std::size_t place = corpus.Below(kSymbolSizes.size());
    const SizeOption option = corpus.Below(2) == 0 ? SizeOption() : place;
    const Codewords automatic = Encode(text, kAutomatic, option);
    if (!automatic.empty()) {
      ASSERT_EQ(Decode(automatic, option), text);
    }
    for (const Scheme scheme : kSchemes) {
      const Codewords fixed = Encode(text, scheme, option);
      if (!fixed.empty()) {
        ASSERT_FALSE(automatic.empty()) << text;
        ASSERT_LE(automatic.size(), fixed.size()) << text;
        ASSERT_EQ(Decode(fixed, option), text);
      }
    }
  }
}

// Texts of which the channels alone would need one codeword more than the fixed scheme: its end-of-data rule
// makes it shorter only at the very end.
TEST(CodewordEncoder, AutomaticKnowsTheEndOfDataOfFixedSchemes) {
  EXPECT_THAT(Encode("A1111AAAA1A1", kAutomatic, k8x32), SizeIs(9));
  EXPECT_THAT(Encode("12  *1B>*>*22 1", kAutomatic), SizeIs(11));
}

// A text of which the channels alone would need 31 codewords: where the second digit of a pair is free is
// known only after the first.
TEST(CodewordEncoder, AutomaticKnowsThatDigitsMakePairs) {
  EXPECT_THAT(Encode("0af61a967h93f7a83d9g811\xE3\x83\x86"
                     "AbA*/tA,",
                     kAutomatic),
              SizeIs(30));
}

TEST(CodewordEncoder, AutomaticPrefersTheLowerSchemeOnTies) {
  EXPECT_THAT(Encode("AIM", kAutomatic), ElementsAre(66, 74, 78));
  EXPECT_THAT(Encode("AIMAIM", kAutomatic), ElementsAre(230, 91, 11, 91, 11));
}

TEST(CodewordEncoder, AutomaticIsFast) {
  Corpus corpus(3);
  const std::string text = corpus.ForScheme(Scheme::kX12, 3000) + std::string(1000, '7');
  const double seconds = test::ProcessorTime([&] {
    EncoderLines lines;
    EncodeCodewords(text, {.scheme = kAutomatic}, lines);
  });
  // Milliseconds; the bound leaves room for sanitizers, not for quadratic time.
  EXPECT_LT(seconds, 0.5);
}

}  // namespace
}  // namespace barcode::datamatrix
