#include "gs1/databar_general_field.h"

#include <gtest/gtest.h>

namespace barcode {
namespace {

GeneralField Encode(std::string_view text) {
  return EncodeGeneralField(text, 10000);
}

std::string Bits(std::string_view text) {
  return Encode(text).bits;
}

const std::string kToAlphanumeric = "0000";
const std::string kToIso646 = "00100";

TEST(DataBarGeneralField, NumericPairs) {
  EXPECT_EQ(Bits("00"), "0001000");
  EXPECT_EQ(Bits("99"), "1110100");
  EXPECT_EQ(Bits("5\x1D"), "1001001");
  EXPECT_EQ(Bits("\x1D"
                 "5"
                 "12"),
            "1111011"
            "0010101");
  EXPECT_EQ(Encode("1234").mode, GeneralFieldMode::kNumeric);
}

TEST(DataBarGeneralField, LastDigitIsLeftToTheSymbol) {
  const GeneralField field = Encode("127");
  EXPECT_EQ(field.bits, "0010101");
  EXPECT_EQ(field.lastDigit, '7');
  EXPECT_EQ(Encode("12").lastDigit, '\0');
  EXPECT_EQ(Encode("A7").lastDigit, '\0');
}

TEST(DataBarGeneralField, TwoSeparatorsAreNoPair) {
  const GeneralField field = Encode(
      "\x1D\x1D"
      "12");
  EXPECT_EQ(field.bits, kToAlphanumeric +
                            "01111"
                            "1110111");
  EXPECT_EQ(field.lastDigit, '2');
}

TEST(DataBarGeneralField, AlphanumericCharacters) {
  EXPECT_EQ(Bits("A0"), kToAlphanumeric +
                            "100000"
                            "00101");
  EXPECT_EQ(Bits("Z9"), kToAlphanumeric +
                            "111001"
                            "01110");
  EXPECT_EQ(Bits("*,-./"), kToAlphanumeric +
                               "111010"
                               "111011"
                               "111100"
                               "111101"
                               "111110");
  EXPECT_EQ(Encode("A0").mode, GeneralFieldMode::kAlphanumeric);
}

TEST(DataBarGeneralField, SeparatorInACharacterModeReturnsToNumeric) {
  EXPECT_EQ(Bits("A\x1D"
                 "12"),
            kToAlphanumeric +
                "100000"
                "01111"
                "0010101");
  EXPECT_EQ(Bits("a\x1D"
                 "12"),
            kToAlphanumeric + kToIso646 +
                "1011010"
                "01111"
                "0010101");
}

TEST(DataBarGeneralField, AlphanumericLatchesForSixDigitsOrFourAtTheEnd) {
  const std::string a = kToAlphanumeric + "100000";
  EXPECT_EQ(Bits("A123"), a + "00110"
                              "00111"
                              "01000");
  EXPECT_EQ(Bits("A1234"), a + "000"
                               "0010101"
                               "0101101");
  EXPECT_EQ(Bits("A12345B"), a + "00110"
                                 "00111"
                                 "01000"
                                 "01001"
                                 "01010"
                                 "100001");
  EXPECT_EQ(Bits("A123456B").substr(0, 13 + 21), a + "000"
                                                     "0010101"
                                                     "0101101"
                                                     "1000101");
  EXPECT_EQ(Encode("A123456").mode, GeneralFieldMode::kNumeric);
}

TEST(DataBarGeneralField, Iso646Characters) {
  const std::string iso = kToAlphanumeric + kToIso646;
  EXPECT_EQ(Bits("az"), iso +
                            "1011010"
                            "1110011");
  EXPECT_EQ(Bits("aAa"), iso +
                             "1011010"
                             "1000000"
                             "1011010");
  EXPECT_EQ(Bits("aZ0a"), iso +
                              "1011010"
                              "1011001"
                              "00101"
                              "1011010");
  EXPECT_EQ(Bits("!\"%&'()"), iso +
                                  "11101000"
                                  "11101001"
                                  "11101010"
                                  "11101011"
                                  "11101100"
                                  "11101101"
                                  "11101110");
  EXPECT_EQ(Bits("a*+,-./"), iso +
                                 "1011010"
                                 "11101111"
                                 "11110000"
                                 "11110001"
                                 "11110010"
                                 "11110011"
                                 "11110100");
  EXPECT_EQ(Bits(":;<=>?_ "), iso +
                                  "11110101"
                                  "11110110"
                                  "11110111"
                                  "11111000"
                                  "11111001"
                                  "11111010"
                                  "11111011"
                                  "11111100");
  EXPECT_EQ(Encode("a").mode, GeneralFieldMode::kIso646);
}

TEST(DataBarGeneralField, Iso646LatchesBackWhenTheNextTenNeedItNot) {
  const std::string a = kToAlphanumeric + kToIso646 + "1011010";
  EXPECT_EQ(Bits("a1234"), a + "000"
                               "0010101"
                               "0101101");
  EXPECT_EQ(Bits("a123"), a + "00110"
                              "00111"
                              "01000");
  EXPECT_EQ(Bits("aABCDE"), a + "00100"
                                "100000"
                                "100001"
                                "100010"
                                "100011"
                                "100100");
  EXPECT_EQ(Bits("aABCD"), a + "1000000"
                               "1000001"
                               "1000010"
                               "1000011");
  // A lower-case letter as the tenth character keeps the mode, as the eleventh it does not.
  EXPECT_EQ(Bits("aABCDEFGHIb").substr(16, 7), "1000000");
  EXPECT_EQ(Bits("aABCDEFGHIJb").substr(16, 5), "00100");
}

TEST(DataBarGeneralField, AcceptsTheIso646SetAndFnc1) {
  EXPECT_TRUE(IsGeneralFieldText("09AZaz!\"%&'()*+,-./:;<=>?_ \x1D"));
  EXPECT_TRUE(IsGeneralFieldText(""));
  for (int c = 0; c < 256; ++c) {
    const bool letterOrDigit = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    const bool symbol =
        std::string("!\"%&'()*+,-./:;<=>?_ \x1D").find(static_cast<char>(c)) != std::string::npos;
    EXPECT_EQ(IsGeneralFieldText(std::string(1, static_cast<char>(c))), letterOrDigit || symbol) << c;
  }
}

TEST(DataBarGeneralField, StopsBeyondTheLimit) {
  const std::string bits = EncodeGeneralField(std::string(1'000'000, 'a'), 252).bits;
  EXPECT_GT(bits.size(), 252U);
  EXPECT_LT(bits.size(), 270U);
}

}  // namespace
}  // namespace barcode
