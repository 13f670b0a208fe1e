#include "linear/yubin_customer_encoder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "layout/four_state_layout.h"

namespace barcode {
namespace {

using ::testing::EndsWith;

constexpr auto kCc1 = "324";
constexpr auto kCc4 = "432";

std::string Times(int count, const std::string& text) {
  std::string repeated;
  for (int i = 0; i < count; ++i) {
    repeated += text;
  }
  return repeated;
}

// The bars as they are published: 1 long, 2 upper semi-long, 3 lower semi-long, 4 timing.
std::string Bars(const FourStateSymbol& symbol) {
  std::string bars;
  for (const FourState bar : symbol.bars) {
    switch (bar) {
      case FourState::kLong:
        bars += '1';
        break;
      case FourState::kUpperSemiLong:
        bars += '2';
        break;
      case FourState::kLowerSemiLong:
        bars += '3';
        break;
      case FourState::kTiming:
        bars += '4';
        break;
    }
  }
  return bars;
}

// The data part of a symbol: twenty codes between start code and check character.
std::string Data(std::string_view text) {
  return Bars(EncodeYubinCustomer(text)).substr(2, 60);
}

TEST(YubinCustomerEncode, ExampleOfThePostalService) {
  // 263-0023, 3-30-8-403: the values 67 and three CC4 (14 each) make 109, 5 short of a multiple of 19.
  const FourStateSymbol symbol = EncodeYubinCustomer("26300233-30-8-403");
  EXPECT_EQ(symbol.checkValue, 5);
  EXPECT_EQ(Bars(symbol),
            "13"
            "132321312144144132312"
            "312414312144414231414123144312"
            "432432432"
            "141"
            "31");
}

TEST(YubinCustomerEncode, TwentyDigitsAreSixtySevenBars) {
  const FourStateSymbol symbol = EncodeYubinCustomer("01234567890123456789");
  EXPECT_EQ(Bars(symbol), "13" + Times(2, "144114132312123141321213231411") + "141" + "31");
  EXPECT_EQ(symbol.bars.size(), kYubinBars);
  EXPECT_EQ(kYubinBars, 67U);
  EXPECT_EQ(symbol.checkValue, 5);  // 90 is 5 short of 95
}

TEST(YubinCustomerEncode, FreePositionsAreFilled) {
  EXPECT_EQ(Data("7"), "213" + Times(19, kCc4));
}

TEST(YubinCustomerEncode, LettersAreAControlCodeAndADigit) {
  EXPECT_EQ(Data("AJKTUZ"),
            "324144"
            "324411"
            "342144"
            "342411"
            "234144"
            "234141" +
                Times(8, kCc4));
}

TEST(YubinCustomerEncode, LowerCaseDrawsAsUpperCase) {
  EXPECT_EQ(EncodeYubinCustomer("1-azc").bars, EncodeYubinCustomer("1-AZC").bars);
}

TEST(YubinCustomerEncode, OtherCharactersAreDropped) {
  EXPECT_EQ(EncodeYubinCustomer(std::string_view(" 1\n2#\x80\xFF\0_3", 10)).bars,
            EncodeYubinCustomer("123").bars);
}

TEST(YubinCustomerEncode, NothingButOtherCharacters) {
  const FourStateSymbol symbol = EncodeYubinCustomer("!?");
  EXPECT_EQ(Bars(symbol), "13" + Times(20, kCc4) + "141" + "31");
  EXPECT_EQ(symbol.checkValue, 5);
}

TEST(YubinCustomerEncode, SurplusInputIsIgnored) {
  const std::string full(20, '8');
  EXPECT_EQ(EncodeYubinCustomer(full + "1A-").bars, EncodeYubinCustomer(full).bars);
}

TEST(YubinCustomerEncode, LetterInTheLastPositionEndsTheDataWithCc1) {
  const std::string nineteen(19, '1');
  for (const char* rest : {"A", "K", "Z", "A5"}) {
    const FourStateSymbol symbol = EncodeYubinCustomer(nineteen + rest);
    EXPECT_EQ(Bars(symbol), "13" + Times(19, "114") + kCc1 + "231" + "31") << rest;
    EXPECT_EQ(symbol.checkValue, 8) << rest;  // 19 x 1 + 11 = 30, 8 short of 38
  }
}

TEST(YubinCustomerEncode, LetterInTheLastTwoPositionsFits) {
  EXPECT_EQ(Data(std::string(18, '1') + "B"), Times(18, "114") + "324114");
}

TEST(YubinCustomerEncode, CheckCharacterOfEveryValue) {
  constexpr std::array<const char*, 19> kCodes = {"144", "114", "132", "312", "123", "141", "321",
                                                  "213", "231", "411", "414", "324", "342", "234",
                                                  "432", "243", "423", "441", "111"};
  // Nineteen zeros and a digit, the fill replaced step by step so that every remainder occurs.
  for (int hyphens = 0; hyphens < 19; ++hyphens) {
    const std::string text = std::string(static_cast<std::size_t>(hyphens), '-') +
                             std::string(static_cast<std::size_t>(20 - hyphens), '0');
    const FourStateSymbol symbol = EncodeYubinCustomer(text);
    const int expected = (19 - 10 * hyphens % 19) % 19;
    EXPECT_EQ(symbol.checkValue, expected);
    EXPECT_THAT(Bars(symbol), EndsWith(std::string(kCodes[static_cast<std::size_t>(expected)]) + "31"));
  }
}

TEST(YubinCustomerEncode, LongTextsTakeNoLonger) {
  EXPECT_EQ(EncodeYubinCustomer(std::string(1 << 20, 'x')).bars, EncodeYubinCustomer("xxxxxxxxxx").bars);
  EXPECT_EQ(EncodeYubinCustomer(std::string(1 << 20, ' ')).bars, EncodeYubinCustomer(" ").bars);
}

// Start code 13, then the digit 0: 144. Nothing is rounded.
TEST(YubinCustomerLayout, BarsAreLaidOutInThirds) {
  const std::vector<RectF> bars = LayoutFourState(EncodeYubinCustomer("0").bars, {.height = 40}, 0).bars;
  ASSERT_EQ(bars.size(), kYubinBars);
  EXPECT_FLOAT_EQ(bars[0].width, 6.6666667F);
  EXPECT_FLOAT_EQ(bars[0].height, 40);
  EXPECT_FLOAT_EQ(bars[1].x, 13.333333F);
  EXPECT_FLOAT_EQ(bars[1].y, 13.333333F);
  EXPECT_FLOAT_EQ(bars[1].height, 26.666667F);
  EXPECT_FLOAT_EQ(bars[3].x, 40);
  EXPECT_FLOAT_EQ(bars[3].y, 13.333333F);
  EXPECT_FLOAT_EQ(bars[3].height, 13.333333F);
  EXPECT_EQ(FourStateImageWidth(40), 901);
}

}  // namespace
}  // namespace barcode
