#pragma once

#include <string>

#include "label/font.h"

namespace barcode::label {

// Writes glyphs as SVG path data, one behind the other, in units, y downwards.
class GlyphPen {
 public:
  explicit GlyphPen(std::string& out) : m_out(out) {}

  // origin: of the glyph. Throws std::bad_alloc.
  void Draw(int glyph, const UnitPoint& origin);

 private:
  std::string& m_out;
  UnitPoint m_at;
};

}  // namespace barcode::label
