#include "linear/two_of_five_encoder.h"

#include <gtest/gtest.h>

#include <array>
#include <stdexcept>
#include <string>

#include "support/message_of.h"
#include "support/pattern.h"

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

TEST(TwoOfFive, EachSymbologyHasItsOwnMessage) {
  EXPECT_EQ(MessageOf<std::runtime_error>([] { EncodeMatrix2of5("1-"); }),
            "Matrix 2 of 5 barcode requires numeric digits only");
  EXPECT_EQ(MessageOf<std::runtime_error>([] { EncodeNec2of5("A"); }),
            "NEC 2 of 5 barcode requires numeric digits only");
  EXPECT_EQ(MessageOf<std::runtime_error>([] { EncodeMatrix2of5(""); }), "Empty string");
  EXPECT_EQ(MessageOf<std::runtime_error>([] { EncodeNec2of5(""); }), "Empty string");
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
