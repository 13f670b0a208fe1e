#include "gs1/payment_form.h"

#include <gtest/gtest.h>

#include <string>

#include "gs1/gs1_128_encoder.h"
#include "support/message_of.h"

namespace barcode::test {
namespace {

// Weighted 3, 1, 3, ... from the right, the 43 digits sum to 305.
const std::string kDigits43 = "9191234500000000001234567890123456789012345";
const std::string kDigits44 = kDigits43 + "5";

std::string Refusal(const std::string& text) {
  return MessageOf([&] { NormalizePaymentCode(text); });
}

TEST(PaymentForm, CompletesFortyThreeDigits) {
  ASSERT_EQ(kDigits43.size(), 43U);
  EXPECT_EQ(NormalizePaymentCode(kDigits43), kDigits44);
  EXPECT_EQ(NormalizePaymentCode(std::string(43, '0')), std::string(44, '0'));
}

TEST(PaymentForm, AcceptsFortyFourDigits) {
  EXPECT_EQ(NormalizePaymentCode(kDigits44), kDigits44);
  EXPECT_EQ(NormalizePaymentCode("{FNC1}" + kDigits44), kDigits44);
  EXPECT_EQ(NormalizePaymentCode("{FNC1}" + kDigits43), kDigits44);
}

TEST(PaymentForm, RefusesAWrongCheckDigit) {
  for (const char* digit : {"0", "1", "2", "3", "4", "6", "7", "8", "9"}) {
    EXPECT_EQ(Refusal(kDigits43 + digit), "Check digit mismatch");
  }
}

TEST(PaymentForm, RefusesOtherLengths) {
  EXPECT_EQ(Refusal(""), "Code length must be 43 or 44 digits");
  EXPECT_EQ(Refusal("{FNC1}"), "Code length must be 43 or 44 digits");
  EXPECT_EQ(Refusal(kDigits43.substr(1)), "Code length must be 43 or 44 digits");
  EXPECT_EQ(Refusal(kDigits44 + "0"), "Code length must be 43 or 44 digits");
}

TEST(PaymentForm, RefusesOtherCharactersBeforeTheLength) {
  const std::string message = "Non-digit character found";
  EXPECT_EQ(Refusal("9A"), message);
  EXPECT_EQ(Refusal("{FNC1}{FNC1}" + kDigits44), message);
  EXPECT_EQ(Refusal(kDigits44 + "{FNC1}"), message);
  EXPECT_EQ(Refusal("{AI}" + kDigits44), message);
}

TEST(PaymentForm, IsWhollyInSetC) {
  const Code128Values values = Gs1_128Values("{FNC1}" + kDigits44);
  ASSERT_EQ(values.size(), 2U + 22U + 2U);
  EXPECT_EQ(values[0], 105);
  EXPECT_EQ(values[1], 102);
  EXPECT_EQ(values[2], 91);
  EXPECT_EQ(values[23], 55);
}

TEST(PaymentForm, WritesTwoLines) {
  const auto lines = PaymentFormLines("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefgh");
  EXPECT_EQ(lines[0], "(01)234567-89ABCDEFGHIJKLMNOPQRST");
  EXPECT_EQ(lines[1], "UVWXYZ-a-bcdefg-h");
  EXPECT_EQ(lines[0].size(), std::string("(91)912345-0000000000000000000000").size());
}

}  // namespace
}  // namespace barcode::test
