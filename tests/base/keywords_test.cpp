#include "base/keywords.h"

#include <gtest/gtest.h>

namespace barcode {
namespace {

enum class Fruit { kApple, kPear };

constexpr Keywords<Fruit, 3> kFruits = {
    {{"APPLE", Fruit::kApple}, {"PEAR", Fruit::kPear}, {"PYRUS", Fruit::kPear}}};

TEST(FindKeyword, TheValueOfTheWord) {
  EXPECT_EQ(FindKeyword(kFruits, "APPLE"), Fruit::kApple);
  EXPECT_EQ(FindKeyword(kFruits, "PEAR"), Fruit::kPear);
  EXPECT_EQ(FindKeyword(kFruits, "PYRUS"), Fruit::kPear);
}

TEST(FindKeyword, NothingForAnyOtherText) {
  using namespace std::string_view_literals;
  for (const std::string_view word : {""sv, "apple"sv, "APPL"sv, "APPLES"sv, " APPLE"sv, "APPLE\0"sv}) {
    EXPECT_EQ(FindKeyword(kFruits, word), std::nullopt) << word;
  }
}

static_assert(FindKeyword(kFruits, "PEAR") == Fruit::kPear);

}  // namespace
}  // namespace barcode
