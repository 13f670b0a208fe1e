#include <gtest/gtest.h>

#include "roundtrip/roundtrip.h"

namespace barcode::test {
namespace {

constexpr std::string_view kSeparator = "\x1D";  // what readers write for an FNC1 that is not the first

void ExpectReading(const std::string& text, const std::string& data, int moduleSize) {
  const auto symbol = DrawnToFit(BARCODE_GS1_128, text, moduleSize);
  ASSERT_TRUE(symbol);
  EXPECT_EQ(ReadWithZxing(*symbol, "Code128"), (Reading{"Code128", data})) << testing::PrintToString(text);
  EXPECT_EQ(ReadWithZbar(*symbol), (Reading{"CODE-128", data})) << testing::PrintToString(text);
}

TEST(Gs1_128RoundTrip, ElementStrings) {
  RandomText random(128);
  for (int i = 0; i < 300; ++i) {
    std::string text = "{FNC1}01" + random.Digits(14, 14);
    std::string data = text.substr(6);
    const int fields = random.Number(1, 3);
    for (int field = 0; field < fields; ++field) {
      const bool separated = field > 0 || random.Number(0, 1) == 0;
      const std::string element =
          (random.Number(0, 1) == 0 ? "10" : "21") +
          (random.Number(0, 2) == 0 ? random.Digits(1, 20) : random.Bytes(1, 20, 33, 122));
      text += (separated ? "{FNC1}" : "{AI}") + element;
      data += (separated ? std::string(kSeparator) : "") + element;
    }
    ExpectReading(text, data, random.Number(2, 4));
  }
}

TEST(Gs1_128RoundTrip, PlainTextReadsAsItIs) {
  RandomText random(1280);
  for (int i = 0; i < 300; ++i) {
    const std::string text =
        random.Number(0, 1) == 0 ? random.Bytes(1, 20, 1, 126) : random.Of("0123456789Aa\x01", 1, 30);
    ExpectReading(text, text, random.Number(2, 4));
  }
}

TEST(Gs1_128RoundTrip, BytesThatNoCodeSetHoldsAreMissing) {
  ExpectReading("AB\x80z\xFF", "ABz", 2);
}

// DEL is a character of set B only, but does not switch to it.
TEST(Gs1_128RoundTrip, DelIsMissingInSetA) {
  ExpectReading("AB\x7F", "AB\x7F", 2);
  ExpectReading("A\x01\x7F", "A\x01", 2);
}

TEST(Gs1_128RoundTrip, PaymentForm) {
  RandomText random(91);
  for (int i = 0; i < 300; ++i) {
    const std::string digits = "91" + random.Digits(41, 41);
    int sum = 0;
    for (std::size_t at = 0; at < digits.size(); ++at) {
      sum += (digits[at] - '0') * (at % 2 == 0 ? 3 : 1);
    }
    const std::string data = digits + static_cast<char>('0' + (10 - sum % 10) % 10);
    const std::string& text = random.Number(0, 1) == 0 ? digits : data;
    const auto symbol = DrawnSymbol(BARCODE_GS1_128, 2, [&](BarcodeHandle handle) {
      return barcode_draw_convenience(handle, text.c_str(), 300 * random.Number(2, 3), 100);
    });
    ASSERT_TRUE(symbol);
    EXPECT_EQ(ReadWithZxing(*symbol, "Code128"), (Reading{"Code128", data}));
    EXPECT_EQ(ReadWithZbar(*symbol), (Reading{"CODE-128", data}));
  }
}

}  // namespace
}  // namespace barcode::test
