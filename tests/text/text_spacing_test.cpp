#include "text/text_spacing.h"

#include <gtest/gtest.h>

#include <limits>

namespace barcode {
namespace {

TEST(EvenSpacing, SpreadsTheCentresBetweenTheMargins) {
  // margin trunc(286 * 0.05) = 14, pitch (286 - 28) / 8 = 32, span 256, first (286 - 256) / 2
  const auto spacing = EvenSpacing::Across(0, 286, 9, 20, 1.0F);
  EXPECT_EQ(spacing.pitch, 32);
  EXPECT_EQ(spacing.first, 15);
  EXPECT_EQ(spacing.Centre(8), 271);
}

TEST(EvenSpacing, MarginFactorChangesAt100AndAbove400) {
  EXPECT_EQ(EvenSpacing::Across(0, 99, 2, 8, 1.0F).pitch, 99 - 2 * 2);
  EXPECT_EQ(EvenSpacing::Across(0, 100, 2, 8, 1.0F).pitch, 100 - 2 * 5);
  EXPECT_EQ(EvenSpacing::Across(0, 400, 2, 8, 1.0F).pitch, 400 - 2 * 20);
  EXPECT_EQ(EvenSpacing::Across(0, 401, 2, 8, 1.0F).pitch, 401 - 2 * 28);
}

TEST(EvenSpacing, MarginScaleMultipliesTheMargin) {
  EXPECT_EQ(EvenSpacing::Across(0, 100, 2, 8, 2.0F).pitch, 80);
}

TEST(EvenSpacing, OneCharacterIsCentred) {
  const auto spacing = EvenSpacing::Across(10, 100, 1, 20, 1.0F);
  EXPECT_EQ(spacing.Centre(0), 60);
}

TEST(EvenSpacing, PitchIsAtLeastHalfTheFontSize) {
  const auto spacing = EvenSpacing::Across(0, 50, 11, 21, 1.0F);
  EXPECT_EQ(spacing.pitch, 10);
  EXPECT_EQ(spacing.first, -25);  // (50 - 100) / 2
}

TEST(EvenSpacing, HalvingTruncatesTowardZero) {
  EXPECT_EQ(EvenSpacing::Across(0, 5, 2, 20, 1.0F).first, -2);  // (5 - 10) / 2
}

TEST(EvenSpacing, ExtremesStayDefined) {
  constexpr int kMax = std::numeric_limits<int>::max();
  const auto wide = EvenSpacing::Across(kMax, kMax, 1'000'000, kMax, 1e30F);
  EXPECT_GE(wide.pitch, kMax / 2);
  const auto none = EvenSpacing::Across(0, 0, 1, 8, 1.0F);
  EXPECT_EQ(none.Centre(0), 0);
}

}  // namespace
}  // namespace barcode
