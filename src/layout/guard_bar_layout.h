#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "base/geometry.h"
#include "base/run_vector.h"
#include "layout/drawing.h"
#include "layout/linear_options.h"

namespace barcode {

// The layout of EAN and UPC symbols with long guard bars: digits stand in groups under the data bars, between
// the guards, and for some symbologies also outside the bars, in reserved margins.

// Consecutive elements of one height.
struct GuardSection {
  std::size_t runs;
  bool guard;  // guard height, else data bar height
  // Its width in modules where the elements end before it does; only then.
  float nominalModules;
};

// Consecutive digits of the code, centred under one section.
struct DigitGroup {
  std::size_t first;
  std::size_t count;
  std::size_t section;
  bool endsText;  // when the section is too narrow for the group, digits after it are left out too
};

// What distinguishes the symbologies.
struct GuardBarStyle {
  std::span<const GuardSection> sections;
  std::span<const DigitGroup> groups;
  // Margins reserved for the digits outside the bars, in digit cells (0.8 of the text height in the middle
  // size band, whatever the height); 0 = no digit stands there.
  float leftMargin;
  float rightMargin;
  // How far the guard bars reach into the text, in text heights of that band.
  float guardReach;
  // Distance of the leading digit from the left edge in SVG, in digit widths; the raster has none.
  float svgLeadingInset;
  // Whether the raster leaves the text gap between data bars and digits. SVG always does.
  bool rasterTextGap;
};

extern const GuardBarStyle kJan13Style;
extern const GuardBarStyle kJan8Style;
extern const GuardBarStyle kUpcAStyle;
extern const GuardBarStyle kUpcEStyle;

// The drawing of a full code. pattern: at least one element. measure: gives the width of a digit in whole
// pixels; in vector drawings, where the font is not known, it is estimated from the font size.
Drawing LayoutGuardBarSymbol(const GuardBarStyle& style, const RunVector& pattern, std::string_view code,
                             const Box& box, const LinearOptions& options, PixelGrid grid,
                             const TextMeasure& measure);

// The steps of it.

struct GuardBars {
  std::vector<RectF> bars;
  std::vector<float> sectionStarts;
  float end = 0;  // right edge of the last element
  float rightMargin = 0;
};

GuardBars LayoutGuardBars(const GuardBarStyle& style, const RunVector& pattern, const Box& box,
                          const LinearOptions& options, PixelGrid grid);

// The digits, for digits `cellWidth` pixels wide.
std::vector<TextRun> LayoutGuardText(const GuardBarStyle& style, const GuardBars& bars, std::string_view code,
                                     const Box& box, const LinearOptions& options, double cellWidth,
                                     PixelGrid grid);

// Top of the digits.
double GuardTextTop(const GuardBarStyle& style, const Box& box, const TextOptions& options, PixelGrid grid);

// Font size of the digits: vector drawings set them smaller.
int GuardTextSize(const Box& box, const TextOptions& options, PixelGrid grid);

// Width of a digit where the font is not known: estimated from its size.
double EstimatedDigitWidth(int fontSize);

}  // namespace barcode
