#include "linear/jan8.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>
#include <stdexcept>

#include "linear/modules.h"

namespace barcode {
namespace {

using ::testing::ThrowsMessage;

RunVector Encode(const std::string& text) {
  return Jan8("png").Encode(text);
}
std::string CompleteCode(const std::string& text) {
  return Jan8("png").CompleteCode(text);
}

TEST(Jan8Encode, LeftHalfOddRightHalfFromTheRightSet) {
  EXPECT_EQ(Modules(Encode("96385074")),
            "101"
            "0001011010111101111010110111"
            "01010"
            "1001110111001010001001011100"
            "101");
}

TEST(Jan8Encode, AppendsTheCheckDigit) {
  EXPECT_EQ(CompleteCode("9638507"), "96385074");
  EXPECT_EQ(Encode("9638507"), Encode("96385074"));
}

TEST(Jan8Encode, FortyThreeRunsOfSixtySevenModules) {
  for (char digit = '0'; digit <= '9'; ++digit) {
    const RunVector runs = Encode(std::string(7, digit));
    EXPECT_EQ(runs.size(), 43U);
    EXPECT_EQ(std::accumulate(runs.begin(), runs.end(), 0U), 67U);
  }
}

TEST(Jan8Encode, Refusals) {
  const auto refuses = [](const char* text, const char* message) {
    EXPECT_THAT([&] { Encode(text); }, ThrowsMessage<std::runtime_error>(message)) << text;
  };
  refuses("", "Empty string");
  refuses("12a", "Jan8 barcode requires numeric digits only");
  refuses("123456", "Jan8 barcode requires 7 or 8 digits");
  refuses("123456789", "Jan8 barcode requires 7 or 8 digits");
  refuses("96385070", "Invalid check digit");
}

}  // namespace
}  // namespace barcode
