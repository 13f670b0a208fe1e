#include "linear/code93_encoder.h"

#include <gtest/gtest.h>

#include <set>
#include <stdexcept>
#include <string>

#include "linear/code93_tables.h"
#include "linear/width_string.h"
#include "support/message_of.h"
#include "support/pattern.h"

namespace barcode::test {
namespace {

TEST(Code93Tables, CharactersAreDistinctAndNineModulesWide) {
  for (const std::string_view widths : kCode93Widths) {
    EXPECT_EQ(widths.size(), 6U);
    EXPECT_EQ(ModuleCount(widths), 9U) << widths;
  }
  EXPECT_EQ(std::set<std::string_view>(kCode93Widths.begin(), kCode93Widths.end()).size(), 47U);
  EXPECT_EQ(std::set<char>(kCode93Characters.begin(), kCode93Characters.end()).size(), 47U);
  EXPECT_EQ(ModuleCount(kCode93Start), 9U);
  EXPECT_EQ(ModuleCount(kCode93Stop), 10U);
}

// The example of the public standard: "TEST93" has the check characters "+" and "6".
TEST(Code93Encode, AppendsBothCheckCharacters) {
  EXPECT_EQ(kCode93Characters[Code93CheckIndex("TEST93", 20)], '+');
  EXPECT_EQ(kCode93Characters[Code93CheckIndex("TEST93+", 15)], '6');
  EXPECT_EQ(Digits(EncodeCode93("TEST93")),
            "111141"  // start, T E S T 9 3, + 6, stop
            "211221"
            "221211"
            "211122"
            "211221"
            "141111"
            "111411"
            "113121"
            "121311"
            "1111411");
}

TEST(Code93Encode, AcceptsLowerCase) {
  EXPECT_EQ(EncodeCode93("abc"), EncodeCode93("ABC"));
}

TEST(Code93Encode, TakesTypedShiftCharacters) {
  EXPECT_EQ(Digits(EncodeCode93("A!")).substr(0, 18),
            "111141"
            "211113"
            "122211");
  EXPECT_EQ(Digits(EncodeCode93("<>?")).substr(6, 18),
            "121221"
            "312111"
            "311121");
}

TEST(Code93Encode, RefusesOtherCharactersByTheirUpperCaseForm) {
  EXPECT_EQ(MessageOf<std::runtime_error>([] { EncodeCode93(""); }), "Empty string");
  EXPECT_EQ(MessageOf<std::runtime_error>([] { EncodeCode93("A_B"); }), "Invalid character in CODE93: _");
  EXPECT_EQ(MessageOf<std::runtime_error>([] { EncodeCode93("A#_"); }), "Invalid character in CODE93: #");
  EXPECT_EQ(MessageOf<std::runtime_error>([] { EncodeCode93("\xE9"); }), "Invalid character in CODE93: \xE9");
  EXPECT_EQ(MessageOf<std::runtime_error>([] { Code93CheckIndex("a", 20); }),
            "Invalid character in CODE93: a");
}

TEST(Code93Encode, CheckWeightsStartAgainAfterTheGreatest) {
  const std::string text = "1" + std::string(30, '0');
  EXPECT_EQ(Code93CheckIndex(text.substr(0, 20), 20), 20U);
  EXPECT_EQ(Code93CheckIndex(text.substr(0, 21), 20), 1U);
  EXPECT_EQ(Code93CheckIndex(text.substr(0, 22), 20), 2U);
  EXPECT_EQ(Code93CheckIndex(text.substr(0, 15), 15), 15U);
  EXPECT_EQ(Code93CheckIndex(text.substr(0, 16), 15), 1U);
}

TEST(Code93Encode, HasNineModulesForEachCharacter) {
  for (std::uint32_t n = 1; n < 50; ++n) {
    EXPECT_EQ(Modules(EncodeCode93(std::string(n, 'Q'))), 9 * (n + 3) + 10);
  }
}

}  // namespace
}  // namespace barcode::test
