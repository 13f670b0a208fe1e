#include <gtest/gtest.h>

#include "roundtrip/roundtrip.h"

namespace barcode::test {
namespace {

constexpr std::string_view kCharacters = "0123456789-$:/.+";

void ExpectReading(const std::string& text, const std::string& data, int moduleSize) {
  const auto symbol = DrawnToFit(BARCODE_NW7, text, moduleSize);
  ASSERT_TRUE(symbol);
  EXPECT_EQ(ReadWithZxing(*symbol, "Codabar"), (Reading{"Codabar", data}));
  EXPECT_EQ(ReadWithZbar(*symbol), (Reading{"Codabar", data}));
}

TEST(Nw7RoundTrip, APlainTextReadsBetweenC) {
  RandomText random(7);
  for (int i = 0; i < 300; ++i) {
    const std::string text = random.Of(kCharacters, 3, 20);  // readers want a few characters
    ExpectReading(text, "C" + text + "C", random.Number(1, 3));
  }
}

TEST(Nw7RoundTrip, TypedStartAndStopCharactersRead) {
  RandomText random(70);
  for (int i = 0; i < 300; ++i) {
    const std::string text = random.Of(kCharacters, 3, 20);
    const int start = random.Number(0, 3);
    const int stop = random.Number(0, 3);
    ExpectReading(std::string(1, "abCD"[start]) + text + "aBcD"[stop],
                  std::string(1, "ABCD"[start]) + text + "ABCD"[stop], random.Number(1, 3));
  }
}

}  // namespace
}  // namespace barcode::test
