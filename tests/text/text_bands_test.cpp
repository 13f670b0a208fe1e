#include "text/text_bands.h"

#include <gtest/gtest.h>

#include <limits>

namespace barcode {
namespace {

TEST(TextBands, FactorsChangeAt50AndAbove200) {
  EXPECT_EQ(kTextHeightBands.At(49), 0.25F);
  EXPECT_EQ(kTextHeightBands.At(50), 0.2F);
  EXPECT_EQ(kTextHeightBands.At(200), 0.2F);
  EXPECT_EQ(kTextHeightBands.At(201), 0.15F);
  EXPECT_EQ(kTextGapBands.At(49), 0.03F);
  EXPECT_EQ(kTextGapBands.At(50), 0.05F);
  EXPECT_EQ(kTextGapBands.At(200), 0.05F);
  EXPECT_EQ(kTextGapBands.At(201), 0.07F);
  EXPECT_EQ(kStackedTextGapBands.At(49), 0.02F);
  EXPECT_EQ(kStackedTextGapBands.At(200), 0.03F);
  EXPECT_EQ(kStackedTextGapBands.At(201), 0.04F);
}

TEST(TextBands, TextSizeIsAtLeastEight) {
  EXPECT_EQ(TextSize(100, 1.0F), 20);
  EXPECT_EQ(TextSize(100, 0.7F), 14);
  EXPECT_EQ(TextSize(49, 1.0F), 12);
  EXPECT_EQ(TextSize(201, 1.0F), 30);
  EXPECT_EQ(TextSize(10, 1.0F), 8);
  EXPECT_EQ(TextSize(0, 1.0F), 8);
}

TEST(TextBands, AnyScaleGivesASize) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  EXPECT_EQ(TextSize(100, -3.0F), 8);
  EXPECT_EQ(TextSize(100, 0.0F), 8);
  EXPECT_EQ(TextSize(100, std::numeric_limits<float>::quiet_NaN()), 8);
  EXPECT_EQ(TextSize(100, -kInfinity), 8);
  EXPECT_EQ(TextSize(100, kInfinity), std::numeric_limits<int>::max());
  EXPECT_EQ(ScaledTextGap(100, kTextGapBands, kInfinity), std::numeric_limits<int>::max());
}

TEST(TextBands, GapIsTruncated) {
  EXPECT_EQ(ScaledTextGap(100, kTextGapBands, 1.0F), 5);
  EXPECT_EQ(ScaledTextGap(119, kTextGapBands, 1.0F), 5);
  EXPECT_EQ(ScaledTextGap(300, kTextGapBands, 1.0F), 21);
}

}  // namespace
}  // namespace barcode
