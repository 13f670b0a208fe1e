#include "gs1/databar_limited_encoder.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include "support/pattern.h"

namespace barcode::test {
namespace {

struct VectorLimited {
  std::string input;
  std::string widths;
};

const std::vector<VectorLimited> kVectors = {
    {"1501234567890", "01132223212111123112111121122112121123213222211"},
    {"0000000000000", "01111111111116163111311112121111111111111616311"},
    {"1999999999999", "01124221211121511111112111231111141133211142111"},
    {"0100000000000", "01111422231411121211111111222111122222141412111"},
    {"0950110153001", "01112422412111131121111122121112131121221242211"},
};

std::string ErrorOf(std::string_view text) {
  try {
    EncodeDataBarLimited(text);
  } catch (const std::exception& error) {
    return error.what();
  }
  return "";
}

// The first element is the bar that is not there.
TEST(DataBarLimitedEncoder, Vectors) {
  for (const auto& [input, widths] : kVectors) {
    EXPECT_EQ(Digits(EncodeDataBarLimited(input).widths), widths) << input;
  }
}

TEST(DataBarLimitedEncoder, EverySymbolHas74Modules) {
  for (std::uint64_t number = 0; number < 2'000'000'000'000; number += 1'234'567'891) {
    const RunVector widths =
        EncodeDataBarLimited(std::to_string(100'000'000'000'000 + number).substr(2)).widths;
    ASSERT_EQ(Modules(widths), 74U) << number;
  }
}

TEST(DataBarLimitedEncoder, PadsToThirteenDigitsAndAppendsTheCheckDigit) {
  EXPECT_EQ(EncodeDataBarLimited("12345678").digits, "00000123456784");
  EXPECT_EQ(EncodeDataBarLimited("1501234567890").digits, "15012345678907");
  EXPECT_EQ(EncodeDataBarLimited("100000000000").widths, EncodeDataBarLimited("0100000000000").widths);
}

TEST(DataBarLimitedEncoder, RefusesOtherTextInThisOrder) {
  constexpr const char* kDigits = "GS1 DataBar Limited requires numeric digits only";
  constexpr const char* kLength = "Input must be 8-13 digits";
  constexpr const char* kLeading = "GS1 DataBar Limited requires leading digit 0 or 1 after padding";
  EXPECT_EQ(ErrorOf("1234567A"), kDigits);
  EXPECT_EQ(ErrorOf("1234567890123456789A"), kDigits);
  EXPECT_EQ(ErrorOf("123A"), kDigits);
  EXPECT_EQ(ErrorOf(""), kLength);
  EXPECT_EQ(ErrorOf("1234567"), kLength);
  EXPECT_EQ(ErrorOf("23456789012345"), kLength);
  EXPECT_EQ(ErrorOf("2000000000000"), kLeading);
  EXPECT_EQ(ErrorOf("9999999999999"), kLeading);
  EXPECT_EQ(ErrorOf("200000000000"), "");
  EXPECT_EQ(ErrorOf("1999999999999"), "");
  EXPECT_EQ(ErrorOf("12345678"), "");
}

}  // namespace
}  // namespace barcode::test
