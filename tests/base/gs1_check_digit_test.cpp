#include "base/gs1_check_digit.h"

#include <gtest/gtest.h>

namespace barcode {
namespace {

TEST(Gs1CheckDigit, KnownNumbers) {
  EXPECT_EQ(Gs1CheckDigit("490123456789"), '4');
  EXPECT_EQ(Gs1CheckDigit("4901234"), '7');
  EXPECT_EQ(Gs1CheckDigit("01234567890"), '5');
  EXPECT_EQ(Gs1CheckDigit("2001234567890"), '9');
}

TEST(Gs1CheckDigit, MultipleOfTenGivesZero) {
  EXPECT_EQ(Gs1CheckDigit("0000000000000"), '0');
  EXPECT_EQ(Gs1CheckDigit(""), '0');
}

}  // namespace
}  // namespace barcode
