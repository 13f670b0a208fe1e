#include "linear/ean_upc_encoder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>

#include "support/message_of.h"
#include "support/pattern.h"

namespace barcode::test {
namespace {

using ::testing::ElementsAre;

// Of a text that is refused.
template <class Function>
std::string MessageFor(Function function, std::string_view text) {
  return MessageOf<std::runtime_error>([&] { function(text); });
}

TEST(EanUpc, PatternsAreScannedFromTheLeftmostModule) {
  ModuleSequence modules;
  AppendDigit(modules, kLeftOddPatterns, '0');
  EXPECT_THAT(modules, ElementsAre(0, 0, 0, 1, 1, 0, 1));
  modules.clear();
  AppendDigit(modules, kLeftEvenPatterns, '6');
  EXPECT_THAT(modules, ElementsAre(0, 0, 0, 0, 1, 0, 1));
  modules.clear();
  AppendDigit(modules, kRightPatterns, '9');
  EXPECT_THAT(modules, ElementsAre(1, 1, 1, 0, 1, 0, 0));
}

TEST(EanUpc, RunsAreTheLengthsOfEqualModules) {
  EXPECT_THAT(RunsOfModules({1, 0, 1, 1, 1, 0, 0}), ElementsAre(1, 1, 3, 2));
  EXPECT_THAT(RunsOfModules({1}), ElementsAre(1));
  EXPECT_THAT(RunsOfModules({}), ElementsAre());
}

// The parities published for the leading digits of EAN-13, position 0 first: G = marked.
TEST(EanUpc, ParityTableReadsFromTheLeft) {
  constexpr std::array<std::string_view, 10> kParities = {"LLLLLL", "LLGLGG", "LLGGLG", "LLGGGL", "LGLLGG",
                                                          "LGGLLG", "LGGGLL", "LGLGLG", "LGLGGL", "LGGLGL"};
  for (int digit = 0; digit < 10; ++digit) {
    std::string parity;
    for (std::size_t i = 0; i < 6; ++i) {
      parity += ParityBit(digit, i) ? 'G' : 'L';
    }
    EXPECT_EQ(parity, kParities[static_cast<std::size_t>(digit)]) << digit;
  }
}

TEST(Jan13, CompleteAppendsOrVerifiesTheCheckDigit) {
  EXPECT_EQ(CompleteJan13("490123456789"), "4901234567894");
  EXPECT_EQ(CompleteJan13("4901234567894"), "4901234567894");
  EXPECT_EQ(CompleteJan13("000000000000"), "0000000000000");
  EXPECT_EQ(CompleteJan13("590123412345"), "5901234123457");
  EXPECT_EQ(EncodeJan13("590123412345"), EncodeJan13("5901234123457"));
}

TEST(Jan13, RefusalsInTheirOrder) {
  constexpr auto kDigits = "Jan13 barcode requires numeric digits only";
  constexpr auto kLength = "Jan13 barcode requires 12 or 13 digits";
  for (const auto function : {+[](std::string_view text) { CompleteJan13(text); },
                              +[](std::string_view text) { EncodeJan13(text); }}) {
    EXPECT_EQ(MessageFor(function, ""), "Empty string");
    EXPECT_EQ(MessageFor(function, "12a"), kDigits);
    EXPECT_EQ(MessageFor(function, "490123456789X"), kDigits);
    EXPECT_EQ(MessageFor(function, "49012345678\xB2"), kDigits);
    EXPECT_EQ(MessageFor(function, "12345"), kLength);
    EXPECT_EQ(MessageFor(function, "49012345678"), kLength);
    EXPECT_EQ(MessageFor(function, "12345678901234"), kLength);
    EXPECT_EQ(MessageFor(function, "49012345678945"), kLength);
    EXPECT_EQ(MessageFor(function, std::string(1 << 20, '1')), kLength);
    EXPECT_EQ(MessageFor(function, "4901234567893"), "Invalid check digit");
    EXPECT_EQ(MessageFor(function, "4901234567890"), "Invalid check digit");
  }
}

TEST(Jan13, LeftHalfInTheParityOfTheLeadingDigit) {
  EXPECT_EQ(ModuleText(EncodeJan13("5901234123457")),
            "101"
            "000101101001110110011001001101111010011101"
            "01010"
            "110011011011001000010101110010011101000100"
            "101");
}

TEST(Jan13, LeadingZeroGivesSixOddDigits) {
  EXPECT_EQ(ModuleText(EncodeJan13("0000000000000")),
            "101"
            "000110100011010001101000110100011010001101"
            "01010"
            "111001011100101110010111001011100101110010"
            "101");
}

TEST(Jan13, FiftyNineRunsOfNinetyFiveModules) {
  for (char digit = '0'; digit <= '9'; ++digit) {
    const RunVector runs = EncodeJan13(std::string(12, digit));
    EXPECT_EQ(runs.size(), 59U);
    EXPECT_EQ(Modules(runs), 95U);
  }
}

TEST(Jan8, LeftHalfOddRightHalfFromTheRightSet) {
  EXPECT_EQ(ModuleText(EncodeJan8("96385074")),
            "101"
            "0001011010111101111010110111"
            "01010"
            "1001110111001010001001011100"
            "101");
}

TEST(Jan8, AppendsTheCheckDigit) {
  EXPECT_EQ(CompleteJan8("9638507"), "96385074");
  EXPECT_EQ(EncodeJan8("9638507"), EncodeJan8("96385074"));
}

TEST(Jan8, FortyThreeRunsOfSixtySevenModules) {
  for (char digit = '0'; digit <= '9'; ++digit) {
    const RunVector runs = EncodeJan8(std::string(7, digit));
    EXPECT_EQ(runs.size(), 43U);
    EXPECT_EQ(Modules(runs), 67U);
  }
}

TEST(Jan8, Refusals) {
  for (const auto function : {+[](std::string_view text) { CompleteJan8(text); },
                              +[](std::string_view text) { EncodeJan8(text); }}) {
    EXPECT_EQ(MessageFor(function, ""), "Empty string");
    EXPECT_EQ(MessageFor(function, "12a"), "Jan8 barcode requires numeric digits only");
    EXPECT_EQ(MessageFor(function, "123456"), "Jan8 barcode requires 7 or 8 digits");
    EXPECT_EQ(MessageFor(function, "123456789"), "Jan8 barcode requires 7 or 8 digits");
    EXPECT_EQ(MessageFor(function, "96385070"), "Invalid check digit");
  }
}

TEST(UpcA, SixDigitsOfTheOddSetAndSixOfTheRightSet) {
  EXPECT_EQ(ModuleText(EncodeUpcA("036000291452")),
            "101"
            "000110101111010101111000110100011010001101"
            "01010"
            "110110011101001100110101110010011101101100"
            "101");
}

TEST(UpcA, IsTheEan13SymbolWithALeadingZero) {
  EXPECT_EQ(EncodeUpcA("72527273070"), EncodeJan13("072527273070"));
}

TEST(UpcA, AppendsTheCheckDigit) {
  EXPECT_EQ(CompleteUpcA("03600029145"), "036000291452");
  EXPECT_EQ(EncodeUpcA("03600029145"), EncodeUpcA("036000291452"));
}

TEST(UpcA, FiftyNineRunsOfNinetyFiveModules) {
  for (char digit = '0'; digit <= '9'; ++digit) {
    const RunVector runs = EncodeUpcA(std::string(11, digit));
    EXPECT_EQ(runs.size(), 59U);
    EXPECT_EQ(Modules(runs), 95U);
  }
}

TEST(UpcA, Refusals) {
  for (const auto function : {+[](std::string_view text) { CompleteUpcA(text); },
                              +[](std::string_view text) { EncodeUpcA(text); }}) {
    EXPECT_EQ(MessageFor(function, ""), "Empty string");
    EXPECT_EQ(MessageFor(function, "12a"), "UPC-A barcode requires numeric digits only");
    EXPECT_EQ(MessageFor(function, "0360002914"), "UPC-A barcode requires 11 or 12 digits");
    EXPECT_EQ(MessageFor(function, "0360002914521"), "UPC-A barcode requires 11 or 12 digits");
    EXPECT_EQ(MessageFor(function, "036000291453"), "Invalid check digit");
  }
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
  EXPECT_EQ(CompleteUpcE("654321"), "06543217");
  EXPECT_EQ(CompleteUpcE("123456"), "01234565");
}

TEST(UpcEComplete, SevenDigitsGetTheCheckDigit) {
  EXPECT_EQ(CompleteUpcE("0654321"), "06543217");
  EXPECT_EQ(CompleteUpcE("1654321"), "16543214");
}

TEST(UpcEComplete, EightDigitsAreTakenAsTheyAre) {
  EXPECT_EQ(CompleteUpcE("06543217"), "06543217");
  EXPECT_EQ(CompleteUpcE("06543210"), "06543210");
}

TEST(UpcEComplete, Refusals) {
  constexpr auto kLength = "Invalid length (must be 6, 7 or 8 digits).";
  constexpr auto kCharacter = "Invalid character (non-digit found).";
  EXPECT_EQ(MessageFor(CompleteUpcE, ""), kLength);
  EXPECT_EQ(MessageFor(CompleteUpcE, "12345"), kLength);
  EXPECT_EQ(MessageFor(CompleteUpcE, "abc"), kLength);
  EXPECT_EQ(MessageFor(CompleteUpcE, "123456789"), kLength);
  EXPECT_EQ(MessageFor(CompleteUpcE, std::string(1 << 20, '1')), kLength);
  EXPECT_EQ(MessageFor(CompleteUpcE, "12345a"), kCharacter);
  EXPECT_EQ(MessageFor(CompleteUpcE, "a234567"), kCharacter);
  EXPECT_EQ(MessageFor(CompleteUpcE, "1234567\xB2"), kCharacter);
}

TEST(UpcEEncode, ParityOfTheCheckDigit) {
  EXPECT_EQ(ModuleText(EncodeUpcE("06543217")),
            "101"
            "000010101100010011101011110100110110011001"
            "010101");
}

TEST(UpcEEncode, CheckDigitZeroGivesSixEvenDigits) {
  EXPECT_EQ(ModuleText(EncodeUpcE("01111110")),
            "101"
            "011001101100110110011011001101100110110011"
            "010101");
}

TEST(UpcEEncode, TheNumberSystemTakesNoPart) {
  EXPECT_EQ(EncodeUpcE("16543217"), EncodeUpcE("06543217"));
  EXPECT_EQ(EncodeUpcE("x6543217"), EncodeUpcE("06543217"));
}

TEST(UpcEEncode, ThirtyThreeRunsOfFiftyOneModules) {
  for (char digit = '0'; digit <= '9'; ++digit) {
    const RunVector runs = EncodeUpcE(std::string(8, digit));
    EXPECT_EQ(runs.size(), 33U);
    EXPECT_EQ(Modules(runs), 51U);
  }
}

TEST(UpcEEncode, Refusals) {
  for (const UpcEParityRule rule : {UpcEParityRule::kCheckDigitAlone, UpcEParityRule::kStandard}) {
    const auto encode = [rule](std::string_view code) { EncodeUpcE(code, rule); };
    EXPECT_EQ(MessageFor(encode, ""), "EncodeUPCE: code must be 8 digits.");
    EXPECT_EQ(MessageFor(encode, "0654321"), "EncodeUPCE: code must be 8 digits.");
    EXPECT_EQ(MessageFor(encode, "0a54321x"), "EncodeUPCE: invalid check digit.");
    EXPECT_EQ(MessageFor(encode, "0a543217"), "EncodeUPCE: non digit in data part.");
  }
}

// Number system, six digits and check digit, as a reader finds them by the parity patterns that ISO/IEC 15420
// publishes for number system 0; those of number system 1 are the opposite.
std::string ReadUpcE(const RunVector& runs) {
  constexpr std::array<std::string_view, 10> kParities = {"EEEOOO", "EEOEOO", "EEOOEO", "EEOOOE", "EOEEOO",
                                                          "EOOEEO", "EOOOEE", "EOEOEO", "EOEOOE", "EOOEOE"};
  const std::string modules = ModuleText(runs);
  std::string digits;
  std::string parity;
  std::string opposite;
  for (std::size_t i = 0; i < 6; ++i) {
    const auto pattern = static_cast<std::uint8_t>(std::stoi(modules.substr(3 + 7 * i, 7), nullptr, 2));
    const auto* const odd = std::find(kLeftOddPatterns.begin(), kLeftOddPatterns.end(), pattern);
    const auto* const even = std::find(kLeftEvenPatterns.begin(), kLeftEvenPatterns.end(), pattern);
    const bool isOdd = odd != kLeftOddPatterns.end();
    digits +=
        static_cast<char>('0' + (isOdd ? odd - kLeftOddPatterns.begin() : even - kLeftEvenPatterns.begin()));
    parity += isOdd ? 'O' : 'E';
    opposite += isOdd ? 'E' : 'O';
  }
  for (std::size_t check = 0; check < kParities.size(); ++check) {
    for (const auto& [system, letters] : {std::pair{'0', parity}, std::pair{'1', opposite}}) {
      if (letters == kParities[check]) {
        return system + digits + std::to_string(check);
      }
    }
  }
  return "no parity pattern: " + parity;
}

TEST(UpcEEncode, TheStandardsParitiesTellNumberSystemAndCheckDigit) {
  for (const char system : {'0', '1'}) {
    for (char check = '0'; check <= '9'; ++check) {
      for (const std::string data : {"123456", "789000", "654321"}) {
        const std::string code = system + data + check;
        const RunVector runs = EncodeUpcE(code, UpcEParityRule::kStandard);
        EXPECT_EQ(ReadUpcE(runs), code);
        EXPECT_EQ(Modules(runs), 51U);
      }
    }
  }
}

TEST(UpcEEncode, TheRulesAgreeButForCheckDigitZeroAndNumberSystemOne) {
  EXPECT_EQ(EncodeUpcE("06543217", UpcEParityRule::kStandard), EncodeUpcE("06543217"));
  EXPECT_NE(EncodeUpcE("01111110", UpcEParityRule::kStandard), EncodeUpcE("01111110"));
  EXPECT_NE(EncodeUpcE("16543214", UpcEParityRule::kStandard), EncodeUpcE("16543214"));
}

TEST(UpcEEncode, TheStandardHasTwoNumberSystems) {
  for (const std::string_view code : {"26543217", "96543217", "x6543217"}) {
    EXPECT_EQ(MessageFor([](std::string_view text) { EncodeUpcE(text, UpcEParityRule::kStandard); }, code),
              "EncodeUPCE: number system must be 0 or 1.");
  }
}

TEST(UpcEEncode, ModuleSequencesBeginWithABar) {
  for (const ModuleSequence& modules : {ModuleSequence{}, ModuleSequence{0, 1}}) {
    EXPECT_EQ(MessageOf<std::runtime_error>([&] { UpcERuns(modules); }),
              "EncodeUPCE: internal module sequence error.");
  }
  EXPECT_EQ(UpcERuns({1, 1, 0}), (RunVector{2, 1}));
}

}  // namespace
}  // namespace barcode::test
