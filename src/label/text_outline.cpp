#include "label/text_outline.h"

#include <cmath>
#include <cstddef>

namespace barcode::label {
namespace {

// From a text that runs to the right, y upwards.
UnitPoint Turned(const UnitPoint& point, Rotation rotation) {
  switch (rotation) {
    case Rotation::kQuarter:
      return {point.y, point.x};
    case Rotation::kHalf:
      return {-point.x, point.y};
    case Rotation::kThreeQuarters:
      return {-point.y, -point.x};
    default:
      return {point.x, -point.y};
  }
}

int WholeUnits(double dots, double size) {
  return static_cast<int>(std::lround(dots * kUnitsPerEm / size));
}

UnitPoint Placed(const UnitPoint& point, Rotation rotation, const UnitPoint& origin) {
  const UnitPoint turned = Turned(point, rotation);
  return {origin.x + turned.x, origin.y + turned.y};
}

}  // namespace

UnitPoint GlyphOrigin(const PlacedText& text, const PlacedGlyph& glyph) {
  const PlacedGlyph& first = text.glyphs.front();
  return {WholeUnits(glyph.x - first.x, text.size), WholeUnits(glyph.y - first.y, text.size)};
}

void AppendGlyphOutline(const PlacedText& text, const PlacedGlyph& glyph, Outline& outline) {
  const UnitPoint origin = GlyphOrigin(text, glyph);
  const std::size_t begin = outline.size();
  Font().AppendOutline(glyph.glyph, outline);
  for (std::size_t i = begin; i < outline.size(); ++i) {
    OutlinePiece& piece = outline[i];
    piece.to = Placed(piece.to, text.rotation, origin);
    piece.control = Placed(piece.control, text.rotation, origin);
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
