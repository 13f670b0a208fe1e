#include "datamatrix/schemes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace barcode::datamatrix {
namespace {

using ::testing::ElementsAre;

TEST(TripletValues, SetsAndShiftsOfTheStandard) {
  struct Case {
    Scheme scheme;
    int byte;
    std::vector<std::uint8_t> values;
  };
  const Case cases[] = {
      {Scheme::kC40, ' ', {3}},          {Scheme::kC40, '0', {4}},
      {Scheme::kC40, 'Z', {39}},         {Scheme::kC40, 0, {0, 0}},
      {Scheme::kC40, 31, {0, 31}},       {Scheme::kC40, '!', {1, 0}},
      {Scheme::kC40, '/', {1, 14}},      {Scheme::kC40, ':', {1, 15}},
      {Scheme::kC40, '@', {1, 21}},      {Scheme::kC40, '[', {1, 22}},
      {Scheme::kC40, '_', {1, 26}},      {Scheme::kC40, '`', {2, 0}},
      {Scheme::kC40, 'z', {2, 26}},      {Scheme::kC40, 127, {2, 31}},
      {Scheme::kC40, 0xC1, {1, 30, 14}}, {Scheme::kC40, 0x80, {1, 30, 0, 0}},
      {Scheme::kText, 'a', {14}},        {Scheme::kText, 'A', {2, 1}},
      {Scheme::kText, 'Z', {2, 26}},     {Scheme::kText, '`', {2, 0}},
      {Scheme::kText, '{', {2, 27}},     {Scheme::kText, 0xFF, {1, 30, 2, 31}},
      {Scheme::kX12, '\r', {0}},         {Scheme::kX12, '*', {1}},
      {Scheme::kX12, '>', {2}},          {Scheme::kX12, ' ', {3}},
      {Scheme::kX12, '9', {13}},         {Scheme::kX12, 'A', {14}},
      {Scheme::kX12, 'a', {}},           {Scheme::kX12, 0xC1, {}},
  };
  for (const Case& testCase : cases) {
    SCOPED_TRACE(testCase.byte);
    const auto values = TripletValues(testCase.scheme, static_cast<std::uint8_t>(testCase.byte));
    EXPECT_THAT(values, ::testing::ElementsAreArray(testCase.values));
  }
}

TEST(AsciiLengths, PairsGreedilyFromEveryPosition) {
  EXPECT_THAT(AsciiLengths(""), ElementsAre(0));
  EXPECT_THAT(AsciiLengths("12A345\xE9"), ElementsAre(6, 6, 5, 4, 3, 3, 2, 0));
}

TEST(EdifactUnlatchCodewords, ASixBitUnlatchBehindSixBitCharacters) {
  EXPECT_EQ(EdifactUnlatchCodewords(0), 1);
  EXPECT_EQ(EdifactUnlatchCodewords(1), 2);
  EXPECT_EQ(EdifactUnlatchCodewords(2), 3);
  EXPECT_EQ(EdifactUnlatchCodewords(3), 3);
}

TEST(Base256LengthCodewords, TwoBeyondTheShortField) {
  EXPECT_EQ(Base256LengthCodewords(1), 1U);
  EXPECT_EQ(Base256LengthCodewords(249), 1U);
  EXPECT_EQ(Base256LengthCodewords(250), 2U);
}

TEST(Randomizing, PadsOfTheStandard) {
  // Positions 2 to 5: (149 * p) mod 253 + 1 = 46, 195, 91, 240.
  EXPECT_EQ(Randomize253State(129, 2), 175);
  EXPECT_EQ(Randomize253State(129, 3), 70);
  EXPECT_EQ(Randomize253State(129, 4), 220);
  EXPECT_EQ(Randomize253State(129, 5), 115);
}

TEST(Randomizing, FieldBytesComeBack) {
  EXPECT_EQ(Randomize255State(1, 2), 45);  // (149 * 2) mod 255 + 1 = 44
  EXPECT_EQ(Randomize255State(250, 2), 38);
  for (std::size_t position = 1; position <= 1558; ++position) {
    const auto byte = static_cast<std::uint8_t>(position * 7 % 256);
    const int plain = Randomize255State(byte, position) - (static_cast<int>(149 * position % 255) + 1);
    ASSERT_EQ(plain < 0 ? plain + 256 : plain, byte);
  }
}

}  // namespace
}  // namespace barcode::datamatrix
