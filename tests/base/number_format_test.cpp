#include "base/number_format.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

namespace barcode {
namespace {

std::string Fixed2(double value) {
  std::string out;
  AppendFixed2(out, value);
  return out;
}

std::string General(double value, int precision = 6) {
  std::string out;
  AppendGeneral(out, value, precision);
  return out;
}

// The reference: the test runs in the C locale.
std::string Printf(const char* format, double value) {
  char buffer[400];
  const int length = std::snprintf(buffer, sizeof buffer, format, value);
  return {buffer, static_cast<std::size_t>(length)};
}

TEST(NumberFormat, ExactTiesGoToTheEvenHundredth) {
  EXPECT_EQ(Fixed2(0.125), "0.12");
  EXPECT_EQ(Fixed2(0.375), "0.38");
  EXPECT_EQ(Fixed2(2.625), "2.62");
  EXPECT_EQ(Fixed2(-0.125), "-0.12");
}

TEST(NumberFormat, DecimalsThatOnlyLookLikeTies) {
  EXPECT_EQ(Fixed2(0.005), "0.01");   // above the tie by 1e-19
  EXPECT_EQ(Fixed2(1.005), "1.00");   // below it
  EXPECT_EQ(Fixed2(1.115F), "1.12");  // the float is above
}

TEST(NumberFormat, SpecialValuesReadAsPrintfWritesThem) {
  for (const double value :
       {0.0, -0.0, -0.001, 1e9, 1e300, -1e300, 999999999.995, 1e-300, std::numeric_limits<double>::infinity(),
        -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::max(), std::nan("")}) {
    EXPECT_EQ(Fixed2(value), Printf("%.2f", value));
  }
}

TEST(NumberFormat, AgreesWithPrintfOnRandomFloatsAndDoubles) {
  std::mt19937_64 random(20180929);
  for (int i = 0; i < 200000; ++i) {
    const double value = std::ldexp(static_cast<double>(random()), -static_cast<int>(random() % 70) - 20);
    ASSERT_EQ(Fixed2(value), Printf("%.2f", value)) << value;
    const auto single = static_cast<float>(value);
    ASSERT_EQ(Fixed2(single), Printf("%.2f", single)) << single;
    const double eighths = static_cast<double>(random() % 8000000) / 8.0;
    ASSERT_EQ(Fixed2(eighths), Printf("%.2f", eighths)) << eighths;
  }
}

TEST(NumberFormat, GeneralIsPrintfG) {
  EXPECT_EQ(General(282.0F), "282");
  EXPECT_EQ(General(100.5F), "100.5");
  for (const double value : {1e6, 1234567.0, 0.0001, 0.00001, -2.5, 100.0 / 3}) {
    EXPECT_EQ(General(value), Printf("%g", value));
    EXPECT_EQ(General(value, 12), Printf("%.12g", value));
  }
}

TEST(NumberFormat, DecimalsWithoutZerosAtTheirEnds) {
  const auto decimal = [](double value, int decimals) {
    std::string out;
    AppendDecimal(out, value, decimals);
    return out;
  };
  EXPECT_EQ(decimal(0, 2), "0");
  EXPECT_EQ(decimal(-0.004, 2), "0");
  EXPECT_EQ(decimal(0.5, 2), ".5");
  EXPECT_EQ(decimal(-12.05, 2), "-12.05");
  EXPECT_EQ(decimal(7, 5), "7");
  EXPECT_EQ(decimal(0.999, 2), "1");
  EXPECT_EQ(decimal(72.0 / 203, 11), ".35467980296");
  EXPECT_EQ(decimal(14'400.00001, 5), "14400.00001");
}

TEST(NumberFormat, Integers) {
  std::string out;
  AppendInt(out, std::numeric_limits<std::int64_t>::min());
  AppendInt(out, 4294967295);
  EXPECT_EQ(out, "-92233720368547758084294967295");
}

}  // namespace
}  // namespace barcode
