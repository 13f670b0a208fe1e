#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace barcode::label {

// The outlines are quantised to this many units per em, the same for every writer, which keeps documents
// small.
inline constexpr int kUnitsPerEm = 128;

struct UnitPoint {
  int x = 0;
  int y = 0;

  bool operator==(const UnitPoint&) const = default;
};

// One piece of an outline, in units: a move, a line or a quadratic curve to a point, by way of the control
// point.
struct OutlinePiece {
  enum class Kind : std::uint8_t { kMove, kLine, kCurve };
  Kind kind = Kind::kMove;
  UnitPoint to;
  UnitPoint control;

  bool operator==(const OutlinePiece&) const = default;
};
// Contours, filled by the non-zero rule. Each begins with a move and ends where it began.
using Outline = std::vector<OutlinePiece>;

// How far an outline reaches from its origin to either side, in units; control points count.
struct GlyphReach {
  int left = 0;  // negative, as the next ones are positive
  int right = 0;
  int top = 0;
  int bottom = 0;
};

// The placeholder for characters that the font lacks: a hollow box.
inline constexpr int kPlaceholderGlyph = -1;

// Glyphs of the characters from U+0020 to U+007E, which nearly every text is made of: numbered for tables.
inline constexpr int kOrdinaryGlyphs = 0x7F - 0x20;

struct FontFace;

// The embedded font. Making one is cheap; the functions change nothing and may be called on any thread.
class Font {
 public:
  Font();

  // The glyph of a character; nothing when the font lacks it. Control characters have none.
  std::optional<int> FindGlyph(char32_t character) const;
  // Which of the ordinary glyphs it is, from 0 on in the order of the characters; nothing for any other.
  std::optional<int> OrdinaryNumber(int glyph) const;
  // In units of kUnitsPerEm (not rounded).
  double Advance(int glyph) const;
  // Of the face: above and below the base line, both positive.
  double Ascent() const;
  double Descent() const;
  // Height of a capital letter and of the digits.
  double CapHeight() const;
  // From the glyph's origin, y upwards. Nothing for a space. Throws std::bad_alloc.
  Outline GlyphOutline(int glyph) const;
  // The same behind what `outline` holds already.
  void AppendOutline(int glyph, Outline& outline) const;
  GlyphReach Reach(int glyph) const;

 private:
  const FontFace& m_face;
};

}  // namespace barcode::label
