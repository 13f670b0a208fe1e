#include <gtest/gtest.h>

#include <set>
#include <string>

#include "linear/nw7.h"
#include "support/expect_throw.h"
#include "support/pattern.h"

namespace barcode {
namespace {

constexpr const char* kA = "1133131";
constexpr const char* kC = "1113133";
constexpr const char* kOne = "1111331";

TEST(Nw7Encoder, PutsAGapOfTwoBetweenCharacters) {
  EXPECT_EQ(Digits(EncodeNw7("A1A")), std::string(kA) + "2" + kOne + "2" + kA);
}

TEST(Nw7Encoder, FramesAPlainTextWithC) {
  EXPECT_EQ(Digits(EncodeNw7("1")), std::string(kC) + "2" + kOne + "2" + kC);
  EXPECT_EQ(EncodeNw7("1-2"), EncodeNw7("C1-2C"));
}

TEST(Nw7Encoder, TakesAnyStartAndStopCharactersInEitherCase) {
  EXPECT_EQ(EncodeNw7("a12d"), EncodeNw7("A12D"));
  EXPECT_NE(EncodeNw7("A12D"), EncodeNw7("A12C"));
}

TEST(Nw7Encoder, OneStartStopCharacterIsBoth) {
  EXPECT_EQ(Digits(EncodeNw7("a")), kA);
}

TEST(Nw7Encoder, RefusesOneSidedFrames) {
  EXPECT_EQ(MessageOf([] { EncodeNw7("a12"); }), "Invalid start/stop character combination in NW7: A12");
  EXPECT_EQ(MessageOf([] { EncodeNw7("12B"); }), "Invalid start/stop character combination in NW7: 12B");
  EXPECT_EQ(MessageOf([] { EncodeNw7("A_"); }), "Invalid start/stop character combination in NW7: A_");
}

TEST(Nw7Encoder, RefusesOtherCharacters) {
  EXPECT_EQ(MessageOf([] { EncodeNw7(""); }), "Empty string");
  EXPECT_EQ(MessageOf([] { EncodeNw7("1e2"); }), "Invalid character in NW7: E");
  EXPECT_EQ(MessageOf([] { EncodeNw7("1\x80"); }), "Invalid character in NW7: \x80");
}

// Two wide elements of seven, or three: the four characters with three wide bars and A to D.
TEST(Nw7Encoder, CharactersHaveTheirOwnPatterns) {
  const std::string characters = "ABCD.+:/$-0123456789";
  std::set<std::string> patterns;
  for (const char character : characters) {
    const std::string pattern = Digits(EncodeNw7(std::string("A") + character + "A")).substr(8, 7);
    const auto wide = std::count(pattern.begin(), pattern.end(), '3');
    EXPECT_EQ(wide, std::string("ABCD.+:/").find(character) == std::string::npos ? 2 : 3) << character;
    patterns.insert(pattern);
  }
  EXPECT_EQ(patterns.size(), characters.size());
}

TEST(Nw7DisplayText, ShowsTheCallersText) {
  EXPECT_EQ(Nw7DisplayText("a12d", true), "a12d");
  EXPECT_EQ(Nw7DisplayText("12", true), "12");
}

TEST(Nw7DisplayText, LeavesOutTheFrameThatTheCallerTyped) {
  EXPECT_EQ(Nw7DisplayText("A12B", false), "12");
  EXPECT_EQ(Nw7DisplayText("a12d", false), "12");
  EXPECT_EQ(Nw7DisplayText("12", false), "12");
  EXPECT_EQ(Nw7DisplayText("A", false), "");
  EXPECT_EQ(Nw7DisplayText("AB", false), "");
}

}  // namespace
}  // namespace barcode
