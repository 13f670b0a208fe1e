#include <gtest/gtest.h>

#include "roundtrip/roundtrip.h"
#include "support/code128_decode.h"
#include "support/code128_reference.h"

namespace barcode::test {
namespace {

void ExpectReading(const char* mode, const std::string& text, const std::string& data, int moduleSize) {
  const auto symbol = DrawnToFit(BARCODE_CODE128, text, moduleSize,
                                 [&](BarcodeHandle handle) { barcode_set_code_mode(handle, mode); });
  ASSERT_TRUE(symbol) << testing::PrintToString(text);
  EXPECT_EQ(ReadWithZxing(*symbol, "Code128"), (Reading{"Code128", data})) << testing::PrintToString(text);
  EXPECT_EQ(ReadWithZbar(*symbol), (Reading{"CODE-128", data})) << testing::PrintToString(text);
}

// A byte in set A is its own value, which the standard gives to another character.
std::string ReadInSetA(const std::string& text) {
  std::vector<int> values = {103};
  values.insert(values.end(), text.begin(), text.end());
  return DecodeCode128(values, "");
}

TEST(Code128RoundTrip, SetBReadsAsTheText) {
  RandomText random(128);
  for (int i = 0; i < 300; ++i) {
    const std::string text = random.Bytes(1, 25, 32, 126);
    ExpectReading("B", text, text, random.Number(2, 4));
  }
}

TEST(Code128RoundTrip, SetCReadsAsTheDigits) {
  RandomText random(1280);
  for (int i = 0; i < 300; ++i) {
    std::string text = random.Digits(2, 40);
    text.resize(text.size() / 2 * 2);
    ExpectReading("C", text, text, random.Number(2, 4));
  }
}

// Set A takes each byte as a symbol value: readers see the character that the standard gives to that value.
TEST(Code128RoundTrip, SetAReadsAsTheStandardsCharactersOfTheSameValues) {
  RandomText random(1281);
  EXPECT_EQ(ReadInSetA("ABC 1"), "\x01\x02\x03@Q");
  for (int i = 0; i < 300; ++i) {
    const std::string text = random.Bytes(1, 25, 1, 95);
    ExpectReading("A", text, ReadInSetA(text), random.Number(2, 4));
  }
}

TEST(Code128RoundTrip, AutomaticReadsAsTheTextWhereItAvoidsSetA) {
  RandomText random(1282);
  for (int i = 0; i < 300; ++i) {
    const std::string text = random.Of("abcdefghijklmnopqrstuvwxyz{|}~`", 1, 9) + "12345678" +
                             random.Of("abcdefghijklmnopqrstuvwxyz", 1, 9);
    ExpectReading("AUTO", text, text, random.Number(2, 4));
  }
}

// Bytes up to 95 are mostly held by set A, and read as ReadInSetA says.
TEST(Code128RoundTrip, AutomaticReadsByTheStandardAsTheValuesThatWereChosen) {
  RandomText random(1283);
  for (int i = 0; i < 300; ++i) {
    const std::string text =
        random.Number(0, 1) == 0 ? random.Bytes(1, 20, 1, 126) : random.Of("0123456789ABab\x01", 1, 30);
    const auto values = ReferenceCode128(text).Encode();
    ASSERT_TRUE(values);
    ExpectReading("AUTO", text, DecodeCode128(*values, ""), random.Number(2, 4));
  }
}

}  // namespace
}  // namespace barcode::test
