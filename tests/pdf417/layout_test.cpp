#include "pdf417/layout.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <ostream>

namespace barcode::pdf417 {

void PrintTo(const Layout& layout, std::ostream* out) {
  *out << layout.columns << " columns, " << layout.rows << " rows, level " << layout.errorLevel;
}

namespace {

Options Shaped(double ratio, int yHeight) {
  Options options;
  options.aspectRatio = ratio;
  options.yHeight = yHeight;
  return options;
}

struct Case {
  int dataLength;
  Options options;
  Layout layout;
};

TEST(PDF417Layout, AutomaticErrorLevelAtItsBounds) {
  for (const auto& [length, options, layout] : {
           Case{2, {}, {1, 10, 2}},
           Case{17, {}, {2, 13, 2}},
           Case{40, {}, {3, 16, 2}},
           Case{41, {}, {3, 19, 3}},
           Case{160, {}, {6, 30, 3}},
           Case{161, {}, {7, 28, 4}},
           Case{320, {}, {9, 40, 4}},
           Case{321, {}, {10, 39, 5}},
       }) {
    EXPECT_EQ(ChooseLayout(length, options), layout) << length;
  }
}

TEST(PDF417Layout, ErrorLevelIsCappedByTheLargestSymbol) {
  for (const auto& [length, options, layout] : {
           Case{864, {}, {16, 58, 5}},
           Case{865, {}, {16, 57, 4}},
           Case{912, {}, {16, 58, 3}},
           Case{926, {}, {16, 58, 0}},
       }) {
    EXPECT_EQ(ChooseLayout(length, options), layout) << length;
  }
}

TEST(PDF417Layout, AspectRatioAndRowHeightShapeTheGrid) {
  for (const auto& [length, options, layout] : {
           Case{100, Shaped(0.5, 3), {5, 24, 3}},
           Case{100, Shaped(2, 3), {2, 58, 3}},
           Case{100, Shaped(0.001, 3), {30, 4, 3}},
           Case{100, Shaped(1000, 3), {2, 90, 5}},  // more than 90 rows become columns
           Case{600, Shaped(1000, 3), {8, 90, 5}},
           Case{2, Shaped(0.5, 1000), {30, 3, 5}},  // the level fills the three rows
           Case{40, Shaped(0.5, INT_MAX), {30, 3, 4}},
           Case{40, Shaped(0.5, 0), {3, 16, 2}},  // counts as 3
           Case{100, Shaped(1e-300, 3), {30, 4, 3}},
           Case{100, Shaped(-1, 3), {30, 4, 3}},
           Case{100, Shaped(1e300, 3), {2, 90, 5}},
           Case{100, Shaped(std::numeric_limits<double>::infinity(), 3), {2, 90, 5}},
           Case{100, Shaped(std::nan(""), 3), {30, 4, 3}},
       }) {
    EXPECT_EQ(ChooseLayout(length, options), layout)
        << length << " at " << options.aspectRatio << ", " << options.yHeight;
  }
}

TEST(PDF417Layout, GridAbove928BecomesTheNearerFullGrid) {
  for (const auto& [length, options, layout] : {
           Case{864, Shaped(0.56, 3), {16, 58, 5}},  // 15 x 62
           Case{864, Shaped(0.32, 3), {16, 58, 5}},  // 21 x 45
           Case{864, Shaped(0.29, 3), {29, 32, 5}},  // 22 x 43
           Case{864, Shaped(0.23, 3), {29, 32, 5}},  // 25 x 38
           Case{860, Shaped(0.01, 3), {29, 32, 5}},  // 30 x 31
           Case{864, Shaped(100, 3), {16, 58, 5}},   // 11 x 90
           Case{926, Shaped(0.01, 3), {29, 32, 0}},
       }) {
    EXPECT_EQ(ChooseLayout(length, options), layout) << length << " at " << options.aspectRatio;
  }
}

TEST(PDF417Layout, ColumnsRowsAndErrorLevelOfTheOptionsChangeNothing) {
  for (const int number : {INT_MIN, 0, 8, INT_MAX}) {
    Options options;
    options.codeColumns = number;
    options.codeRows = number;
    options.errorLevel = number;
    for (const int length : {2, 100, kMaxDataCodewords}) {
      EXPECT_EQ(ChooseLayout(length, options), ChooseLayout(length, {})) << length << " with " << number;
    }
  }
}

TEST(PDF417Layout, EveryLengthFitsWhateverTheOptions) {
  for (const double ratio : {0.001, 0.1, 0.23, 0.29, 0.32, 0.5, 0.56, 1.0, 3.0, 1000.0}) {
    for (const int yHeight : {INT_MIN, 1, 3, 10, 1000000, INT_MAX}) {
      for (int length = 1; length <= kMaxDataCodewords; ++length) {
        const Layout layout = ChooseLayout(length, Shaped(ratio, yHeight));
        ASSERT_TRUE(layout.columns >= 1 && layout.columns <= 30) << length;
        ASSERT_TRUE(layout.rows >= 3 && layout.rows <= 90) << length;
        ASSERT_LE(layout.Total(), 928) << length;
        ASSERT_GE(layout.DataLength(), length);
        // No higher level would fit.
        ASSERT_TRUE(layout.errorLevel == 8 || layout.Total() - ErrorCodewords(layout.errorLevel + 1) < length)
            << length;
      }
    }
  }
}

}  // namespace
}  // namespace barcode::pdf417
