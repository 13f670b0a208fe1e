#include <gtest/gtest.h>

#include "roundtrip/roundtrip.h"

namespace barcode::test {
namespace {

TEST(ItfRoundTrip, BothReadersSeeTheDigitsInPairs) {
  RandomText random(25);
  for (int i = 0; i < 300; ++i) {
    const std::string text = random.Digits(6, 30);  // readers refuse shorter symbols
    const std::string digits = text.size() % 2 == 0 ? text : "0" + text;
    const auto symbol =
        DrawnLinear(BARCODE_ITF, text, 9 * static_cast<int>(digits.size()) + 9, random.Number(1, 3));
    ASSERT_TRUE(symbol);
    EXPECT_EQ(ReadWithZxing(*symbol, "ITF"), (Reading{"ITF", digits}));
    EXPECT_EQ(ReadWithZbar(*symbol), (Reading{"I2/5", digits}));
  }
}

}  // namespace
}  // namespace barcode::test
