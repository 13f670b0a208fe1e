#include "linear/code39_encoder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <set>
#include <stdexcept>
#include <string>

#include "linear/code39_tables.h"
#include "support/message_of.h"
#include "support/pattern.h"

namespace barcode::test {
namespace {

using ::testing::ElementsAreArray;

std::string ErrorOf(std::string_view text) {
  return MessageOf<std::runtime_error>([&] { EncodeCode39(text); });
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
  EXPECT_THAT(EncodeCode39("1"), ElementsAreArray(expected));
}

TEST(Code39Encode, Has16nPlus31Modules) {
  for (std::size_t n = 1; n < 50; ++n) {
    EXPECT_EQ(Modules(EncodeCode39(std::string(n, 'Z'))), 16 * n + 31);
  }
}

TEST(Code39Encode, LowerCaseCountsAsUpperCase) {
  EXPECT_EQ(EncodeCode39("abc-z"), EncodeCode39("ABC-Z"));
}

TEST(Code39Encode, ASpaceIsAValidText) {
  EXPECT_EQ(Modules(EncodeCode39(" ")), 47U);
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
  EXPECT_EQ(Code39DisplayText("abc", true), "*abc*");
  EXPECT_EQ(Code39DisplayText("abc", false), "abc");
}

}  // namespace
}  // namespace barcode::test
