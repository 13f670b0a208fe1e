#include "label/text_setting.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "label/text_outline.h"

namespace barcode::label {
namespace {

struct Reach {
  double left = 1e9;
  double right = -1e9;
};

// Where the ink of a text begins and ends.
Reach InkOf(const PlacedText& text) {
  Reach reach;
  const auto include = [&](const UnitPoint& point) {
    const double x = text.glyphs.front().x + point.x * text.size / kUnitsPerEm;
    reach = {std::min(reach.left, x), std::max(reach.right, x)};
  };
  for (const OutlinePiece& piece : OutlineOf(text)) {
    include(piece.to);
    if (piece.kind == OutlinePiece::Kind::kCurve) {
      include(piece.control);
    }
  }
  return reach;
}

// Origins are rounded to quarters of a dot, outlines to units.
double Tolerance(int size) {
  return 0.25 + 1.5 * size / kUnitsPerEm;
}

TEST(TextLine, InkStaysWithinTheWidth) {
  const Font font;
  for (const std::string text :
       {"Hello", "j", "jjjj", "ff/", "a b ", "\u0301", "\u0301abc", "\u0327j", "\u200Bj", "abc\u0301",
        "f\u200B", "e\u0301\u0302", "\u00C5\u00CE", "\U0001F600"}) {
    const TextLine line(font, text);
    for (const int size : {6, 40, 600}) {
      const Reach ink = InkOf(line.SetAt(10, 0, size));
      EXPECT_GE(ink.left, 10 - Tolerance(size)) << text << ' ' << size;
      EXPECT_LE(ink.right, 10 + line.Width(size) + Tolerance(size)) << text << ' ' << size;
    }
  }
}

TEST(TextLine, LettersAreAsWideAsTheirAdvances) {
  const Font font;
  const TextLine line(font, "AB");
  EXPECT_DOUBLE_EQ(line.Width(kUnitsPerEm),
                   font.Advance(*font.FindGlyph('A')) + font.Advance(*font.FindGlyph('B')));
  EXPECT_EQ(line.SetAt(10, 0, 20).glyphs.front().x, 10);
}

TEST(TextLine, LargestSizeHoldsTheInk) {
  const Font font;
  const TextLine line(font, "\u0301abc");
  const int size = line.LargestSize(200, 1000);
  EXPECT_LE(line.Width(size), 200);
  EXPECT_GT(line.Width(size + 1), 200);
}

TEST(TextLine, NothingHasNoWidth) {
  const TextLine line(Font(), "");
  EXPECT_TRUE(line.Empty());
  EXPECT_EQ(line.Width(100), 0);
}

}  // namespace
}  // namespace barcode::label
