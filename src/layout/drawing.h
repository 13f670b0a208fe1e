#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "base/geometry.h"
#include "text/text_extent.h"
#include "text/text_spacing.h"

// What stands between a layout and a painter: a picture as rectangles and texts, in pixels. Layouts are pure
// functions of symbol, options and box; whoever paints takes a drawing as it is.
namespace barcode {

// Where raster and vector really differ: a raster layout truncates to whole pixels what its rules say, and
// leaves to the painter what depends on the width of a rendered text; a vector layout keeps fractions.
enum class PixelGrid : std::uint8_t { kWhole, kFractional };

// What `x` of a text is.
enum class TextAnchor : std::uint8_t {
  kStart,   // the left edge
  kMiddle,  // the middle; in whole pixels half of the rendered width, rounded down, stands left of it
  kWithin,  // the left end of `width` pixels that the text is centred in; kWhole only
};

// The vertical room of a text: where its top stands, and the edge that no rendered image may cross.
struct TextBox {
  double top = 0;
  double bottom = std::numeric_limits<double>::infinity();

  bool operator==(const TextBox&) const = default;
};

// One text of one font size: in one piece, or (spacing) each byte alone around its own centre.
struct TextRun {
  std::string text;
  int size = 0;  // of the font, in pixels
  TextAnchor anchor = TextAnchor::kMiddle;
  double x = 0;
  double width = 0;  // TextAnchor::kWithin
  TextBox box;
  std::optional<EvenSpacing> spacing;  // then anchor, x and width say nothing

  bool operator==(const TextRun&) const = default;
};

struct Drawing {
  std::vector<RectF> bars;
  std::vector<TextRun> texts;
  float drawnWidth = 0;
  float barHeight = 0;  // of the bars that have no guard height
};

// The size of a text at a font size, as a painter would render it; nothing when it cannot be rendered.
using TextMeasure = std::function<std::optional<TextExtent>(const std::string& text, int size)>;

}  // namespace barcode
