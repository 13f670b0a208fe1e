#include "datamatrix/encodation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace barcode {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(TripletValues, SetsAndShiftsOfTheStandard) {
  struct Case {
    EncodationScheme scheme;
    int byte;
    std::vector<std::uint8_t> values;
  };
  const Case cases[] = {
      {EncodationScheme::kC40, ' ', {3}},          {EncodationScheme::kC40, '0', {4}},
      {EncodationScheme::kC40, 'Z', {39}},         {EncodationScheme::kC40, 0, {0, 0}},
      {EncodationScheme::kC40, 31, {0, 31}},       {EncodationScheme::kC40, '!', {1, 0}},
      {EncodationScheme::kC40, '/', {1, 14}},      {EncodationScheme::kC40, ':', {1, 15}},
      {EncodationScheme::kC40, '@', {1, 21}},      {EncodationScheme::kC40, '[', {1, 22}},
      {EncodationScheme::kC40, '_', {1, 26}},      {EncodationScheme::kC40, '`', {2, 0}},
      {EncodationScheme::kC40, 'z', {2, 26}},      {EncodationScheme::kC40, 127, {2, 31}},
      {EncodationScheme::kC40, 0xC1, {1, 30, 14}}, {EncodationScheme::kC40, 0x80, {1, 30, 0, 0}},
      {EncodationScheme::kText, 'a', {14}},        {EncodationScheme::kText, 'A', {2, 1}},
      {EncodationScheme::kText, 'Z', {2, 26}},     {EncodationScheme::kText, '`', {2, 0}},
      {EncodationScheme::kText, '{', {2, 27}},     {EncodationScheme::kText, 0xFF, {1, 30, 2, 31}},
      {EncodationScheme::kX12, '\r', {0}},         {EncodationScheme::kX12, '*', {1}},
      {EncodationScheme::kX12, '>', {2}},          {EncodationScheme::kX12, ' ', {3}},
      {EncodationScheme::kX12, '9', {13}},         {EncodationScheme::kX12, 'A', {14}},
      {EncodationScheme::kX12, 'a', {}},           {EncodationScheme::kX12, 0xC1, {}},
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

TEST(Randomizing, PadsOfTheStandard) {
  // Positions 2 to 5: (149 * p) mod 253 + 1 = 46, 195, 91, 240.
  EncoderMessages messages;
  EXPECT_EQ(Randomize253State(129, 2, messages), 175);
  EXPECT_EQ(Randomize253State(129, 3, messages), 70);
  EXPECT_EQ(Randomize253State(129, 4, messages), 220);
  EXPECT_EQ(Randomize253State(129, 5, messages), 115);
  EXPECT_THAT(messages, IsEmpty());
}

TEST(Randomizing, ImpossiblePadIsZeroWithAMessage) {
  EncoderMessages messages;
  EXPECT_EQ(Randomize253State(600, 2, messages), 0);
  EXPECT_THAT(messages, ElementsAre("Error randomizing 253 state!\n"));
}

TEST(Randomizing, FieldBytesComeBack) {
  EncoderMessages messages;
  EXPECT_EQ(Randomize255State(1, 2), 45);  // (149 * 2) mod 255 + 1 = 44
  EXPECT_EQ(Randomize255State(250, 2), 38);
  for (std::size_t position = 1; position <= 1558; ++position) {
    const auto byte = static_cast<std::uint8_t>(position * 7 % 256);
    ASSERT_EQ(Unrandomize255State(Randomize255State(byte, position), position, messages), byte);
  }
  EXPECT_THAT(messages, IsEmpty());
}

TEST(Randomizing, ImpossibleFieldByteIsZeroWithAMessage) {
  EncoderMessages messages;
  EXPECT_EQ(Unrandomize255State(600, 2, messages), 0);
  EXPECT_EQ(Unrandomize255State(-600, 2, messages), 0);
  EXPECT_THAT(messages, ElementsAre("Error unrandomizing 255 state", "Error unrandomizing 255 state"));
}

}  // namespace
}  // namespace barcode
