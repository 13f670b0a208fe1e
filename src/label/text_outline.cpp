#include "label/text_outline.h"

#include <cstddef>

#include "base/numeric.h"

namespace barcode::label {
namespace {

// Between a text that runs to the right and a turned one; y downwards.
UnitPoint Turned(const UnitPoint& point, Rotation rotation) {
  switch (rotation) {
    case Rotation::kQuarter:
      return {-point.y, point.x};
    case Rotation::kHalf:
      return {-point.x, -point.y};
    case Rotation::kThreeQuarters:
      return {point.y, -point.x};
    default:
      return point;
  }
}

Rotation Back(Rotation rotation) {
  switch (rotation) {
    case Rotation::kQuarter:
      return Rotation::kThreeQuarters;
    case Rotation::kThreeQuarters:
      return Rotation::kQuarter;
    default:
      return rotation;
  }
}

int WholeUnits(double dots, double size) {
  return static_cast<int>(RoundToInt64(dots * kUnitsPerEm / size));
}

// A point of a glyph, y upwards.
UnitPoint Placed(const UnitPoint& point, Rotation rotation, const UnitPoint& offset) {
  return Turned({offset.x + point.x, offset.y - point.y}, rotation);
}

}  // namespace

UnitPoint OffsetInUnits(const PlacedText& text, const PlacedGlyph& glyph) {
  const PlacedGlyph& first = text.glyphs.front();
  return Turned({WholeUnits(glyph.x - first.x, text.size), WholeUnits(glyph.y - first.y, text.size)},
                Back(text.rotation));
}

void AppendGlyphOutline(const PlacedText& text, const PlacedGlyph& glyph, Outline& outline) {
  const UnitPoint offset = OffsetInUnits(text, glyph);
  const std::size_t begin = outline.size();
  Font().AppendOutline(glyph.glyph, outline);
  for (std::size_t i = begin; i < outline.size(); ++i) {
    OutlinePiece& piece = outline[i];
    piece.to = Placed(piece.to, text.rotation, offset);
    piece.control = Placed(piece.control, text.rotation, offset);
  }
}

Outline OutlineOf(const PlacedText& text) {
  Outline outline;
  for (const PlacedGlyph& glyph : text.glyphs) {
    AppendGlyphOutline(text, glyph, outline);
  }
  return outline;
}

}  // namespace barcode::label
