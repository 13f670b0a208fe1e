#include "label/font.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

#include "text/embedded_font.h"

// The font as it is, read by the font library without the simplifications.
#define STBTT_STATIC
#define STB_TRUETYPE_IMPLEMENTATION
#include <stb/stb_truetype.h>

namespace barcode::label {
namespace {

using Kind = OutlinePiece::Kind;

// Points along an outline, in units.
struct Point {
  double x = 0;
  double y = 0;
};
using Points = std::vector<Point>;

constexpr int kStepsPerPiece = 16;

void AddCurve(Points& points, const Point& from, const Point& control, const Point& to) {
  for (int i = 1; i <= kStepsPerPiece; ++i) {
    const double t = static_cast<double>(i) / kStepsPerPiece;
    const double a = (1 - t) * (1 - t);
    const double b = 2 * t * (1 - t);
    const double c = t * t;
    points.push_back({a * from.x + b * control.x + c * to.x, a * from.y + b * control.y + c * to.y});
  }
}

Point Middle(const Point& a, const Point& b) {
  return {(a.x + b.x) / 2, (a.y + b.y) / 2};
}

Points PointsOf(const Outline& outline) {
  Points points;
  Point last;
  for (const OutlinePiece& piece : outline) {
    const Point to{static_cast<double>(piece.to.x), static_cast<double>(piece.to.y)};
    if (piece.kind == Kind::kCurve) {
      AddCurve(points, last, {static_cast<double>(piece.control.x), static_cast<double>(piece.control.y)},
               to);
    } else if (piece.kind == Kind::kLine) {
      AddCurve(points, last, Middle(last, to), to);
    }
    last = to;
  }
  return points;
}

Points PointsOfFont(char32_t character) {
  stbtt_fontinfo info;
  stbtt_InitFont(&info, EmbeddedRobotoFont().data(), 0);
  const double unit = kUnitsPerEm * static_cast<double>(stbtt_ScaleForMappingEmToPixels(&info, 1.0F));
  stbtt_vertex* vertices = nullptr;
  const int count = stbtt_GetCodepointShape(&info, static_cast<int>(character), &vertices);
  Points points;
  Point last;
  for (int i = 0; i < count; ++i) {
    const stbtt_vertex& vertex = vertices[i];  // NOLINT(*-pointer-arithmetic)
    const Point to{vertex.x * unit, vertex.y * unit};
    if (vertex.type == STBTT_vcurve) {
      AddCurve(points, last, {vertex.cx * unit, vertex.cy * unit}, to);
    } else if (vertex.type == STBTT_vline) {
      AddCurve(points, last, Middle(last, to), to);
    }
    last = to;
  }
  stbtt_FreeShape(&info, vertices);
  return points;
}

double Distance(const Point& point, const Point& from, const Point& to) {
  const double x = to.x - from.x;
  const double y = to.y - from.y;
  const double length = x * x + y * y;
  const double along = length > 0 ? ((point.x - from.x) * x + (point.y - from.y) * y) / length : 0;
  const double t = std::clamp(along, 0.0, 1.0);
  return std::hypot(point.x - from.x - t * x, point.y - from.y - t * y);
}

// The largest distance of a point from the nearest line between others.
double Farthest(const Points& points, const Points& others) {
  double farthest = 0;
  for (const Point& point : points) {
    double nearest = std::numeric_limits<double>::max();
    for (std::size_t i = 1; i < others.size(); ++i) {
      nearest = std::min(nearest, Distance(point, others[i - 1], others[i]));
    }
    farthest = std::max(farthest, nearest);
  }
  return farthest;
}

int GlyphOf(char32_t character) {
  return Font().FindGlyph(character).value_or(kPlaceholderGlyph);
}

// Twice the area that the contours enclose, positive when they run clockwise (y upwards).
double SignedArea(const Outline& outline) {
  double area = 0;
  UnitPoint last;
  for (const OutlinePiece& piece : outline) {
    if (piece.kind != Kind::kMove) {
      area += static_cast<double>(piece.to.x) * last.y - static_cast<double>(last.x) * piece.to.y;
    }
    last = piece.to;
  }
  return area;
}

TEST(LabelFont, HasPrintableAsciiAndLetters) {
  for (char32_t character = 0x20; character < 0x7F; ++character) {
    const auto glyph = Font().FindGlyph(character);
    ASSERT_TRUE(glyph) << static_cast<int>(character);
    EXPECT_EQ(Font().OrdinaryNumber(*glyph), static_cast<int>(character - 0x20));
  }
  for (const char32_t character : {U'\u00E9', U'\u00DF', U'\u0141', U'\u20AC', U'\u2013'}) {
    ASSERT_TRUE(Font().FindGlyph(character)) << static_cast<int>(character);
    EXPECT_FALSE(Font().GlyphOutline(GlyphOf(character)).empty());
    EXPECT_EQ(Font().OrdinaryNumber(GlyphOf(character)), std::nullopt);
  }
}

TEST(LabelFont, LacksWhatItLacks) {
  for (const char32_t character : {U'\u3042', U'\u6F22', U'\U0001F600', U'\U0010FFFF', U'\uFFFF'}) {
    EXPECT_EQ(Font().FindGlyph(character), std::nullopt) << static_cast<int>(character);
  }
  // Control characters, though the font maps some of them to glyphs without ink.
  for (const char32_t character : {U'\0', U'\r', U'\x1D', U'\x7F', U'\x80', U'\x9F'}) {
    EXPECT_EQ(Font().FindGlyph(character), std::nullopt) << static_cast<int>(character);
  }
  EXPECT_EQ(Font().OrdinaryNumber(kPlaceholderGlyph), std::nullopt);
  EXPECT_EQ(Font().OrdinaryNumber(1'000'000), std::nullopt);
}

TEST(LabelFont, MetricsAreInUnits) {
  const Font font;
  EXPECT_NEAR(font.CapHeight(), 0.711 * kUnitsPerEm, 0.01 * kUnitsPerEm);
  EXPECT_GT(font.Ascent(), font.CapHeight());
  EXPECT_GT(font.Descent(), 0.2 * kUnitsPerEm);
  for (char32_t digit = U'0'; digit <= U'9'; ++digit) {
    EXPECT_EQ(font.Advance(GlyphOf(digit)), font.Advance(GlyphOf(U'0')));
  }
  EXPECT_GT(font.Advance(GlyphOf(U'W')), font.Advance(GlyphOf(U'i')));
  EXPECT_GT(font.Advance(GlyphOf(U' ')), 0);
}

TEST(LabelFont, ContoursAreClosed) {
  for (char32_t character = 0x20; character < 0x250; ++character) {
    const Outline outline = Font().GlyphOutline(GlyphOf(character));
    UnitPoint start;
    for (std::size_t i = 0; i < outline.size(); ++i) {
      if (outline[i].kind == Kind::kMove) {
        start = outline[i].to;
      }
      if (i + 1 == outline.size() || outline[i + 1].kind == Kind::kMove) {
        EXPECT_EQ(outline[i].to, start) << static_cast<int>(character);
      }
    }
    if (!outline.empty()) {
      EXPECT_EQ(outline.front().kind, Kind::kMove) << static_cast<int>(character);
    }
  }
  EXPECT_TRUE(Font().GlyphOutline(GlyphOf(U' ')).empty());
}

// Fewer curves and whole units move no point by more than a sixtieth of an em.
TEST(LabelFont, OutlinesAreTheFonts) {
  constexpr double kMost = kUnitsPerEm / 60.0;
  for (char32_t character = 0x21; character < 0x250; ++character) {
    if (!Font().FindGlyph(character)) {
      continue;
    }
    const Points kept = PointsOf(Font().GlyphOutline(GlyphOf(character)));
    const Points given = PointsOfFont(character);
    EXPECT_EQ(kept.empty(), given.empty()) << static_cast<int>(character);
    EXPECT_LT(Farthest(given, kept), kMost) << static_cast<int>(character);
    EXPECT_LT(Farthest(kept, given), kMost) << static_cast<int>(character);
  }
}

TEST(LabelFont, PlaceholderIsAHollowBox) {
  const Outline outline = Font().GlyphOutline(kPlaceholderGlyph);
  ASSERT_EQ(outline.size(), 10U);
  const Outline outer(outline.begin(), outline.begin() + 5);
  const Outline inner(outline.begin() + 5, outline.end());
  EXPECT_GT(SignedArea(outer), 0);
  EXPECT_LT(SignedArea(inner), 0);
  EXPECT_GT(SignedArea(outer) + SignedArea(inner), 0);
  EXPECT_LT(Font().Advance(kPlaceholderGlyph), kUnitsPerEm);
  for (const OutlinePiece& piece : outline) {
    EXPECT_GT(piece.to.x, 0);
    EXPECT_LT(piece.to.x, Font().Advance(kPlaceholderGlyph));
    EXPECT_LE(piece.to.y, std::ceil(Font().CapHeight()));
  }
}

TEST(LabelFont, AppendsBehindWhatIsThere) {
  Outline outline = Font().GlyphOutline(GlyphOf(U'A'));
  const std::size_t size = outline.size();
  Font().AppendOutline(GlyphOf(U'B'), outline);
  EXPECT_EQ(Outline(outline.begin() + static_cast<std::ptrdiff_t>(size), outline.end()),
            Font().GlyphOutline(GlyphOf(U'B')));
}

}  // namespace
}  // namespace barcode::label
