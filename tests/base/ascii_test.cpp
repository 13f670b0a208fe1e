#include "base/ascii.h"

#include <gtest/gtest.h>

namespace barcode {
namespace {

TEST(Ascii, UpperCasesAsciiLettersOnly) {
  EXPECT_EQ(ToUpper("aZ09-\xE4\x82"), "AZ09-\xE4\x82");
}

TEST(Ascii, DigitsAreAsciiDigitsOnly) {
  EXPECT_TRUE(AllDigits("0123456789"));
  EXPECT_TRUE(AllDigits(""));
  EXPECT_FALSE(AllDigits("12a"));
  EXPECT_FALSE(AllDigits("1/"));
  EXPECT_FALSE(AllDigits("1:"));
  EXPECT_FALSE(AllDigits("\xB2"));
}

}  // namespace
}  // namespace barcode
