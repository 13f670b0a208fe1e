#include "linear/upc_e.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>
#include <stdexcept>

#include "linear/modules.h"

namespace barcode {
namespace {

using ::testing::ThrowsMessage;

RunVector Encode(const std::string& text) {
  return UpcE("png").Encode(text);
}
std::string CompleteCode(const std::string& text) {
  return UpcE("png").CompleteCode(text);
}

TEST(UpcEExpand, ZeroSuppressionIsKeyedByTheLastDataDigit) {
  EXPECT_EQ(ExpandUpcE("0123450"), "01200000345");
  EXPECT_EQ(ExpandUpcE("0123451"), "01210000345");
  EXPECT_EQ(ExpandUpcE("0123452"), "01220000345");
  EXPECT_EQ(ExpandUpcE("0123453"), "01230000045");
  EXPECT_EQ(ExpandUpcE("0123454"), "01234000005");
  EXPECT_EQ(ExpandUpcE("0123455"), "01234500005");
  EXPECT_EQ(ExpandUpcE("1987659"), "19876500009");
}

TEST(UpcEComplete, SixDigitsGetNumberSystemZeroAndTheCheckDigit) {
  EXPECT_EQ(CompleteCode("654321"), "06543217");
  EXPECT_EQ(CompleteCode("123456"), "01234565");
}

TEST(UpcEComplete, SevenDigitsGetTheCheckDigit) {
  EXPECT_EQ(CompleteCode("0654321"), "06543217");
  EXPECT_EQ(CompleteCode("1654321"), "16543214");
}

TEST(UpcEComplete, EightDigitsAreTakenAsTheyAre) {
  EXPECT_EQ(CompleteCode("06543217"), "06543217");
  EXPECT_EQ(CompleteCode("06543210"), "06543210");
}

TEST(UpcEComplete, Refusals) {
  constexpr auto kLength = "Invalid length (must be 6, 7 or 8 digits).";
  constexpr auto kCharacter = "Invalid character (non-digit found).";
  const auto refuses = [](const std::string& text, const char* message) {
    EXPECT_THAT([&] { CompleteCode(text); }, ThrowsMessage<std::runtime_error>(message)) << text;
  };
  refuses("", kLength);
  refuses("12345", kLength);
  refuses("abc", kLength);
  refuses("123456789", kLength);
  refuses(std::string(1 << 20, '1'), kLength);
  refuses("12345a", kCharacter);
  refuses("a234567", kCharacter);
  refuses("1234567\xB2", kCharacter);
}

TEST(UpcEEncode, ParityOfTheCheckDigit) {
  EXPECT_EQ(Modules(Encode("06543217")),
            "101"
            "000010101100010011101011110100110110011001"
            "010101");
}

TEST(UpcEEncode, CheckDigitZeroGivesSixEvenDigits) {
  EXPECT_EQ(Modules(Encode("01111110")),
            "101"
            "011001101100110110011011001101100110110011"
            "010101");
}

TEST(UpcEEncode, TheNumberSystemTakesNoPart) {
  EXPECT_EQ(Encode("16543217"), Encode("06543217"));
  EXPECT_EQ(Encode("x6543217"), Encode("06543217"));
}

TEST(UpcEEncode, ThirtyThreeRunsOfFiftyOneModules) {
  for (char digit = '0'; digit <= '9'; ++digit) {
    const RunVector runs = Encode(std::string(8, digit));
    EXPECT_EQ(runs.size(), 33U);
    EXPECT_EQ(std::accumulate(runs.begin(), runs.end(), 0U), 51U);
  }
}

TEST(UpcEEncode, Refusals) {
  const auto refuses = [](const std::string& code, const char* message) {
    EXPECT_THAT([&] { Encode(code); }, ThrowsMessage<std::runtime_error>(message)) << code;
  };
  refuses("", "EncodeUPCE: code must be 8 digits.");
  refuses("0654321", "EncodeUPCE: code must be 8 digits.");
  refuses("0a54321x", "EncodeUPCE: invalid check digit.");
  refuses("0a543217", "EncodeUPCE: non digit in data part.");
}

TEST(UpcEEncode, ModuleSequencesBeginWithABar) {
  for (const ModuleSequence& modules : {ModuleSequence{}, ModuleSequence{0, 1}}) {
    EXPECT_THAT([&] { UpcERuns(modules); },
                ThrowsMessage<std::runtime_error>("EncodeUPCE: internal module sequence error."));
  }
  EXPECT_EQ(UpcERuns({1, 1, 0}), (RunVector{2, 1}));
}

}  // namespace
}  // namespace barcode
