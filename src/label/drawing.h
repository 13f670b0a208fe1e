#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/colour.h"
#include "label/request.h"

// A label as the writers see it: dots, turned as it is delivered. All three writers paint exactly this.
namespace barcode::label {

// A dark rectangle, in whole dots.
struct DotRect {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;

  bool operator==(const DotRect&) const = default;
};

// One character of the text: where its origin (on the base line, at its left) stands, in dots, which may be
// fractions.
struct PlacedGlyph {
  int glyph = 0;  // of font.h
  double x = 0;
  double y = 0;

  bool operator==(const PlacedGlyph&) const = default;
};

// Characters of one size. Before the turn they run to the right.
struct PlacedText {
  double size = 0;  // of the em square, in dots
  Rotation rotation = Rotation::kNone;
  std::vector<PlacedGlyph> glyphs;
};

struct Drawing {
  int width = 0;  // dots; at least 1
  int height = 0;
  // Inside the picture, each of at least one dot, in the order of the symbol; they may overlap.
  std::vector<DotRect> dark;
  std::vector<PlacedText> texts;  // inside the picture too
  Colour foreground = kBlack;
  Colour background = kWhite;  // alpha 0: none
  std::optional<int> dpi;      // dots per inch, when the size is physical
  std::string title;           // UTF-8: what the symbol says
};

}  // namespace barcode::label
