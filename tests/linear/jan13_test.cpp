#include "linear/jan13.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>
#include <stdexcept>

#include "linear/modules.h"

namespace barcode {
namespace {

using ::testing::ThrowsMessage;

RunVector Encode(const std::string& text) {
  return Jan13("png").Encode(text);
}
std::string CompleteCode(const std::string& text) {
  return Jan13("png").CompleteCode(text);
}

TEST(Jan13Encode, LeftHalfInTheParityOfTheLeadingDigit) {
  EXPECT_EQ(Modules(Encode("5901234123457")),
            "101"
            "000101101001110110011001001101111010011101"
            "01010"
            "110011011011001000010101110010011101000100"
            "101");
}

TEST(Jan13Encode, LeadingZeroGivesSixOddDigits) {
  EXPECT_EQ(Modules(Encode("0000000000000")),
            "101"
            "000110100011010001101000110100011010001101"
            "01010"
            "111001011100101110010111001011100101110010"
            "101");
}

TEST(Jan13Encode, AppendsTheCheckDigit) {
  EXPECT_EQ(CompleteCode("590123412345"), "5901234123457");
  EXPECT_EQ(Encode("590123412345"), Encode("5901234123457"));
}

TEST(Jan13Encode, FiftyNineRunsOfNinetyFiveModules) {
  for (char digit = '0'; digit <= '9'; ++digit) {
    const RunVector runs = Encode(std::string(12, digit));
    EXPECT_EQ(runs.size(), 59U);
    EXPECT_EQ(std::accumulate(runs.begin(), runs.end(), 0U), 95U);
  }
}

TEST(Jan13Encode, Refusals) {
  const auto refuses = [](const char* text, const char* message) {
    EXPECT_THAT([&] { Encode(text); }, ThrowsMessage<std::runtime_error>(message)) << text;
  };
  refuses("", "Empty string");
  refuses("12a", "Jan13 barcode requires numeric digits only");
  refuses("12345", "Jan13 barcode requires 12 or 13 digits");
  refuses("12345678901234", "Jan13 barcode requires 12 or 13 digits");
  refuses("4901234567890", "Invalid check digit");
}

}  // namespace
}  // namespace barcode
