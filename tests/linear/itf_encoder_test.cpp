#include "linear/itf_encoder.h"

#include <gtest/gtest.h>

#include <array>
#include <stdexcept>
#include <string>

#include "support/message_of.h"
#include "support/pattern.h"

namespace barcode::test {
namespace {

TEST(ItfEncode, FirstDigitIsInTheBarsSecondInTheSpaces) {
  // 3 is wide in its first two elements, 8 in the first and the fourth.
  EXPECT_EQ(Digits(EncodeItf("38")),
            "1111"
            "3331111311"
            "311");
  EXPECT_EQ(Digits(EncodeItf("83")),
            "1111"
            "3313113111"
            "311");
}

TEST(ItfEncode, EveryDigitHasTwoWideElements) {
  const std::array<std::string, 10> digits = {"11331", "31113", "13113", "33111", "11313",
                                              "31311", "13311", "11133", "31131", "13131"};
  for (std::size_t digit = 0; digit < 10; ++digit) {
    const std::string pair = Digits(EncodeItf(std::to_string(digit) + std::to_string(digit))).substr(4, 10);
    for (std::size_t i = 0; i < 5; ++i) {
      EXPECT_EQ(pair[2 * i], digits[digit][i]);
      EXPECT_EQ(pair[2 * i + 1], digits[digit][i]);
    }
  }
}

TEST(ItfEncode, PutsAZeroInFrontOfAnOddNumberOfDigits) {
  EXPECT_EQ(ItfDisplayText("123"), "0123");
  EXPECT_EQ(ItfDisplayText("1234"), "1234");
  EXPECT_EQ(EncodeItf("123"), EncodeItf("0123"));
  EXPECT_EQ(EncodeItf("1").size(), 4U + 10U + 3U);
}

TEST(ItfEncode, RefusesWhatIsNotDigits) {
  EXPECT_EQ(MessageOf<std::runtime_error>([] { EncodeItf(""); }), "Empty string");
  EXPECT_EQ(MessageOf<std::runtime_error>([] { EncodeItf("12 4"); }),
            "ITF barcode requires numeric digits only");
}

}  // namespace
}  // namespace barcode::test
