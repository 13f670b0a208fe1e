#include "linear/two_of_five_encoder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>
#include <string_view>

#include "support/message_of.h"
#include "support/pattern.h"
#include "support/random_text.h"

namespace barcode::test {
namespace {

std::string Encoded(const std::string& digits) {
  return Digits(EncodeMatrix2of5(digits));
}

TEST(TwoOfFive, DrawsThreeBarsForEachDigit) {
  const std::array<std::string, 10> digits = {"31111", "11113", "11313", "11311", "11113",
                                              "11111", "11311", "31113", "31111", "31311"};
  for (std::size_t digit = 0; digit < 10; ++digit) {
    EXPECT_EQ(Encoded(std::to_string(digit)), "3131" + digits[digit] + "133");
  }
}

TEST(TwoOfFive, PutsAGapBetweenDigitsOnly) {
  EXPECT_EQ(Encoded("7"),
            "3131"
            "31113"
            "133");
  EXPECT_EQ(Encoded("79"),
            "3131"
            "31113"
            "1"
            "31311"
            "133");
}

TEST(TwoOfFive, BothSymbologiesEncodeAlike) {
  EXPECT_EQ(Digits(EncodeNec2of5("79")), Encoded("79"));
  EXPECT_EQ(EncodeNec2of5("0123456789"), EncodeMatrix2of5("0123456789"));
  EXPECT_EQ(EncodeMatrix2of5("3"), EncodeMatrix2of5("6"));
  EXPECT_EQ(EncodeMatrix2of5("5").size(), 4U + 5U + 3U);
}

// What a reader makes of the elements between start and stop: digits of five elements, each with a narrow
// space behind it. "?" for what is no digit.
std::string ReadDigits(std::string_view elements, const std::array<std::string_view, 10>& digits) {
  std::string text;
  for (std::size_t pos = 0; pos < elements.size(); pos += 6) {
    const std::string_view character = elements.substr(pos, 6);
    const auto* const found = std::find_if(digits.begin(), digits.end(), [&](std::string_view digit) {
      return character == std::string(digit) + "1";
    });
    text += found == digits.end() ? '?' : static_cast<char>('0' + (found - digits.begin()));
  }
  return text;
}

std::string ReadMatrix2of5(const std::string& elements) {
  EXPECT_EQ(elements.substr(0, 6), "311111");
  EXPECT_EQ(elements.substr(elements.size() - 5), "31111");
  return ReadDigits(
      std::string_view(elements).substr(6, elements.size() - 11),
      {"11331", "31113", "13113", "33111", "11313", "31311", "13311", "11133", "31131", "13131"});
}

std::string ReadNec2of5(const std::string& elements) {
  EXPECT_EQ(elements.substr(0, 4), "3131");
  EXPECT_EQ(elements.substr(elements.size() - 3), "133");
  return ReadDigits(
      std::string_view(elements).substr(4, elements.size() - 7),
      {"33111", "11133", "11313", "11331", "13113", "13131", "13311", "31113", "31131", "31311"});
}

TEST(TwoOfFive, AsPublishedEveryTextReadsBack) {
  constexpr auto kRule = TwoOfFiveRule::kBarsAndSpaces;
  RandomText random(25);
  for (int i = 0; i < 300; ++i) {
    const std::string text = i == 0 ? "0123456789" : random.Digits(1, 30);
    EXPECT_EQ(ReadMatrix2of5(Digits(EncodeMatrix2of5(text, kRule))), text);
    EXPECT_EQ(ReadNec2of5(Digits(EncodeNec2of5(text, kRule))), text);
  }
}

TEST(TwoOfFive, AsPublishedSymbolsBeginAndEndWithABar) {
  constexpr auto kRule = TwoOfFiveRule::kBarsAndSpaces;
  EXPECT_EQ(Digits(EncodeMatrix2of5("12", kRule)),
            "311111"
            "311131"
            "131131"
            "31111");
  EXPECT_EQ(Digits(EncodeNec2of5("12", kRule)),
            "3131"
            "111331"
            "113131"
            "133");
}

TEST(TwoOfFive, EachSymbologyHasItsOwnMessage) {
  EXPECT_EQ(MessageOf<std::runtime_error>([] { EncodeMatrix2of5("1-"); }),
            "Matrix 2 of 5 barcode requires numeric digits only");
  EXPECT_EQ(MessageOf<std::runtime_error>([] { EncodeNec2of5("A"); }),
            "NEC 2 of 5 barcode requires numeric digits only");
  EXPECT_EQ(MessageOf<std::runtime_error>([] { EncodeMatrix2of5(""); }), "Empty string");
  EXPECT_EQ(MessageOf<std::runtime_error>([] { EncodeNec2of5(""); }), "Empty string");
  EXPECT_EQ(MessageOf<std::runtime_error>([] { EncodeNec2of5("1a", TwoOfFiveRule::kBarsAndSpaces); }),
            "NEC 2 of 5 barcode requires numeric digits only");
}

TEST(RequireDigits, RefusesWhatIsNotDigits) {
  constexpr auto kMessage = "digits only";
  EXPECT_NO_THROW(RequireDigits("0123456789", kMessage));
  EXPECT_EQ(MessageOf<std::runtime_error>([&] { RequireDigits("", kMessage); }), "Empty string");
  EXPECT_EQ(MessageOf<std::runtime_error>([&] { RequireDigits("12a", kMessage); }), kMessage);
  EXPECT_EQ(MessageOf<std::runtime_error>([&] { RequireDigits("\xB2", kMessage); }), kMessage);
}

}  // namespace
}  // namespace barcode::test
