#pragma once

#include "label/drawing.h"
#include "label/font.h"

// The outlines of texts as all writers draw them: in units of the text's size, from the origin of its first
// glyph, turned as the text is, y downwards. The glyphs stand on whole units.
namespace barcode::label {

// Where one of the text's glyphs stands, before the turn.
UnitPoint OffsetInUnits(const PlacedText& text, const PlacedGlyph& glyph);

// Appends one of the text's glyphs. Throws std::bad_alloc, as all of these.
void AppendGlyphOutline(const PlacedText& text, const PlacedGlyph& glyph, Outline& outline);

// All glyphs.
Outline OutlineOf(const PlacedText& text);

}  // namespace barcode::label
