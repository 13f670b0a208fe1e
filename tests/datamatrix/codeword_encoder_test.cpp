#include "datamatrix/codeword_encoder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

#include "datamatrix/codeword_decoder.h"
#include "datamatrix/corpus.h"
#include "datamatrix/encodation.h"
#include "datamatrix/error_correction.h"
#include "datamatrix/symbol_attributes.h"

namespace barcode {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using ::testing::SizeIs;

using Codewords = std::vector<std::uint8_t>;

constexpr int kAscii = static_cast<int>(EncodationScheme::kAscii);
constexpr int kC40 = static_cast<int>(EncodationScheme::kC40);
constexpr int kText = static_cast<int>(EncodationScheme::kText);
constexpr int kX12 = static_cast<int>(EncodationScheme::kX12);
constexpr int kEdifact = static_cast<int>(EncodationScheme::kEdifact);
constexpr int kBase256 = static_cast<int>(EncodationScheme::kBase256);

constexpr int k10x10 = 0;
constexpr int k12x12 = 1;
constexpr int k14x14 = 2;
constexpr int k16x16 = 3;
constexpr int k26x26 = 8;
constexpr int k64x64 = 15;
constexpr int k144x144 = 23;
constexpr int k8x32 = 25;

Codewords Encode(std::string_view text, int scheme, int size = kAutomaticSquareSize) {
  EncoderMessages messages;
  Codewords codewords = EncodeCodewords(text, scheme, size, messages);
  EXPECT_THAT(messages, IsEmpty());
  return codewords;
}

// What a reader of the padded symbol decodes.
std::string Decode(Codewords codewords, int sizeOption) {
  EncoderMessages messages;
  PadCodewords(codewords, SelectSize(codewords.size(), sizeOption), messages);
  return DecodeCodewords(codewords);
}

struct Case {
  const char* name;
  int scheme;
  int size;
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

TEST(CodewordEncoder, NoEncodationGivesNoCodewords) {
  EXPECT_THAT(Encode("123456", kNoEncodation), IsEmpty());
}

TEST(CodewordEncoder, UnknownSchemeIsToldAndGivesNoCodewords) {
  for (const int scheme : {-3, 6, 1000}) {
    EncoderMessages messages;
    EXPECT_THAT(EncodeCodewords("123456", scheme, kAutomaticSquareSize, messages), IsEmpty());
    EXPECT_THAT(messages, ElementsAre("Invalid encoding scheme selected!\n"));
  }
}

TEST(CodewordEncoder, EmptyTextGivesNoCodewords) {
  for (int scheme = kAutomaticScheme; scheme < kEncodationSchemes; ++scheme) {
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
    int scheme;
    char character;
    std::size_t longest;
  };
  // 1,558 codewords.
  constexpr Largest kLargest[] = {{kAscii, '1', 3116},
                                  {kAscii, 'A', 1558},
                                  {kAscii, '\xE9', 779},
                                  {kC40, 'A', 2335},
                                  {kText, 'a', 2335},
                                  {kX12, 'A', 2335},
                                  {kEdifact, 'A', 2076},
                                  {kBase256, 'A', 1556},
                                  {kAutomaticScheme, '1', 3116},
                                  {kAutomaticScheme, 'A', 2335},
                                  {kAutomaticScheme, 'a', 2335},
                                  {kAutomaticScheme, '!', 2076},
                                  {kAutomaticScheme, '\xE9', 1556}};
  for (const Largest& largest : kLargest) {
    SCOPED_TRACE(largest.scheme);
    const std::string text(largest.longest, largest.character);
    EXPECT_EQ(Decode(Encode(text, largest.scheme), k144x144), text);
    EncoderMessages messages;
    EXPECT_THAT(EncodeCodewords(text + largest.character, largest.scheme, k144x144, messages), IsEmpty());
  }
}

TEST(CodewordEncoder, TextBeyondTheBufferStopsWithAMessage) {
  EncoderMessages messages;
  EXPECT_THAT(EncodeCodewords(std::string(4097, 'A'), kAscii, kAutomaticSquareSize, messages), IsEmpty());
  EXPECT_THAT(messages, ElementsAre("Can't push input word, encoded length exceeds limits!\n"));
  messages.clear();
  EXPECT_THAT(EncodeCodewords(std::string(8000, 'A'), kAutomaticScheme, kAutomaticSquareSize, messages),
              IsEmpty());
  EXPECT_THAT(messages, Each("Can't push input word, encoded length exceeds limits!\n"));
  EXPECT_GE(messages.size(), 1U);
  EXPECT_LT(messages.size(), 50U);
}

TEST(CodewordEncoder, MegabyteIsRefusedAtOnce) {
  const std::string text(1 << 20, '1');
  for (int scheme = kAutomaticScheme; scheme < kEncodationSchemes; ++scheme) {
    EncoderMessages messages;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_THAT(EncodeCodewords(text, scheme, kAutomaticSquareSize, messages), IsEmpty());
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(50));
    EXPECT_THAT(messages, ElementsAre("Encoding failed, data length out of range!\n"));
  }
}

TEST(CodewordEncoder, EverySchemeDecodesToTheText) {
  for (int scheme = 0; scheme < kEncodationSchemes; ++scheme) {
    DataMatrixCorpus corpus(static_cast<unsigned>(scheme) + 1);
    for (int round = 0; round < 30'000; ++round) {
      const std::string text = corpus.ForScheme(static_cast<EncodationScheme>(scheme), 60);
      const Codewords codewords = Encode(text, scheme);
      ASSERT_EQ(Decode(codewords, kAutomaticSquareSize), text) << "scheme " << scheme;
    }
  }
}

TEST(CodewordEncoder, LongTextsDecodeToTheText) {
  for (int scheme = kAutomaticScheme; scheme < kEncodationSchemes; ++scheme) {
    DataMatrixCorpus corpus(static_cast<unsigned>(scheme) + 11);
    for (int round = 0; round < 100; ++round) {
      const auto alphabet = static_cast<EncodationScheme>(scheme < 0 ? kAscii : scheme);
      const std::string text = corpus.ForScheme(alphabet, 750);
      ASSERT_EQ(Decode(Encode(text, scheme), kAutomaticSquareSize), text) << "scheme " << scheme;
    }
  }
}

TEST(CodewordEncoder, AutomaticDecodesAndIsNeverLongerThanAFixedScheme) {
  DataMatrixCorpus corpus(7);
  for (int round = 0; round < 30'000; ++round) {
    const std::string text = corpus.Mixed(40);
    const int options[] = {kAutomaticSquareSize, kAutomaticRectangularSize,
                           static_cast<int>(corpus.Below(30))};
    const int option = options[corpus.Below(3)];
    const Codewords automatic = Encode(text, kAutomaticScheme, option);
    if (!automatic.empty()) {
      ASSERT_EQ(Decode(automatic, option), text);
    }
    for (int scheme = 0; scheme < kEncodationSchemes; ++scheme) {
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
  EXPECT_THAT(Encode("A1111AAAA1A1", kAutomaticScheme, kAutomaticRectangularSize), SizeIs(9));
  EXPECT_THAT(Encode("12  *1B>*>*22 1", kAutomaticScheme), SizeIs(11));
}

TEST(CodewordEncoder, AutomaticPrefersTheLowerSchemeOnTies) {
  EXPECT_THAT(Encode("AIM", kAutomaticScheme), ElementsAre(66, 74, 78));
  EXPECT_THAT(Encode("AIMAIM", kAutomaticScheme), ElementsAre(230, 91, 11, 91, 11));
}

TEST(CodewordEncoder, AutomaticIsFast) {
  DataMatrixCorpus corpus(3);
  const std::string text = corpus.ForScheme(EncodationScheme::kX12, 3000) + std::string(1000, '7');
  const auto start = std::chrono::steady_clock::now();
  EncoderMessages messages;
  EncodeCodewords(text, kAutomaticScheme, kAutomaticSquareSize, messages);
  // Milliseconds; the bound leaves room for sanitizers and busy machines, not for quadratic time.
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(500));
}

}  // namespace
}  // namespace barcode
