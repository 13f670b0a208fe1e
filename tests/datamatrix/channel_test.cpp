#include "datamatrix/channel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace barcode {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr int kCw = kCodewordLength;

struct Outcome {
  ChannelStatus status;
  EncoderMessages messages;
};

Outcome Encode(Channel channel, EncodationScheme target, std::string_view text) {
  EncoderMessages messages;
  EncodeNext(channel, target, text, messages);
  return {channel.status, messages};
}

Outcome Change(Channel channel, EncodationScheme target) {
  EncoderMessages messages;
  ChangeScheme(channel, target, messages);
  return {channel.status, messages};
}

// Encoded length of a text in one scheme, latch included.
int LengthOf(EncodationScheme scheme, std::string_view text) {
  EncoderMessages messages;
  Channel channel = StartChannel(scheme);
  while (channel.Valid() && channel.position < text.size()) {
    EncodeNext(channel, scheme, text, messages);
  }
  return channel.Valid() ? channel.length : -1;
}

TEST(Channel, StartsLatchedIntoItsScheme) {
  EXPECT_EQ(StartChannel(EncodationScheme::kAscii).length, 0);
  for (const auto scheme : {EncodationScheme::kC40, EncodationScheme::kText, EncodationScheme::kX12,
                            EncodationScheme::kEdifact}) {
    EXPECT_EQ(StartChannel(scheme).length, kCw);
    EXPECT_EQ(StartChannel(scheme).scheme, scheme);
  }
  EXPECT_EQ(StartChannel(EncodationScheme::kBase256).length, 2 * kCw);
}

TEST(Channel, LengthsCountOpenGroupsAsFractions) {
  EXPECT_EQ(LengthOf(EncodationScheme::kAscii, "A"), kCw);
  EXPECT_EQ(LengthOf(EncodationScheme::kAscii, "\xE9"), 2 * kCw);
  EXPECT_EQ(LengthOf(EncodationScheme::kAscii, "123"), 2 * kCw);
  EXPECT_EQ(LengthOf(EncodationScheme::kAscii, "1A2"), 3 * kCw);
  EXPECT_EQ(LengthOf(EncodationScheme::kC40, "A"), kCw + 8);
  EXPECT_EQ(LengthOf(EncodationScheme::kC40, "a"), kCw + 16);
  EXPECT_EQ(LengthOf(EncodationScheme::kText, "a"), kCw + 8);
  EXPECT_EQ(LengthOf(EncodationScheme::kText, "\xE1"), kCw + 24);
  EXPECT_EQ(LengthOf(EncodationScheme::kC40, "\xE1"), kCw + 32);
  EXPECT_EQ(LengthOf(EncodationScheme::kX12, "A*"), kCw + 16);
  EXPECT_EQ(LengthOf(EncodationScheme::kX12, "a"), -1);
  EXPECT_EQ(LengthOf(EncodationScheme::kEdifact, "A!"), kCw + 18);
  EXPECT_EQ(LengthOf(EncodationScheme::kEdifact, "_"), -1);
  EXPECT_EQ(LengthOf(EncodationScheme::kBase256, std::string(249, 'x')), (2 + 249) * kCw);
  EXPECT_EQ(LengthOf(EncodationScheme::kBase256, std::string(250, 'x')), (3 + 250) * kCw);
}

TEST(Channel, LeavingAScheme) {
  struct Case {
    EncodationScheme scheme;
    const char* text;
    int lengthInAscii;
  };
  constexpr Case kCases[] = {
      {EncodationScheme::kC40, "ABC", 4 * kCw},     {EncodationScheme::kEdifact, "ABCD", 5 * kCw},
      {EncodationScheme::kEdifact, "A", 3 * kCw},   {EncodationScheme::kEdifact, "AB", 4 * kCw},
      {EncodationScheme::kEdifact, "ABC", 4 * kCw}, {EncodationScheme::kBase256, "AB", 4 * kCw},
  };
  for (const Case& testCase : kCases) {
    SCOPED_TRACE(testCase.text);
    EncoderMessages messages;
    Channel channel = StartChannel(testCase.scheme);
    const std::string_view text = testCase.text;
    while (channel.position < text.size()) {
      EncodeNext(channel, testCase.scheme, text, messages);
    }
    ChangeScheme(channel, EncodationScheme::kAscii, messages);
    EXPECT_TRUE(channel.Valid());
    EXPECT_EQ(channel.length, testCase.lengthInAscii);
    EXPECT_THAT(messages, IsEmpty());
  }
}

TEST(Channel, CannotLeaveInsideATriplet) {
  const auto [status, messages] =
      Change({.scheme = EncodationScheme::kC40, .length = kCw + 8, .open = 1}, EncodationScheme::kAscii);
  EXPECT_EQ(status, ChannelStatus::kInvalid);
  EXPECT_THAT(messages, IsEmpty());
}

TEST(ChannelMessages, EncodingInAnotherScheme) {
  const auto [status, messages] = Encode({}, EncodationScheme::kC40, "A");
  EXPECT_EQ(status, ChannelStatus::kFatal);
  EXPECT_THAT(messages, ElementsAre("For encoding, channel scheme must equal target scheme!\n"));
}

TEST(ChannelMessages, PositionBeyondTheText) {
  const auto beyond = Encode({.position = 2}, EncodationScheme::kAscii, "A");
  EXPECT_EQ(beyond.status, ChannelStatus::kFatal);
  EXPECT_THAT(beyond.messages, ElementsAre("Channel input index exceeds range!\n"));
  const auto atEnd = Encode({.position = 1}, EncodationScheme::kAscii, "A");
  EXPECT_EQ(atEnd.status, ChannelStatus::kFatal);
  EXPECT_THAT(atEnd.messages, ElementsAre("Input index out of range while encoding!\n"));
}

TEST(ChannelMessages, BrokenLengths) {
  const auto negative = Encode({.length = -1}, EncodationScheme::kAscii, "A");
  EXPECT_EQ(negative.status, ChannelStatus::kFatal);
  EXPECT_THAT(negative.messages, ElementsAre("Invalid encoding length!\n"));
  const auto ascii = Encode({.length = 5}, EncodationScheme::kAscii, "A");
  EXPECT_EQ(ascii.status, ChannelStatus::kFatal);
  EXPECT_THAT(ascii.messages, ElementsAre("Invalid current length detected encoding ascii code\n"));
  const auto edifact = Encode({.scheme = EncodationScheme::kEdifact, .length = kCw, .open = 1},
                              EncodationScheme::kEdifact, "A");
  EXPECT_EQ(edifact.status, ChannelStatus::kFatal);
  EXPECT_THAT(edifact.messages, ElementsAre("Error checking for end of symbol edifact\n"));
  const auto change = Change({.length = 5}, EncodationScheme::kC40);
  EXPECT_EQ(change.status, ChannelStatus::kFatal);
  EXPECT_THAT(change.messages, ElementsAre("Error changing encryption scheme, current length is invalid!\n"));
  const auto first = Change({.scheme = EncodationScheme::kC40}, EncodationScheme::kAscii);
  EXPECT_EQ(first.status, ChannelStatus::kFatal);
  EXPECT_THAT(first.messages,
              ElementsAre("Error while changing encoding scheme, invalid first code word!\n"));
}

TEST(ChannelMessages, ChangingToTheSameScheme) {
  const auto [status, messages] = Change({}, EncodationScheme::kAscii);
  EXPECT_EQ(status, ChannelStatus::kFatal);
  EXPECT_THAT(messages, ElementsAre("Target scheme already equals channel scheme, cannot be changed!\n"));
}

TEST(ChannelMessages, FullBuffer) {
  constexpr int kFull = static_cast<int>(kCodewordBuffer) * kCw;
  EXPECT_EQ(Encode({.length = kFull - kCw}, EncodationScheme::kAscii, "A").status, ChannelStatus::kValid);
  const auto [status, messages] = Encode({.length = kFull}, EncodationScheme::kAscii, "A");
  EXPECT_EQ(status, ChannelStatus::kFatal);
  EXPECT_THAT(messages, ElementsAre("Can't push input word, encoded length exceeds limits!\n"));
}

TEST(ChannelMessages, FieldTooLong) {
  const int longest = static_cast<int>(kLongestBase256Field) + 1;
  EXPECT_EQ(Encode({.scheme = EncodationScheme::kBase256, .length = 2 * kCw, .open = longest - 1},
                   EncodationScheme::kBase256, "A")
                .status,
            ChannelStatus::kValid);
  const auto [status, messages] =
      Encode({.scheme = EncodationScheme::kBase256, .length = 2 * kCw, .open = longest},
             EncodationScheme::kBase256, "A");
  EXPECT_EQ(status, ChannelStatus::kInvalid);
  EXPECT_THAT(messages, ElementsAre("Encoding length out of range!\n"));
}

}  // namespace
}  // namespace barcode
