#include "gs1/databar_rows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>

#include "support/pattern.h"

namespace barcode::test {
namespace {

using testing::ElementsAre;

DataBarModuleRow Row(std::string_view modules) {
  DataBarModuleRow row;
  for (const char module : modules) {
    row.push_back(module == '1' ? 1 : 0);
  }
  return row;
}

std::string Text(const DataBarModuleRow& row) {
  std::string modules;
  for (const std::uint8_t module : row) {
    modules += module == 1 ? '1' : '0';
  }
  return modules;
}

TEST(DataBarRows, BuilderAlternatesColours) {
  const std::array<std::uint8_t, 3> widths = {1, 2, 3};
  EXPECT_EQ(Text(DataBarRowBuilder(false).AddGuard().Add(widths).AddReversed(widths).Row()),
            "01011000111001");
  EXPECT_EQ(Text(DataBarRowBuilder(true).Add(widths).Row()), "100111");
}

TEST(DataBarRows, ElementWidthsBeginWithABar) {
  EXPECT_THAT(ElementWidths(Row("1101")), ElementsAre(2, 1, 1));
  EXPECT_THAT(ElementWidths(Row("0011")), ElementsAre(0, 2, 2));
  EXPECT_THAT(ElementWidths(Row("1")), ElementsAre(1));
}

TEST(DataBarRows, LongRunsAreSplitByAnEmptyElement) {
  const auto longSpace = [](std::size_t modules) {
    return ElementWidths(Row('1' + std::string(modules, '0')));
  };
  EXPECT_THAT(ElementWidths(Row(std::string(9, '1'))), ElementsAre(9));
  EXPECT_THAT(longSpace(12), ElementsAre(1, 9, 0, 3));
  EXPECT_THAT(ElementWidths(Row("100000000001")), ElementsAre(1, 9, 0, 1, 1));
  EXPECT_THAT(longSpace(27), ElementsAre(1, 9, 0, 9, 0, 9));
  EXPECT_EQ(ModuleText(longSpace(27)), '1' + std::string(27, '0'));
}

TEST(DataBarRows, AdjacentSeparatorIsTheComplementBetweenLightEnds) {
  EXPECT_EQ(Text(AdjacentSeparator(Row("010110100101101001"), {})), "000001011010010000");
}

TEST(DataBarRows, AdjacentSeparatorAlternatesAlongSpacesOfAFinder) {
  // 13 modules from position 5: space of 4, bar of 3, space of 6.
  const std::string row =
      "11110"
      "0000111000000"
      "11111";
  EXPECT_EQ(Text(AdjacentSeparator(Row(row), std::array<std::size_t, 1>{5})),
            "00001"
            "1010000101010"
            "00000");
}

TEST(DataBarRows, MiddleSeparatorBeginsDarkAtTheSixthModule) {
  EXPECT_EQ(Text(MiddleSeparator(14)), "00000101010000");
  EXPECT_EQ(Text(MiddleSeparator(53)),
            "0000010101010101010101010101010101010101010101010"
            "0000");
}

}  // namespace
}  // namespace barcode::test
