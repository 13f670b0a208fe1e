#pragma once

#include <string_view>

#include "label/font.h"
#include "label/text_writer.h"

namespace barcode::label {

// The path of a glyph behind its first move: where that leads, and where the pen is at the end, both from the
// glyph's origin.
struct GlyphPath {
  UnitPoint begin;
  UnitPoint end;
  std::string_view data;  // empty when the glyph has no ink
};

// Writes glyphs as SVG path data, one behind the other, in units, y downwards.
class GlyphPen {
 public:
  explicit GlyphPen(TextWriter& out) : m_out(out) {}

  // origin: of the glyph. Throws std::bad_alloc.
  void Draw(int glyph, const UnitPoint& origin);

 private:
  void Add(const GlyphPath& path, const UnitPoint& origin);

  Font m_font;
  TextWriter& m_out;
  UnitPoint m_at;
};

}  // namespace barcode::label
