#include <gtest/gtest.h>

#include "roundtrip/roundtrip.h"

namespace barcode::test {
namespace {

constexpr std::string_view kPlain = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%abcdefghijklmnopqrstuvwxyz";

std::string Upper(std::string text) {
  for (char& c : text) {
    c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  }
  return text;
}

void ExpectReading(const std::string& text, const std::string& data, int moduleSize) {
  const auto symbol =
      DrawnLinear(BARCODE_CODE93, text, 9 * (static_cast<int>(text.size()) + 3) + 10, moduleSize);
  ASSERT_TRUE(symbol);
  EXPECT_EQ(ReadWithZxing(*symbol, "Code93"), (Reading{"Code93", data})) << text;
  EXPECT_EQ(ReadWithZbar(*symbol), (Reading{"CODE-93", data})) << text;
}

TEST(Code93RoundTrip, BothReadersSeeTheTextInUpperCase) {
  RandomText random(93);
  for (int i = 0; i < 300; ++i) {
    const std::string text = random.Of(kPlain, 1, 40);  // C weights wrap at 21 characters, K weights at 15
    ExpectReading(text, Upper(text), random.Number(2, 4));
  }
}

// A reader takes a shift character and the letter after it as one character of full ASCII.
TEST(Code93RoundTrip, TypedShiftCharactersReadAsFullAscii) {
  RandomText random(930);
  for (int i = 0; i < 300; ++i) {
    std::string text;
    std::string data;
    const int pairs = random.Number(1, 10);
    for (int pair = 0; pair < pairs; ++pair) {
      const auto letter = static_cast<char>(random.Number('A', 'Z'));
      if (random.Number(0, 1) == 0) {
        text += {'!', letter};
        data += static_cast<char>(letter - 'A' + 'a');
      } else {
        text += {'<', letter};
        data += static_cast<char>(letter - 'A' + 1);
      }
      text += letter;
      data += letter;
    }
    ExpectReading(text, data, random.Number(2, 4));
  }
}

}  // namespace
}  // namespace barcode::test
