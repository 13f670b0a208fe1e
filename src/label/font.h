#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace barcode::label {

// The outlines are quantised to this many units per em, the same for every writer: documents stay small, and
// a unit of text three millimetres high is less than what a printer of 600 dots per inch resolves.
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
  // The control point mirrors that of the curve before, which ends where this one begins.
  bool smooth = false;

  bool operator==(const OutlinePiece&) const = default;
};
// Contours, filled by the non-zero rule. Each begins with a move and ends where it began.
using Outline = std::vector<OutlinePiece>;

// The placeholder for characters that the font lacks: a hollow box.
inline constexpr int kPlaceholderGlyph = -1;

// The embedded font. Making one is cheap and keeps nothing; the functions change nothing and may be called on
// any thread.
class Font {
 public:
  // The glyph of a character; nothing when the font lacks it. Control characters have none.
  std::optional<int> FindGlyph(char32_t character) const;
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
};

}  // namespace barcode::label
