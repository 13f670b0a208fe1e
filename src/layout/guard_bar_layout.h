#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/run_vector.h"
#include "layout/linear_layout.h"

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

// Raster positions are whole pixels, truncated toward zero, where the layout says so; SVG keeps the
// fractions.
enum class PixelGrid { kRaster, kSvg };

// The box and the options that shape a symbol.
struct GuardBarBox {
  int x = 0;
  int y = 0;
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  float barHeight = 0;  // of the data bars
  bool showText = true;
  bool textEvenSpacing = true;
  float textFontScale = 1;
  float textGap = 1;
  bool fitWidth = false;
  std::int32_t pxAdjustBlack = 0;
  std::int32_t pxAdjustWhite = 0;
};

struct GuardBars {
  std::vector<RectF> bars;
  std::vector<float> sectionStarts;
  float end = 0;  // right edge of the last element
  float rightMargin = 0;
};

// pattern: at least one element.
GuardBars LayoutGuardBars(const GuardBarStyle& style, const RunVector& pattern, const GuardBarBox& box,
                          PixelGrid grid);

enum class TextAnchor { kStart, kMiddle };

// A text that starts at x, or whose middle is at x.
struct AnchoredText {
  std::string text;
  double x = 0;
  TextAnchor anchor = TextAnchor::kMiddle;

  bool operator==(const AnchoredText&) const = default;
};

// The digits of a full code, for digits `cellWidth` pixels wide.
std::vector<AnchoredText> LayoutGuardText(const GuardBarStyle& style, const GuardBars& bars,
                                          std::string_view code, const GuardBarBox& box, double cellWidth,
                                          PixelGrid grid);

// Top of the digits.
double GuardTextTop(const GuardBarStyle& style, const GuardBarBox& box, PixelGrid grid);

// Font size of the digits: SVG sets them smaller.
int GuardTextSize(const GuardBarBox& box, PixelGrid grid);

// Width of a digit in SVG, where the font is not known: estimated from its size.
double SvgDigitWidth(int fontSize);

}  // namespace barcode
