#include "datamatrix/channel.h"

#include <gtest/gtest.h>

#include <string>

namespace barcode::datamatrix {
namespace {

constexpr int kCw = kCodewordLength;

struct Outcome {
  ChannelStatus status;
  std::string lines;
};

Outcome Encode(Channel channel, Scheme target, std::string_view text) {
  EncoderLines lines;
  EncodeNext(channel, target, text, lines);
  return {channel.status, lines.Text()};
}

Outcome Change(Channel channel, Scheme target) {
  EncoderLines lines;
  ChangeScheme(channel, target, lines);
  return {channel.status, lines.Text()};
}

// Encoded length of a text in one scheme, latch included.
int LengthOf(Scheme scheme, std::string_view text) {
  EncoderLines lines;
  Channel channel = StartChannel(scheme);
  while (channel.Valid() && channel.position < text.size()) {
    EncodeNext(channel, scheme, text, lines);
  }
  return channel.Valid() ? channel.length : -1;
}

TEST(Channel, StartsLatchedIntoItsScheme) {
  EXPECT_EQ(StartChannel(Scheme::kAscii).length, 0);
  for (const auto scheme : {Scheme::kC40, Scheme::kText, Scheme::kX12, Scheme::kEdifact}) {
    EXPECT_EQ(StartChannel(scheme).length, kCw);
    EXPECT_EQ(StartChannel(scheme).scheme, scheme);
  }
  EXPECT_EQ(StartChannel(Scheme::kBase256).length, 2 * kCw);
}

TEST(Channel, LengthsCountOpenGroupsAsFractions) {
  EXPECT_EQ(LengthOf(Scheme::kAscii, "A"), kCw);
  EXPECT_EQ(LengthOf(Scheme::kAscii, "\xE9"), 2 * kCw);
  EXPECT_EQ(LengthOf(Scheme::kAscii, "123"), 2 * kCw);
  EXPECT_EQ(LengthOf(Scheme::kAscii, "1A2"), 3 * kCw);
  EXPECT_EQ(LengthOf(Scheme::kC40, "A"), kCw + 8);
  EXPECT_EQ(LengthOf(Scheme::kC40, "a"), kCw + 16);
  EXPECT_EQ(LengthOf(Scheme::kText, "a"), kCw + 8);
  EXPECT_EQ(LengthOf(Scheme::kText, "\xE1"), kCw + 24);
  EXPECT_EQ(LengthOf(Scheme::kC40, "\xE1"), kCw + 32);
  EXPECT_EQ(LengthOf(Scheme::kX12, "A*"), kCw + 16);
  EXPECT_EQ(LengthOf(Scheme::kX12, "a"), -1);
  EXPECT_EQ(LengthOf(Scheme::kEdifact, "A!"), kCw + 18);
  EXPECT_EQ(LengthOf(Scheme::kEdifact, "_"), -1);
  EXPECT_EQ(LengthOf(Scheme::kBase256, std::string(249, 'x')), (2 + 249) * kCw);
  EXPECT_EQ(LengthOf(Scheme::kBase256, std::string(250, 'x')), (3 + 250) * kCw);
}

TEST(Channel, LeavingAScheme) {
  struct Case {
    Scheme scheme;
    const char* text;
    int lengthInAscii;
  };
  constexpr Case kCases[] = {
      {Scheme::kC40, "ABC", 4 * kCw},     {Scheme::kEdifact, "ABCD", 5 * kCw},
      {Scheme::kEdifact, "A", 3 * kCw},   {Scheme::kEdifact, "AB", 4 * kCw},
      {Scheme::kEdifact, "ABC", 4 * kCw}, {Scheme::kBase256, "AB", 4 * kCw},
  };
  for (const Case& testCase : kCases) {
    SCOPED_TRACE(testCase.text);
    EncoderLines lines;
    Channel channel = StartChannel(testCase.scheme);
    const std::string_view text = testCase.text;
    while (channel.position < text.size()) {
      EncodeNext(channel, testCase.scheme, text, lines);
    }
    ChangeScheme(channel, Scheme::kAscii, lines);
    EXPECT_TRUE(channel.Valid());
    EXPECT_EQ(channel.length, testCase.lengthInAscii);
    EXPECT_TRUE(lines.Empty());
  }
}

TEST(Channel, CannotLeaveInsideATriplet) {
  const auto [status, lines] = Change({.scheme = Scheme::kC40, .length = kCw + 8, .open = 1}, Scheme::kAscii);
  EXPECT_EQ(status, ChannelStatus::kInvalid);
  EXPECT_EQ(lines, "");
}

TEST(ChannelLines, EncodingInAnotherScheme) {
  const auto [status, lines] = Encode({}, Scheme::kC40, "A");
  EXPECT_EQ(status, ChannelStatus::kFatal);
  EXPECT_EQ(lines, "For encoding, channel scheme must equal target scheme!\n");
}

TEST(ChannelLines, PositionBeyondTheText) {
  const auto beyond = Encode({.position = 2}, Scheme::kAscii, "A");
  EXPECT_EQ(beyond.status, ChannelStatus::kFatal);
  EXPECT_EQ(beyond.lines, "Channel input index exceeds range!\n");
  const auto atEnd = Encode({.position = 1}, Scheme::kAscii, "A");
  EXPECT_EQ(atEnd.status, ChannelStatus::kFatal);
  EXPECT_EQ(atEnd.lines, "Input index out of range while encoding!\n");
}

TEST(ChannelLines, BrokenLengths) {
  const auto negative = Encode({.length = -1}, Scheme::kAscii, "A");
  EXPECT_EQ(negative.status, ChannelStatus::kFatal);
  EXPECT_EQ(negative.lines, "Invalid encoding length!\n");
  const auto ascii = Encode({.length = 5}, Scheme::kAscii, "A");
  EXPECT_EQ(ascii.status, ChannelStatus::kFatal);
  EXPECT_EQ(ascii.lines, "Invalid current length detected encoding ascii code\n");
  const auto edifact = Encode({.scheme = Scheme::kEdifact, .length = kCw, .open = 1}, Scheme::kEdifact, "A");
  EXPECT_EQ(edifact.status, ChannelStatus::kFatal);
  EXPECT_EQ(edifact.lines, "Error checking for end of symbol edifact\n");
  const auto change = Change({.length = 5}, Scheme::kC40);
  EXPECT_EQ(change.status, ChannelStatus::kFatal);
  EXPECT_EQ(change.lines, "Error changing encryption scheme, current length is invalid!\n");
  const auto first = Change({.scheme = Scheme::kC40}, Scheme::kAscii);
  EXPECT_EQ(first.status, ChannelStatus::kFatal);
  EXPECT_EQ(first.lines, "Error while changing encoding scheme, invalid first code word!\n");
}

TEST(ChannelLines, ChangingToTheSameScheme) {
  const auto [status, lines] = Change({}, Scheme::kAscii);
  EXPECT_EQ(status, ChannelStatus::kFatal);
  EXPECT_EQ(lines, "Target scheme already equals channel scheme, cannot be changed!\n");
}

TEST(ChannelLines, FullBuffer) {
  constexpr int kFull = static_cast<int>(kCodewordBuffer) * kCw;
  EXPECT_EQ(Encode({.length = kFull - kCw}, Scheme::kAscii, "A").status, ChannelStatus::kValid);
  const auto [status, lines] = Encode({.length = kFull}, Scheme::kAscii, "A");
  EXPECT_EQ(status, ChannelStatus::kFatal);
  EXPECT_EQ(lines, "Can't push input word, encoded length exceeds limits!\n");
}

TEST(ChannelLines, FieldTooLong) {
  const int longest = static_cast<int>(kLongestBase256Field) + 1;
  EXPECT_EQ(
      Encode({.scheme = Scheme::kBase256, .length = 2 * kCw, .open = longest - 1}, Scheme::kBase256, "A")
          .status,
      ChannelStatus::kValid);
  const auto [status, lines] =
      Encode({.scheme = Scheme::kBase256, .length = 2 * kCw, .open = longest}, Scheme::kBase256, "A");
  EXPECT_EQ(status, ChannelStatus::kInvalid);
  EXPECT_EQ(lines, "Encoding length out of range!\n");
}

}  // namespace
}  // namespace barcode::datamatrix
