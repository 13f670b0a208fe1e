#include "label/turn.h"

#include <utility>

namespace barcode::label {
namespace {

// width, height: of the picture before the turn.
DotRect TurnedRect(const DotRect& rect, Rotation rotation, int width, int height) {
  const int right = width - rect.x - rect.width;
  const int below = height - rect.y - rect.height;
  switch (rotation) {
    case Rotation::kQuarter:
      return {below, rect.x, rect.height, rect.width};
    case Rotation::kHalf:
      return {right, below, rect.width, rect.height};
    case Rotation::kThreeQuarters:
      return {rect.y, right, rect.height, rect.width};
    case Rotation::kNone:
      break;
  }
  return rect;
}

PlacedGlyph TurnedGlyph(const PlacedGlyph& glyph, Rotation rotation, int width, int height) {
  const double right = width - glyph.x;
  const double below = height - glyph.y;
  switch (rotation) {
    case Rotation::kQuarter:
      return {glyph.glyph, below, glyph.x};
    case Rotation::kHalf:
      return {glyph.glyph, right, below};
    case Rotation::kThreeQuarters:
      return {glyph.glyph, glyph.y, right};
    case Rotation::kNone:
      break;
  }
  return glyph;
}

}  // namespace

void Turn(Drawing& drawing, Rotation rotation) {
  if (rotation == Rotation::kNone) {
    return;
  }
  for (DotRect& rect : drawing.dark) {
    rect = TurnedRect(rect, rotation, drawing.width, drawing.height);
  }
  for (PlacedText& text : drawing.texts) {
    text.rotation = rotation;
    for (PlacedGlyph& glyph : text.glyphs) {
      glyph = TurnedGlyph(glyph, rotation, drawing.width, drawing.height);
    }
  }
  if (TurnsAcross(rotation)) {
    std::swap(drawing.width, drawing.height);
  }
}

}  // namespace barcode::label
