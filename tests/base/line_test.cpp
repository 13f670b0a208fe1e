#include "base/line.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

namespace barcode {
namespace {

TEST(Line, TextsAndCharactersStandAsTheyAre) {
  EXPECT_EQ(Line("a", std::string("b\n"), std::string_view("cde", 2), 'f'), "ab\ncdf");
  EXPECT_EQ(Line(std::string("x\0y", 3), '\0').size(), 4U);
}

TEST(Line, NoPiecesAreAnEmptyLine) {
  EXPECT_EQ(Line(), "");
  EXPECT_EQ(Line(""), "");
}

TEST(Line, WholeNumbersOfEveryWidthAreDecimal) {
  EXPECT_EQ(Line(0, ' ', -7, ' ', 4000000000U), "0 -7 4000000000");
  // Bytes are numbers, not characters.
  EXPECT_EQ(Line(std::uint8_t{65}, ' ', std::int8_t{-65}, ' ', std::uint16_t{65535}), "65 -65 65535");
  EXPECT_EQ(Line(std::numeric_limits<std::int64_t>::min(), ' ', std::numeric_limits<std::int64_t>::max()),
            "-9223372036854775808 9223372036854775807");
  EXPECT_EQ(Line(std::size_t{12}), "12");
}

TEST(Line, PlainRealsHaveSixSignificantDigits) {
  EXPECT_EQ(Line(0.5F, ' ', 286.0F, ' ', 100.0 / 3, ' ', 1e7, ' ', -1.0F), "0.5 286 33.3333 1e+07 -1");
}

TEST(Line, RealsHaveTheFormTheyAreGiven) {
  EXPECT_EQ(Line(Fixed2{100.0 / 3}, ' ', Fixed2{-1}), "33.33 -1.00");
  EXPECT_EQ(Line(General{100.0 / 3, 3}, ' ', General{100.0 / 3, 15}, ' ', General{7, 15}),
            "33.3 33.3333333333333 7");
}

TEST(Line, PiecesAreAppendedBehindWhatStandsThere) {
  std::string text = "before ";
  AppendPieces(text, 1, ", ", Fixed2{2});
  AppendPieces(text);
  AppendPieces(text, '.');
  EXPECT_EQ(text, "before 1, 2.00.");
}

}  // namespace
}  // namespace barcode
