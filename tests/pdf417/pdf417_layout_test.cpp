#include "pdf417/pdf417_layout.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <ostream>

namespace barcode {

void PrintTo(const PDF417Layout& layout, std::ostream* out) {
  *out << layout.columns << " columns, " << layout.rows << " rows, level " << layout.errorLevel;
}

namespace {

using Kind = PDF417SizeKind;

PDF417Options Sized(Kind kind, int columns, int rows) {
  PDF417Options options;
  options.sizeKind = kind;
  options.codeColumns = columns;
  options.codeRows = rows;
  return options;
}

PDF417Options Shaped(double ratio, int yHeight) {
  PDF417Options options;
  options.aspectRatio = ratio;
  options.yHeight = yHeight;
  return options;
}

PDF417Options FixedLevel(int level) {
  PDF417Options options;
  options.useAutoErrorLevel = false;
  options.errorLevel = level;
  return options;
}

struct Case {
  int dataLength;
  PDF417Options options;
  PDF417Layout layout;
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
    EXPECT_EQ(LayoutPDF417(length, options), layout) << length;
  }
}

TEST(PDF417Layout, ErrorLevelIsCappedByTheLargestSymbol) {
  for (const auto& [length, options, layout] : {
           Case{864, {}, {16, 58, 5}},
           Case{865, {}, {16, 57, 4}},
           Case{912, {}, {16, 58, 3}},
           Case{926, {}, {16, 58, 0}},
           Case{900, FixedLevel(8), {16, 58, 3}},
       }) {
    EXPECT_EQ(LayoutPDF417(length, options), layout) << length;
  }
}

TEST(PDF417Layout, FixedErrorLevel) {
  EXPECT_EQ(LayoutPDF417(30, FixedLevel(-5)), (PDF417Layout{2, 16, 0}));
  EXPECT_EQ(LayoutPDF417(30, FixedLevel(INT_MIN)), (PDF417Layout{2, 16, 0}));
  EXPECT_EQ(LayoutPDF417(30, FixedLevel(0)), (PDF417Layout{2, 16, 0}));
  EXPECT_EQ(LayoutPDF417(30, FixedLevel(4)), (PDF417Layout{3, 21, 4}));
  EXPECT_EQ(LayoutPDF417(30, FixedLevel(99)), (PDF417Layout{12, 46, 8}));
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
    EXPECT_EQ(LayoutPDF417(length, options), layout)
        << length << " at " << options.aspectRatio << ", " << options.yHeight;
  }
}

TEST(PDF417Layout, GivenColumns) {
  for (const auto& [length, options, layout] : {
           Case{30, Sized(Kind::kColumns, 4, 50), {4, 10, 2}},
           Case{30, Sized(Kind::kColumns, 0, 0), {1, 38, 2}},
           Case{30, Sized(Kind::kColumns, 99, 0), {30, 3, 4}},
           Case{200, Sized(Kind::kColumns, 1, 0), {3, 90, 5}},
       }) {
    EXPECT_EQ(LayoutPDF417(length, options), layout) << length << " in " << options.codeColumns;
  }
}

TEST(PDF417Layout, GivenRows) {
  for (const auto& [length, options, layout] : {
           Case{30, Sized(Kind::kRows, 20, 6), {7, 6, 2}},
           Case{30, Sized(Kind::kRows, 0, 1), {13, 3, 2}},
           Case{30, Sized(Kind::kRows, 0, 500), {1, 90, 4}},
           Case{200, Sized(Kind::kRows, 0, 3), {30, 8, 4}},
       }) {
    EXPECT_EQ(LayoutPDF417(length, options), layout) << length << " in " << options.codeRows;
  }
}

TEST(PDF417Layout, GivenColumnsAndRows) {
  for (const auto& [length, options, layout] : {
           Case{30, Sized(Kind::kColumnsAndRows, 4, 10), {4, 10, 2}},
           Case{30, Sized(Kind::kColumnsAndRows, 30, 30), {30, 30, 8}},
           Case{30, Sized(Kind::kColumnsAndRows, 3, 10), {3, 13, 2}},  // too small: the columns hold
           Case{500, Sized(Kind::kColumnsAndRows, 2, 3), {7, 90, 6}},
           Case{30, Sized(Kind::kColumnsAndRows, 30, 90), {29, 32, 8}},  // above 928
           Case{30, Sized(Kind::kColumnsAndRows, 11, 90), {16, 58, 8}},
       }) {
    EXPECT_EQ(LayoutPDF417(length, options), layout)
        << length << " in " << options.codeColumns << " x " << options.codeRows;
  }
}

TEST(PDF417Layout, GridAbove928BecomesTheNearerFullGrid) {
  for (const auto& [length, options, layout] : {
           Case{864, Sized(Kind::kColumns, 15, 0), {16, 58, 5}},
           Case{864, Sized(Kind::kColumns, 21, 0), {16, 58, 5}},
           Case{864, Sized(Kind::kColumns, 22, 0), {29, 32, 5}},
           Case{864, Sized(Kind::kColumns, 25, 0), {29, 32, 5}},
           Case{926, Sized(Kind::kRows, 0, 3), {29, 32, 0}},
           Case{864, Sized(Kind::kRows, 0, 90), {16, 58, 5}},
           Case{860, Shaped(0.01, 3), {29, 32, 5}},
           Case{860, Shaped(100, 3), {16, 58, 5}},
       }) {
    EXPECT_EQ(LayoutPDF417(length, options), layout) << length;
  }
}

TEST(PDF417Layout, EveryLengthFitsWhateverTheOptions) {
  std::vector<PDF417Options> all = {FixedLevel(0), FixedLevel(8)};
  for (const Kind kind : {Kind::kAuto, Kind::kColumns, Kind::kRows, Kind::kColumnsAndRows}) {
    for (const int columns : {INT_MIN, 1, 2, 16, 30, INT_MAX}) {
      for (const int rows : {INT_MIN, 3, 10, 58, 90, INT_MAX}) {
        all.push_back(Sized(kind, columns, rows));
      }
    }
  }
  for (const double ratio : {0.001, 0.1, 0.5, 1.0, 3.0, 1000.0}) {
    for (const int yHeight : {1, 3, 10, 1000000, INT_MAX}) {
      all.push_back(Shaped(ratio, yHeight));
    }
  }
  for (const PDF417Options& options : all) {
    for (int length = 1; length <= kPDF417MaxDataCodewords; ++length) {
      const PDF417Layout layout = LayoutPDF417(length, options);
      ASSERT_TRUE(layout.columns >= 1 && layout.columns <= 30) << length;
      ASSERT_TRUE(layout.rows >= 3 && layout.rows <= 90) << length;
      ASSERT_LE(layout.Total(), kPDF417MaxCodewords) << length;
      ASSERT_GE(layout.DataLength(), length);
      // No higher level would fit.
      ASSERT_TRUE(layout.errorLevel == 8 ||
                  layout.Total() - PDF417ErrorCodewords(layout.errorLevel + 1) < length)
          << length;
    }
  }
}

}  // namespace
}  // namespace barcode
