#include <gtest/gtest.h>

#include <array>
#include <string>

#include "linear/itf.h"
#include "support/expect_throw.h"
#include "support/pattern.h"

namespace barcode {
namespace {

TEST(ItfEncoder, FirstDigitIsInTheBarsSecondInTheSpaces) {
  // 3 is wide in its first two elements, 8 in the first and the fourth.
  EXPECT_EQ(Digits(EncodeItf("38", 3)),
            "1111"
            "3331111311"
            "311");
  EXPECT_EQ(Digits(EncodeItf("83", 3)),
            "1111"
            "3313113111"
            "311");
}

TEST(ItfEncoder, EveryDigitHasTwoWideElements) {
  const std::array<std::string, 10> digits = {"11331", "31113", "13113", "33111", "11313",
                                              "31311", "13311", "11133", "31131", "13131"};
  for (std::size_t digit = 0; digit < 10; ++digit) {
    const std::string pair =
        Digits(EncodeItf(std::to_string(digit) + std::to_string(digit), 3)).substr(4, 10);
    for (std::size_t i = 0; i < 5; ++i) {
      EXPECT_EQ(pair[2 * i], digits[digit][i]);
      EXPECT_EQ(pair[2 * i + 1], digits[digit][i]);
    }
  }
}

TEST(ItfEncoder, PutsAZeroInFrontOfAnOddNumberOfDigits) {
  EXPECT_EQ(ItfDigits("123"), "0123");
  EXPECT_EQ(ItfDigits("1234"), "1234");
  EXPECT_EQ(EncodeItf("123", 3), EncodeItf("0123", 3));
  EXPECT_EQ(EncodeItf("1", 3).size(), 4U + 10U + 3U);
}

TEST(ItfEncoder, UsesTheWideWidth) {
  EXPECT_EQ(Digits(EncodeItf("38", 2)),
            "1111"
            "2221111211"
            "211");
}

TEST(ItfEncoder, RefusesWhatIsNotDigits) {
  EXPECT_EQ(MessageOf([] { EncodeItf("", 3); }), "Empty string");
  EXPECT_EQ(MessageOf([] { EncodeItf("12 4", 3); }), "ITF barcode requires numeric digits only");
}

}  // namespace
}  // namespace barcode
