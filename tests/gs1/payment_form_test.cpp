#include "gs1/payment_form.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "core/font.h"
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

// The rule in so many words, size by size.
PaymentTextSize WalkDown(std::uint32_t width, int size, const MeasureSample& measure) {
  auto extent = measure(size);
  while (extent->width > static_cast<std::int64_t>(width)) {
    size -= 2;
    if (size < 8) {
      return {8, extent->height};
    }
    extent = measure(size);
  }
  return {size, extent->height};
}

// The font's own measures, each taken once.
std::optional<TextExtent> MeasureWithFont(int size) {
  static std::map<int, std::optional<TextExtent>> measures;
  const auto [measure, isNew] = measures.try_emplace(size);
  if (isNew) {
    measure->second = MeasureText(std::string(kPaymentSampleLine), size);
  }
  return measure->second;
}

TEST(PaymentText, TheStartingSizeIsKeptWhenItFits) {
  const auto measure = [](int size) { return std::optional(TextExtent{16 * size, size + 3}); };
  EXPECT_EQ(FitPaymentText(320, 20, measure).fontSize, 20);
  EXPECT_EQ(FitPaymentText(320, 20, measure).lineHeight, 23);
}

TEST(PaymentText, TheSizeFallsInStepsOfTwo) {
  const auto measure = [](int size) { return std::optional(TextExtent{16 * size, size + 3}); };
  EXPECT_EQ(FitPaymentText(319, 20, measure).fontSize, 18);
  EXPECT_EQ(FitPaymentText(287, 20, measure).fontSize, 16);
  EXPECT_EQ(FitPaymentText(287, 21, measure).fontSize, 17);
}

TEST(PaymentText, TheSearchStopsAtEight) {
  const auto measure = [](int size) { return std::optional(TextExtent{16 * size, size + 3}); };
  EXPECT_EQ(FitPaymentText(1, 20, measure).fontSize, 8);
  EXPECT_EQ(FitPaymentText(1, 20, measure).lineHeight, 11);
  // An odd size falls from 9 to 7, which becomes 8; the line was measured at 9.
  EXPECT_EQ(FitPaymentText(1, 21, measure).fontSize, 8);
  EXPECT_EQ(FitPaymentText(1, 21, measure).lineHeight, 12);
  EXPECT_EQ(FitPaymentText(0, 8, measure).fontSize, 8);
}

TEST(PaymentText, ALineThatCannotBeMeasuredCountsAsFitting) {
  const auto measure = [](int) { return std::optional<TextExtent>(); };
  EXPECT_EQ(FitPaymentText(1, 20, measure).fontSize, 20);
  EXPECT_EQ(FitPaymentText(1, 20, measure).lineHeight, 20);
}

TEST(PaymentText, TheSampleIsAsLongAsTheFirstLine) {
  EXPECT_EQ(kPaymentSampleLine.size(), 33U);
}

// Sizes are stepped over where the line is certainly too wide; the outcome is that of trying each.
TEST(PaymentText, EqualsTheWalkThroughAllSizes) {
  ASSERT_TRUE(InitTextRendering());
  for (int start = 8; start < 90; ++start) {
    for (std::uint32_t width = 0; width < 1400; width += 13) {
      const PaymentTextSize fit = FitPaymentText(width, start, MeasureWithFont);
      const PaymentTextSize walk = WalkDown(width, start, MeasureWithFont);
      ASSERT_EQ(fit.fontSize, walk.fontSize) << start << " in " << width;
      ASSERT_EQ(fit.lineHeight, walk.lineHeight) << start << " in " << width;
    }
  }
  for (const int start : {255, 256, 257, 300, 999, 1000}) {
    for (const std::uint32_t width : {0U, 1U, 140U, 2000U, 4004U, 4030U, 15000U}) {
      ASSERT_EQ(FitPaymentText(width, start, MeasureWithFont).fontSize,
                WalkDown(width, start, MeasureWithFont).fontSize)
          << start << " in " << width;
    }
  }
}

// However large the size to start from, few sizes are tried.
TEST(PaymentText, HugeSizesAreSteppedOver) {
  int tried = 0;
  const auto measure = [&](int size) {
    ++tried;
    return std::optional(TextExtent{static_cast<int>(15.7 * size), size});
  };
  EXPECT_EQ(FitPaymentText(300, 2'147'483'647, measure).fontSize, 19);
  EXPECT_EQ(FitPaymentText(100'000, 100'000'000, measure).fontSize, 6368);
  EXPECT_LT(tried, 30);
}

}  // namespace
}  // namespace barcode::test
