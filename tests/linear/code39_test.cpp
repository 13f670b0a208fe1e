#include "linear/code39.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <numeric>
#include <set>
#include <stdexcept>

#include "linear/code39_tables.h"

namespace barcode {
namespace {

using ::testing::ElementsAreArray;

std::string ErrorOf(const std::string& text) {
  try {
    (void)Code39("png").Encode(text);
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "no error";
}

TEST(Code39Table, EveryCharacterHasThreeWideElementsAndItsOwnPattern) {
  std::set<std::uint32_t> patterns;
  for (const std::uint32_t mask : kCode39Patterns) {
    EXPECT_EQ(std::popcount(mask), 3);
    patterns.insert(mask);
  }
  EXPECT_EQ(patterns.size(), kCode39Characters.size());
}

TEST(Code39Table, PatternsOfTheStandard) {
  EXPECT_EQ(kCode39Patterns[kCode39Characters.find('1')], 0x121U);
  EXPECT_EQ(kCode39Patterns[kCode39Characters.find('*')], 0x094U);
  EXPECT_EQ(kCode39Patterns[kCode39Characters.find('%')], 0x02AU);
}

TEST(Code39Encode, PatternOfOneCharacter) {
  const RunVector star = {1, 3, 1, 1, 3, 1, 3, 1, 1};
  const RunVector one = {3, 1, 1, 3, 1, 1, 1, 1, 3};
  RunVector expected = star;
  expected.push_back(1);
  expected.insert(expected.end(), one.begin(), one.end());
  expected.push_back(1);
  expected.insert(expected.end(), star.begin(), star.end());
  EXPECT_THAT(Code39("png").Encode("1"), ElementsAreArray(expected));
}

TEST(Code39Encode, Has16nPlus31Modules) {
  for (std::size_t n = 1; n < 50; ++n) {
    EXPECT_EQ(TotalModules(Code39("png").Encode(std::string(n, 'Z'))), 16 * n + 31);
  }
}

TEST(Code39Encode, LowerCaseCountsAsUpperCase) {
  EXPECT_EQ(Code39("png").Encode("abc-z"), Code39("png").Encode("ABC-Z"));
}

TEST(Code39Encode, ASpaceIsAValidText) {
  EXPECT_EQ(TotalModules(Code39("png").Encode(" ")), 47U);
}

TEST(Code39Encode, Messages) {
  EXPECT_EQ(ErrorOf(""), "Empty string");
  EXPECT_EQ(ErrorOf("A*B"), "Invalid character in CODE39: '*' is reserved for start/stop code");
  EXPECT_EQ(ErrorOf("A_B"), "Invalid character in CODE39: _");
  EXPECT_EQ(ErrorOf("\xE3"), "Invalid character in CODE39: \xE3");
}

TEST(Code39Encode, TheFirstOffendingCharacterIsNamed) {
  EXPECT_EQ(ErrorOf("A_*"), "Invalid character in CODE39: _");
  EXPECT_EQ(ErrorOf("A*_"), "Invalid character in CODE39: '*' is reserved for start/stop code");
}

TEST(Code39DisplayText, IsTheTextAsGivenInItsFrame) {
  Code39 code("png");
  EXPECT_EQ(code.DisplayText("abc"), "*abc*");
  code.SetShowStartStop(false);
  EXPECT_EQ(code.DisplayText("abc"), "abc");
}

}  // namespace
}  // namespace barcode
