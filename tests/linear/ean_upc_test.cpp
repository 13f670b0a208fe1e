#include "linear/ean_upc.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace barcode {
namespace {

using ::testing::ElementsAre;
using ::testing::ThrowsMessage;

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

void ExpectRefusal(std::string_view text, const char* message) {
  EXPECT_THAT([&] { CompleteRetailCode(text, 13, "Name"); }, ThrowsMessage<std::runtime_error>(message))
      << text;
}

TEST(CompleteRetailCode, AppendsOrVerifiesTheCheckDigit) {
  EXPECT_EQ(CompleteRetailCode("490123456789", 13, "Name"), "4901234567894");
  EXPECT_EQ(CompleteRetailCode("4901234567894", 13, "Name"), "4901234567894");
  EXPECT_EQ(CompleteRetailCode("000000000000", 13, "Name"), "0000000000000");
  ExpectRefusal("4901234567893", "Invalid check digit");
}

TEST(CompleteRetailCode, RefusalsInTheirOrder) {
  ExpectRefusal("", "Empty string");
  ExpectRefusal("12a", "Name barcode requires numeric digits only");
  ExpectRefusal("490123456789X", "Name barcode requires numeric digits only");
  ExpectRefusal("49012345678\xB2", "Name barcode requires numeric digits only");
  ExpectRefusal("12345", "Name barcode requires 12 or 13 digits");
  ExpectRefusal("49012345678", "Name barcode requires 12 or 13 digits");
  ExpectRefusal("49012345678945", "Name barcode requires 12 or 13 digits");
  ExpectRefusal(std::string(1 << 20, '1'), "Name barcode requires 12 or 13 digits");
}

}  // namespace
}  // namespace barcode
