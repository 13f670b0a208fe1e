#include "base/numeric.h"

#include <gtest/gtest.h>

#include <cmath>

namespace barcode {
namespace {

constexpr int kMin = std::numeric_limits<int>::min();
constexpr int kMax = std::numeric_limits<int>::max();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(Numeric, RoundsAsTheCLibraryDoes) {
  for (const double value : {0.0, -0.0, 0.49999999999999994, -0.49999999999999994, 0.5, -0.5, 1.5, 2.5, -2.5,
                             2.4999999999999996, 1e15 + 0.5, -1e15 - 0.5, 9e18, -9e18}) {
    EXPECT_EQ(RoundToInt64(value), std::llround(value)) << value;
  }
  for (int i = -100'000; i <= 100'000; ++i) {
    const double value = i / 128.0 * 3.7;
    ASSERT_EQ(RoundToInt64(value), std::llround(value)) << value;
  }
}

TEST(Numeric, TruncatesTowardZero) {
  EXPECT_EQ(TruncToInt(2.9), 2);
  EXPECT_EQ(TruncToInt(-2.9), -2);
  EXPECT_EQ(TruncToInt(-0.5), 0);
}

TEST(Numeric, EveryDoubleHasAnInt) {
  EXPECT_EQ(TruncToInt(std::nan("")), 0);
  EXPECT_EQ(TruncToInt(kInfinity), kMax);
  EXPECT_EQ(TruncToInt(-kInfinity), kMin);
  EXPECT_EQ(TruncToInt(2147483647.0), kMax);
  EXPECT_EQ(TruncToInt(2147483646.5), kMax - 1);
  EXPECT_EQ(TruncToInt(-2147483648.0), kMin);
  EXPECT_EQ(TruncToInt(1e300), kMax);
}

TEST(Numeric, ClampsToInt) {
  EXPECT_EQ(ClampToInt(5'000'000'000), kMax);
  EXPECT_EQ(ClampToInt(-5'000'000'000), kMin);
  EXPECT_EQ(ClampToInt(-7), -7);
}

TEST(Numeric, DoublesBeyondFloatBecomeInfinite) {
  EXPECT_EQ(ToFloat(1e300), std::numeric_limits<float>::infinity());
  EXPECT_EQ(ToFloat(-1e300), -std::numeric_limits<float>::infinity());
  EXPECT_TRUE(std::isnan(ToFloat(std::nan(""))));
  EXPECT_EQ(ToFloat(0.25), 0.25F);
}

}  // namespace
}  // namespace barcode
