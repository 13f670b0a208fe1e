#include "gs1/databar_rows.h"

#include <gtest/gtest.h>

#include <array>

namespace barcode {
namespace {

TEST(DataBarRows, BuilderAlternatesColours) {
  const std::array<std::uint8_t, 3> widths = {1, 2, 3};
  EXPECT_EQ(DataBarRowBuilder(false).AddGuard().Add(widths).AddReversed(widths).Row(), "01011000111001");
  EXPECT_EQ(DataBarRowBuilder(true).Add(widths).Row(), "100111");
}

TEST(DataBarRows, WidthDigitsBeginWithABarSlot) {
  EXPECT_EQ(WidthDigits("1101"), "211");
  EXPECT_EQ(WidthDigits("0011"), "022");
  EXPECT_EQ(WidthDigits("1"), "1");
}

TEST(DataBarRows, LongRunsAreSplitByAnEmptyElement) {
  EXPECT_EQ(WidthDigits(std::string(9, '1')), "9");
  EXPECT_EQ(WidthDigits("1000000000000"), "1903");
  EXPECT_EQ(WidthDigits("100000000001"), "19011");
  EXPECT_EQ(WidthDigits("1000000000000000000000000000"), "190909");
  EXPECT_EQ(DataBarRowModules("190909"), 28U);
}

TEST(DataBarRows, AdjacentSeparatorIsTheComplementBetweenLightEnds) {
  EXPECT_EQ(AdjacentSeparator("010110100101101001", {}), "000001011010010000");
}

TEST(DataBarRows, AdjacentSeparatorAlternatesAlongSpacesOfAFinder) {
  // 13 modules from position 5: space of 4, bar of 3, space of 6.
  const std::string row =
      "11110"
      "0000111000000"
      "11111";
  EXPECT_EQ(AdjacentSeparator(row, std::array<std::size_t, 1>{5}),
            "00001"
            "1010000101010"
            "00000");
}

TEST(DataBarRows, MiddleSeparatorBeginsDarkAtTheSixthModule) {
  EXPECT_EQ(MiddleSeparator(14), "00000101010000");
  EXPECT_EQ(MiddleSeparator(53),
            "0000010101010101010101010101010101010101010101010"
            "0000");
}

}  // namespace
}  // namespace barcode
