#include <gtest/gtest.h>

#include "roundtrip/roundtrip.h"

namespace barcode::test {
namespace {

TEST(GS1DataBarLimitedRoundTrip, ReadsBack) {
  RandomText random(13);
  std::vector<GreyImage> images;
  std::vector<std::string> data;
  for (int i = 0; i < 400; ++i) {
    std::string text = random.Digits(8, 13);
    if (text.size() == 13) {
      text[0] = static_cast<char>('0' + random.Number(0, 1));
    }
    const auto symbol = DrawnLinear(BARCODE_GS1_DATABAR_LIMITED, text, 74, random.Number(1, 3));
    ASSERT_TRUE(symbol);
    images.push_back(*symbol);
    const std::string padded = std::string(13 - text.size(), '0') + text;
    data.push_back("01" + padded + barcode_calculate_check_digit_14(padded.c_str()));
  }
  const auto readings = ReadWithWasm(images);
  for (std::size_t i = 0; i < readings.size(); ++i) {
    EXPECT_EQ(readings[i], (Reading{"DataBarLtd", data[i]}));
  }
}

}  // namespace
}  // namespace barcode::test
