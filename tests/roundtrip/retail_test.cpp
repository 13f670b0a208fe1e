// JAN-13, JAN-8, UPC-A and UPC-E as independent readers see them.
#include <gtest/gtest.h>

#include <string>

#include "roundtrip/roundtrip.h"

namespace barcode::test {
namespace {

constexpr int kSamples = 300;

// A box in which the modules of a symbol are `moduleSize` pixels wide, with or without long guards and text.
struct Look {
  bool extended;
  bool text;
  int moduleSize;
};

Look RandomLook(RandomText& random) {
  return {random.Number(0, 1) == 1, random.Number(0, 1) == 1, random.Number(1, 4)};
}

std::optional<GreyImage> Drawn(int type, const std::string& text, int modules, const Look& look) {
  return DrawnSymbol(type, look.moduleSize, [&](BarcodeHandle handle) {
    barcode_set_extended_guard(handle, look.extended ? 1 : 0);
    barcode_set_show_text(handle, look.text ? 1 : 0);
    // Up to 26 pixels are reserved for outer digits at this height.
    return barcode_draw_1d(handle, text.c_str(), modules * look.moduleSize + 26, 80);
  });
}

// "EAN-13 4901234567894", or "nothing".
std::string Seen(const std::optional<Reading>& reading) {
  return reading ? reading->format + " " + reading->data : "nothing";
}

// ZBar needs modules of more than one pixel.
void ExpectZbar(const GreyImage& symbol, const Look& look, const std::string& expected) {
  if (look.moduleSize > 1) {
    EXPECT_EQ(Seen(ReadWithZbar(symbol)), expected) << look.extended << look.text << look.moduleSize;
  }
}

// The check digit by the rule of the standard, apart from the library's own.
char CheckDigit(const std::string& digits) {
  int sum = 0;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    sum += (digits[digits.size() - 1 - i] - '0') * (i % 2 == 0 ? 3 : 1);
  }
  return static_cast<char>('0' + (10 - sum % 10) % 10);
}

TEST(Jan13RoundTrip, BothReadersSeeTheCode) {
  RandomText random(13);
  for (int i = 0; i < kSamples; ++i) {
    const std::string digits = random.Digits(12, 12);
    const std::string code = digits + CheckDigit(digits);
    const Look look = RandomLook(random);
    const auto symbol = Drawn(BARCODE_JAN13, i % 2 == 0 ? digits : code, 95, look);
    ASSERT_TRUE(symbol) << code;
    EXPECT_EQ(Seen(ReadWithZxing(*symbol, "EAN-13")), "EAN-13 " + code);
    // ZBar takes a leading zero for UPC-A.
    ExpectZbar(*symbol, look, code[0] == '0' ? "UPC-A " + code.substr(1) : "EAN-13 " + code);
  }
}

TEST(Jan8RoundTrip, BothReadersSeeTheCode) {
  RandomText random(8);
  for (int i = 0; i < kSamples; ++i) {
    const std::string digits = random.Digits(7, 7);
    const std::string code = digits + CheckDigit(digits);
    const Look look = RandomLook(random);
    const auto symbol = Drawn(BARCODE_JAN8, i % 2 == 0 ? digits : code, 67, look);
    ASSERT_TRUE(symbol) << code;
    EXPECT_EQ(Seen(ReadWithZxing(*symbol, "EAN-8")), "EAN-8 " + code);
    ExpectZbar(*symbol, look, "EAN-8 " + code);
  }
}

TEST(UpcARoundTrip, BothReadersSeeTheCode) {
  RandomText random(12);
  for (int i = 0; i < kSamples; ++i) {
    const std::string digits = random.Digits(11, 11);
    const std::string code = digits + CheckDigit(digits);
    const Look look = RandomLook(random);
    const auto symbol = Drawn(BARCODE_UPC_A, i % 2 == 0 ? digits : code, 95, look);
    ASSERT_TRUE(symbol) << code;
    EXPECT_EQ(Seen(ReadWithZxing(*symbol, "UPC-A")), "UPC-A " + code);
    ExpectZbar(*symbol, look, "UPC-A " + code);
  }
}

// The UPC-A code that a UPC-E code stands for, zero suppression written out rule by rule.
std::string UpcAOf(const std::string& e) {
  const std::string n = e.substr(0, 1);
  switch (e[6]) {
    case '0':
    case '1':
    case '2':
      return n + e[1] + e[2] + e[6] + "0000" + e[3] + e[4] + e[5];
    case '3':
      return n + e[1] + e[2] + e[3] + "00000" + e[4] + e[5];
    case '4':
      return n + e[1] + e[2] + e[3] + e[4] + "00000" + e[5];
    default:
      return n + e[1] + e[2] + e[3] + e[4] + e[5] + "0000" + e[6];
  }
}

TEST(UpcERoundTrip, NumberSystemZeroReadsUnlessItsCheckDigitIsZero) {
  RandomText random(14);
  int unreadable = 0;
  for (int i = 0; i < kSamples; ++i) {
    const std::string digits = random.Digits(6, 6);
    const char checkDigit = CheckDigit(UpcAOf("0" + digits));
    const std::string code = "0" + digits + checkDigit;
    const Look look = RandomLook(random);
    const auto symbol = Drawn(BARCODE_UPC_E, i % 2 == 0 ? digits : code, 51, look);
    ASSERT_TRUE(symbol) << code;
    if (checkDigit == '0') {
      // Six even digits are no parity of the standard.
      EXPECT_EQ(Seen(ReadWithZxing(*symbol, "UPC-E")), "nothing") << code;
      EXPECT_EQ(Seen(ReadWithZbar(*symbol)), "nothing") << code;
      ++unreadable;
      continue;
    }
    EXPECT_EQ(Seen(ReadWithZxing(*symbol, "UPC-E")), "UPC-E " + code);
    ExpectZbar(*symbol, look, "UPC-E " + code);
  }
  EXPECT_GT(unreadable, 10);
}

TEST(UpcERoundTrip, OtherNumberSystemsAndWrongCheckDigitsDoNotRead) {
  // The bars say number system 0 whatever it is, and the check digit does not fit that code.
  for (const char* const code : {"1234567", "9876543", "06543211"}) {
    const auto symbol = Drawn(BARCODE_UPC_E, code, 51, {true, true, 2});
    ASSERT_TRUE(symbol);
    EXPECT_EQ(Seen(ReadWithZxing(*symbol, "UPC-E")), "nothing") << code;
    EXPECT_EQ(Seen(ReadWithZbar(*symbol)), "nothing") << code;
  }
}

}  // namespace
}  // namespace barcode::test
