#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace barcode::label {

// The outlines are quantised to this many units per em, the same for every writer: small documents, and less
// than a twentieth of a dot at the sizes of labels.
inline constexpr int kUnitsPerEm = 256;

// One piece of an outline, in units, y upwards: a move, a line or a quadratic curve (to x, y by way of the
// control point).
struct OutlinePiece {
  enum class Kind : std::uint8_t { kMove, kLine, kCurve };
  Kind kind = Kind::kMove;
  std::int16_t x = 0;
  std::int16_t y = 0;
  std::int16_t controlX = 0;
  std::int16_t controlY = 0;
};
// Closed contours, filled by the non-zero rule.
using Outline = std::vector<OutlinePiece>;

// The placeholder for characters that the font lacks: a hollow box.
inline constexpr int kPlaceholderGlyph = -1;

// The embedded font. Making one is cheap and keeps nothing; the functions change nothing and may be called on
// any thread.
class Font {
 public:
  Font();
  ~Font();

  // The glyph of a character; nothing when the font lacks it.
  std::optional<int> FindGlyph(char32_t character) const;
  // In units of kUnitsPerEm (not rounded).
  double Advance(int glyph) const;
  // Of the face: above and below the base line, both positive.
  double Ascent() const;
  double Descent() const;
  // Height of a capital letter and of the digits.
  double CapHeight() const;
  Outline GlyphOutline(int glyph) const;
};

}  // namespace barcode::label
