#include "linear/nw7.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

#include "support/message_of.h"
#include "support/pattern.h"

namespace barcode::test {
namespace {

constexpr const char* kA = "1133131";
constexpr const char* kC = "1113133";
constexpr const char* kOne = "1111331";

TEST(Nw7Encode, PutsAGapOfTwoBetweenCharacters) {
  EXPECT_EQ(Digits(NW7("png").Encode("A1A")), std::string(kA) + "2" + kOne + "2" + kA);
}

TEST(Nw7Encode, FramesAPlainTextWithC) {
  EXPECT_EQ(Digits(NW7("png").Encode("1")), std::string(kC) + "2" + kOne + "2" + kC);
  EXPECT_EQ(NW7("png").Encode("1-2"), NW7("png").Encode("C1-2C"));
}

TEST(Nw7Encode, TakesAnyStartAndStopCharactersInEitherCase) {
  EXPECT_EQ(NW7("png").Encode("a12d"), NW7("png").Encode("A12D"));
  EXPECT_NE(NW7("png").Encode("A12D"), NW7("png").Encode("A12C"));
}

TEST(Nw7Encode, OneStartStopCharacterIsBoth) {
  EXPECT_EQ(Digits(NW7("png").Encode("a")), kA);
}

TEST(Nw7Encode, RefusesOneSidedFrames) {
  EXPECT_EQ(MessageOf([] { NW7("png").Encode("a12"); }),
            "Invalid start/stop character combination in NW7: A12");
  EXPECT_EQ(MessageOf([] { NW7("png").Encode("12B"); }),
            "Invalid start/stop character combination in NW7: 12B");
  EXPECT_EQ(MessageOf([] { NW7("png").Encode("A_"); }),
            "Invalid start/stop character combination in NW7: A_");
}

TEST(Nw7Encode, RefusesOtherCharacters) {
  EXPECT_EQ(MessageOf([] { NW7("png").Encode(""); }), "Empty string");
  EXPECT_EQ(MessageOf([] { NW7("png").Encode("1e2"); }), "Invalid character in NW7: E");
  EXPECT_EQ(MessageOf([] { NW7("png").Encode("1\x80"); }), "Invalid character in NW7: \x80");
}

// Two wide elements of seven, or three: the four characters with three wide bars and A to D.
TEST(Nw7Encode, CharactersHaveTheirOwnPatterns) {
  const std::string characters = "ABCD.+:/$-0123456789";
  std::set<std::string> patterns;
  for (const char character : characters) {
    const std::string pattern = Digits(NW7("png").Encode(std::string("A") + character + "A")).substr(8, 7);
    const auto wide = std::count(pattern.begin(), pattern.end(), '3');
    EXPECT_EQ(wide, std::string("ABCD.+:/").find(character) == std::string::npos ? 2 : 3) << character;
    patterns.insert(pattern);
  }
  EXPECT_EQ(patterns.size(), characters.size());
}

std::string Shown(const std::string& text, bool showStartStop) {
  NW7 code("png");
  code.SetShowStartStop(showStartStop);
  return code.DisplayText(text);
}

TEST(Nw7DisplayText, ShowsTheCallersText) {
  EXPECT_EQ(Shown("a12d", true), "a12d");
  EXPECT_EQ(Shown("12", true), "12");
  EXPECT_EQ(NW7("png").DisplayText("A12B"), "A12B");  // the default
}

TEST(Nw7DisplayText, LeavesOutTheFrameThatTheCallerTyped) {
  EXPECT_EQ(Shown("A12B", false), "12");
  EXPECT_EQ(Shown("a12d", false), "12");
  EXPECT_EQ(Shown("12", false), "12");
  EXPECT_EQ(Shown("A", false), "");
  EXPECT_EQ(Shown("AB", false), "");
}

}  // namespace
}  // namespace barcode::test
