#include "linear/nw7_encoder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <stdexcept>
#include <string>

#include "support/message_of.h"
#include "support/pattern.h"

namespace barcode::test {
namespace {

constexpr const char* kA = "1133131";
constexpr const char* kC = "1113133";
constexpr const char* kOne = "1111331";

TEST(Nw7Encode, PutsAGapOfTwoBetweenCharacters) {
  EXPECT_EQ(Digits(EncodeNw7("A1A")), std::string(kA) + "2" + kOne + "2" + kA);
}

TEST(Nw7Encode, FramesAPlainTextWithC) {
  EXPECT_EQ(Digits(EncodeNw7("1")), std::string(kC) + "2" + kOne + "2" + kC);
  EXPECT_EQ(EncodeNw7("1-2"), EncodeNw7("C1-2C"));
}

TEST(Nw7Encode, TakesAnyStartAndStopCharactersInEitherCase) {
  EXPECT_EQ(EncodeNw7("a12d"), EncodeNw7("A12D"));
  EXPECT_NE(EncodeNw7("A12D"), EncodeNw7("A12C"));
}

TEST(Nw7Encode, OneStartStopCharacterIsBoth) {
  EXPECT_EQ(Digits(EncodeNw7("a")), kA);
}

TEST(Nw7Encode, RefusesOneSidedFrames) {
  EXPECT_EQ(MessageOf<std::runtime_error>([] { EncodeNw7("a12"); }),
            "Invalid start/stop character combination in NW7: A12");
  EXPECT_EQ(MessageOf<std::runtime_error>([] { EncodeNw7("12B"); }),
            "Invalid start/stop character combination in NW7: 12B");
  EXPECT_EQ(MessageOf<std::runtime_error>([] { EncodeNw7("A_"); }),
            "Invalid start/stop character combination in NW7: A_");
}

TEST(Nw7Encode, RefusesOtherCharacters) {
  EXPECT_EQ(MessageOf<std::runtime_error>([] { EncodeNw7(""); }), "Empty string");
  EXPECT_EQ(MessageOf<std::runtime_error>([] { EncodeNw7("1e2"); }), "Invalid character in NW7: E");
  EXPECT_EQ(MessageOf<std::runtime_error>([] { EncodeNw7("1\x80"); }), "Invalid character in NW7: \x80");
}

// Two wide elements of seven, or three: the four characters with three wide bars and A to D.
TEST(Nw7Encode, CharactersHaveTheirOwnPatterns) {
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
  EXPECT_EQ(Nw7DisplayText("A12B", true), "A12B");
}

TEST(Nw7DisplayText, LeavesOutTheFrameThatTheCallerTyped) {
  EXPECT_EQ(Nw7DisplayText("A12B", false), "12");
  EXPECT_EQ(Nw7DisplayText("a12d", false), "12");
  EXPECT_EQ(Nw7DisplayText("12", false), "12");
  EXPECT_EQ(Nw7DisplayText("A", false), "");
  EXPECT_EQ(Nw7DisplayText("AB", false), "");
}

}  // namespace
}  // namespace barcode::test
