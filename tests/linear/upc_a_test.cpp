#include "linear/upc_a.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>
#include <stdexcept>

#include "linear/jan13.h"
#include "linear/modules.h"

namespace barcode {
namespace {

using ::testing::ThrowsMessage;

RunVector Encode(const std::string& text) {
  return UpcA("png").Encode(text);
}
std::string CompleteCode(const std::string& text) {
  return UpcA("png").CompleteCode(text);
}

TEST(UpcAEncode, SixDigitsOfTheOddSetAndSixOfTheRightSet) {
  EXPECT_EQ(Modules(Encode("036000291452")),
            "101"
            "000110101111010101111000110100011010001101"
            "01010"
            "110110011101001100110101110010011101101100"
            "101");
}

TEST(UpcAEncode, IsTheEan13SymbolWithALeadingZero) {
  EXPECT_EQ(Encode("72527273070"), Jan13("png").Encode("072527273070"));
}

TEST(UpcAEncode, AppendsTheCheckDigit) {
  EXPECT_EQ(CompleteCode("03600029145"), "036000291452");
  EXPECT_EQ(Encode("03600029145"), Encode("036000291452"));
}

TEST(UpcAEncode, FiftyNineRunsOfNinetyFiveModules) {
  for (char digit = '0'; digit <= '9'; ++digit) {
    const RunVector runs = Encode(std::string(11, digit));
    EXPECT_EQ(runs.size(), 59U);
    EXPECT_EQ(std::accumulate(runs.begin(), runs.end(), 0U), 95U);
  }
}

TEST(UpcAEncode, Refusals) {
  const auto refuses = [](const char* text, const char* message) {
    EXPECT_THAT([&] { Encode(text); }, ThrowsMessage<std::runtime_error>(message)) << text;
  };
  refuses("", "Empty string");
  refuses("12a", "UPC-A barcode requires numeric digits only");
  refuses("0360002914", "UPC-A barcode requires 11 or 12 digits");
  refuses("0360002914521", "UPC-A barcode requires 11 or 12 digits");
  refuses("036000291453", "Invalid check digit");
}

}  // namespace
}  // namespace barcode
