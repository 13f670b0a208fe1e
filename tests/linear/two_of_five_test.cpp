#include "linear/two_of_five.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "linear/matrix_2of5.h"
#include "linear/nec_2of5.h"
#include "support/message_of.h"
#include "support/pattern.h"

namespace barcode::test {
namespace {

constexpr const char* kMessage = "digits only";

std::string Encoded(const std::string& digits) {
  return Digits(EncodeTwoOfFive(digits, 3, kMessage));
}

TEST(TwoOfFive, WideElementsFollowTheIntegerPartOfTheRatio) {
  EXPECT_EQ(WideModules(1.0F), 3U);
  EXPECT_EQ(WideModules(1.9F), 3U);
  EXPECT_EQ(WideModules(3.0F), 3U);
  EXPECT_EQ(WideModules(2.0F), 2U);
  EXPECT_EQ(WideModules(0.5F), 2U);
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

TEST(TwoOfFive, UsesTheWideWidth) {
  EXPECT_EQ(Digits(EncodeTwoOfFive("79", 2, kMessage)),
            "2121"
            "21112"
            "1"
            "21211"
            "122");
}

TEST(TwoOfFive, BothSymbologiesEncodeAlike) {
  EXPECT_EQ(Digits(Matrix2of5("png").Encode("79")), Encoded("79"));
  EXPECT_EQ(NEC2of5("png").Encode("0123456789"), Matrix2of5("png").Encode("0123456789"));
  EXPECT_EQ(Matrix2of5("png").Encode("3"), Matrix2of5("png").Encode("6"));
  EXPECT_EQ(Matrix2of5("png").Encode("5").size(), 4U + 5U + 3U);
}

TEST(TwoOfFive, EachSymbologyHasItsOwnMessage) {
  EXPECT_EQ(MessageOf([] { Matrix2of5("png").Encode("1-"); }),
            "Matrix 2 of 5 barcode requires numeric digits only");
  EXPECT_EQ(MessageOf([] { NEC2of5("png").Encode("A"); }), "NEC 2 of 5 barcode requires numeric digits only");
  EXPECT_EQ(MessageOf([] { Matrix2of5("png").Encode(""); }), "Empty string");
  EXPECT_EQ(MessageOf([] { NEC2of5("png").Encode(""); }), "Empty string");
}

TEST(TwoOfFive, RefusesWhatIsNotDigits) {
  EXPECT_EQ(MessageOf([] { EncodeTwoOfFive("", 3, kMessage); }), "Empty string");
  EXPECT_EQ(MessageOf([] { EncodeTwoOfFive("12a", 3, kMessage); }), kMessage);
  EXPECT_EQ(MessageOf([] { EncodeTwoOfFive("\xB2", 3, kMessage); }), kMessage);
}

}  // namespace
}  // namespace barcode::test
