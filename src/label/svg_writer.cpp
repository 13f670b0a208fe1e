#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/line.h"
#include "base/number_format.h"
#include "label/bar_shape.h"
#include "label/glyph_path.h"
#include "label/path_data.h"
#include "label/text_outline.h"
#include "label/title.h"
#include "label/writers.h"

namespace barcode::label {
namespace {

constexpr double kMillimetresPerInch = 25.4;
// Significant digits of sizes in millimetres.
constexpr int kSizeDigits = 8;
// Decimals of places in dots and of dots per unit.
constexpr int kPlaceDecimals = 2;
constexpr int kScaleDecimals = 6;
constexpr int kAlphaDecimals = 4;

constexpr std::string_view kFill = "fill";
constexpr std::string_view kStroke = "stroke";

// Bytes of a document beside its bars and text, of a bar and of a glyph.
constexpr std::size_t kFrameSize = 512;
constexpr std::size_t kBarSize = 10;
constexpr std::size_t kGlyphSize = 120;

std::string ShortHex(const Colour& colour) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  const std::array<unsigned, 3> channels = {colour.r, colour.g, colour.b};
  bool isShort = true;
  for (const unsigned channel : channels) {
    isShort = isShort && channel >> 4U == (channel & 15U);
  }
  std::string text = "#";
  for (const unsigned channel : channels) {
    if (!isShort) {
      text += kDigits[channel >> 4U];
    }
    text += kDigits[channel & 15U];
  }
  return text;
}

// `property`: "fill", which is black by itself, or "stroke".
void AppendPaint(std::string& out, std::string_view property, const Colour& colour) {
  if (property != kFill || ShortHex(colour) != "#000") {
    AppendPieces(out, ' ', property, "=\"", ShortHex(colour), '"');
  }
  if (colour.a != 255) {
    AppendPieces(out, ' ', property, "-opacity=\"");
    AppendDecimal(out, colour.a / 255.0, kAlphaDecimals);
    out += '"';
  }
}

void AppendEscaped(std::string& out, char32_t character) {
  switch (character) {
    case '&':
      out += "&amp;";
      return;
    case '<':
      out += "&lt;";
      return;
    case '>':
      out += "&gt;";
      return;
    case '"':
      out += "&quot;";
      return;
    case '\r':
      out += "&#13;";  // a bare one would be read as a line feed
      return;
    default:
      AppendUtf8(out, character);
  }
}

void AppendTitle(std::string& out, std::string_view title) {
  out += "<title>";
  while (!title.empty()) {
    AppendEscaped(out, TakeDocumentCharacter(title));
  }
  out += "</title>";
}

void AppendSize(std::string& out, std::string_view attribute, int dots, std::optional<int> dpi) {
  AppendPieces(out, ' ', attribute, "=\"");
  if (dpi) {
    AppendPieces(out, General{dots * kMillimetresPerInch / *dpi, kSizeDigits}, "mm");
  } else {
    AppendInt(out, dots);
  }
  out += '"';
}

// A length that the bars are counted in. Divides by multiplying: there are many of them.
class Step {
 public:
  explicit Step(int dots) : m_dots(dots), m_inverse(1.0 / dots) {}

  int Dots() const { return m_dots; }
  // To the nearest.
  int Count(int length) const {
    const double count = length * m_inverse;
    return static_cast<int>(count + (count < 0 ? -0.5 : 0.5));
  }
  bool Divides(int length) const { return Count(length) * m_dots == length; }

 private:
  int m_dots;
  double m_inverse;
};

// The bars are written in modules: from the corner of the first one, in steps that divide every place and
// size.
struct Grid {
  int x = 0;
  int y = 0;
  Step step{1};
};

Grid GridOf(const std::vector<DotRect>& rects) {
  const DotRect& first = rects.front();
  Step step(std::gcd(first.width, first.height));
  const auto divide = [&step](int length) {
    if (!step.Divides(length)) {
      step = Step(std::gcd(step.Dots(), length));
    }
  };
  const DotRect* last = &first;
  for (const DotRect& rect : rects) {
    divide(rect.x - first.x);
    divide(rect.width);
    if (rect.y != last->y || rect.height != last->height) {
      divide(rect.y - first.y);
      divide(rect.height);
      last = &rect;
    }
    if (step.Dots() == 1) {
      return {};
    }
  }
  return {first.x, first.y, step};
}

DotRect OnGrid(const DotRect& rect, const Grid& grid) {
  return {grid.step.Count(rect.x - grid.x), grid.step.Count(rect.y - grid.y), grid.step.Count(rect.width),
          grid.step.Count(rect.height)};
}

// Bars of one height are lines of that width, one run behind the other.
void AppendLinesAcross(PathData& path, const std::vector<DotRect>& rects, const Grid& grid) {
  const DotRect first = OnGrid(rects.front(), grid);
  path.Command('M').Number(first.x).Half(2 * first.y + first.height).Command('h').Number(first.width);
  int end = first.x + first.width;
  int y = rects.front().y;
  for (const DotRect& rect : std::span(rects).subspan(1)) {
    const int x = grid.step.Count(rect.x - grid.x);
    const int width = grid.step.Count(rect.width);
    path.Command('m').Number(x - end).Number(rect.y == y ? 0 : grid.step.Count(rect.y - y));
    path.Command('h').Number(width);
    end = x + width;
    y = rect.y;
  }
}

void AppendLinesDown(PathData& path, const std::vector<DotRect>& rects, const Grid& grid) {
  const DotRect first = OnGrid(rects.front(), grid);
  path.Command('M').Half(2 * first.x + first.width).Number(first.y).Command('v').Number(first.height);
  int end = first.y + first.height;
  int x = rects.front().x;
  for (const DotRect& rect : std::span(rects).subspan(1)) {
    const int y = grid.step.Count(rect.y - grid.y);
    const int height = grid.step.Count(rect.height);
    path.Command('m').Number(rect.x == x ? 0 : grid.step.Count(rect.x - x)).Number(y - end);
    path.Command('v').Number(height);
    end = y + height;
    x = rect.x;
  }
}

// One side of a rectangle.
using Side = int (*)(const DotRect&);
int Top(const DotRect& rect) {
  return rect.y;
}
int Bottom(const DotRect& rect) {
  return rect.y + rect.height;
}
int Left(const DotRect& rect) {
  return rect.x;
}
int Right(const DotRect& rect) {
  return rect.x + rect.width;
}

// Rectangles that stand on one line: a comb is drawn along it, with a tooth for each.
struct Comb {
  Side line;
  Side tip;
  char toTip;
  Side begin;
  Side end;
  char along;
};
constexpr std::array<Comb, 4> kCombs = {{{Top, Bottom, 'V', Left, Right, 'h'},
                                         {Bottom, Top, 'V', Left, Right, 'h'},
                                         {Left, Right, 'H', Top, Bottom, 'v'},
                                         {Right, Left, 'H', Top, Bottom, 'v'}}};

const Comb* FindComb(const std::vector<DotRect>& rects) {
  for (const Comb& comb : kCombs) {
    const int line = comb.line(rects.front());
    if (std::all_of(rects.begin(), rects.end(),
                    [&](const DotRect& rect) { return comb.line(rect) == line; })) {
      return &comb;
    }
  }
  return nullptr;
}

void AppendComb(PathData& path, const std::vector<DotRect>& rects, const Grid& grid, const Comb& comb) {
  const DotRect first = OnGrid(rects.front(), grid);
  const bool across = comb.along == 'h';
  path.Command('M').Number(across ? comb.begin(first) : comb.line(first));
  path.Number(across ? comb.line(first) : comb.begin(first));
  int pen = comb.begin(first);
  for (const DotRect& dots : rects) {
    const DotRect rect = OnGrid(dots, grid);
    if (&dots != &rects.front()) {
      path.Command(comb.toTip).Number(comb.line(rect)).Command(comb.along).Number(comb.begin(rect) - pen);
    }
    path.Command(comb.toTip)
        .Number(comb.tip(rect))
        .Command(comb.along)
        .Number(comb.end(rect) - comb.begin(rect));
    pen = comb.end(rect);
  }
  path.Command(comb.toTip).Number(comb.line(first));
}

void AppendAreas(PathData& path, const std::vector<DotRect>& rects, const Grid& grid) {
  UnitPoint pen;
  for (const DotRect& dots : rects) {
    const DotRect rect = OnGrid(dots, grid);
    path.Command('m').Number(rect.x - pen.x).Number(rect.y - pen.y).Command('h').Number(rect.width);
    path.Command('v').Number(rect.height).Command('h').Number(-rect.width).Command('z');
    pen = {rect.x, rect.y};
  }
}

void AppendBarData(std::string& out, const Bars& bars, const Grid& grid) {
  PathData path(out);
  if (bars.shape == BarShape::kOneHeight) {
    AppendLinesAcross(path, bars.rects, grid);
  } else if (bars.shape == BarShape::kOneWidth) {
    AppendLinesDown(path, bars.rects, grid);
  } else if (const Comb* const comb = FindComb(bars.rects); comb != nullptr) {
    AppendComb(path, bars.rects, grid, *comb);
  } else {
    AppendAreas(path, bars.rects, grid);
  }
  path.Flush();
}

void AppendGrid(std::string& out, const Grid& grid) {
  if (grid.step.Dots() == 1) {
    return;
  }
  out += " transform=\"";
  if (grid.x != 0 || grid.y != 0) {
    AppendPieces(out, "translate(", grid.x, ' ', grid.y, ')');
  }
  AppendPieces(out, "scale(", grid.step.Dots(), ")\"");
}

void AppendBars(std::string& out, const Drawing& drawing) {
  if (drawing.dark.empty()) {
    return;
  }
  const Bars bars = MergedBars(drawing.dark);
  const Grid grid = GridOf(bars.rects);
  const bool lines = bars.shape != BarShape::kMixed;
  out += "<path shape-rendering=\"crispEdges\"";
  AppendPaint(out, lines ? kStroke : kFill, drawing.foreground);
  if (lines) {
    const DotRect rect = OnGrid(bars.rects.front(), grid);
    const int thickness = bars.shape == BarShape::kOneHeight ? rect.height : rect.width;
    if (thickness != 1) {
      AppendPieces(out, " stroke-width=\"", thickness, '"');
    }
  }
  AppendGrid(out, grid);
  out += " d=\"";
  AppendBarData(out, bars, grid);
  out += "\"/>";
}

// Letters of the turn that a text makes.
std::string_view Rotate(Rotation rotation) {
  switch (rotation) {
    case Rotation::kQuarter:
      return "rotate(90)";
    case Rotation::kHalf:
      return "rotate(180)";
    case Rotation::kThreeQuarters:
      return "rotate(270)";
    default:
      return "";
  }
}

void AppendText(std::string& out, const PlacedText& text, const Colour& colour) {
  const std::size_t begin = out.size();
  out += "<path";
  AppendPaint(out, kFill, colour);
  const PlacedGlyph& first = text.glyphs.front();
  out += " transform=\"translate(";
  AppendDecimal(out, first.x, kPlaceDecimals);
  out += ' ';
  AppendDecimal(out, first.y, kPlaceDecimals);
  AppendPieces(out, ')', Rotate(text.rotation), "scale(");
  AppendDecimal(out, text.size / kUnitsPerEm, kScaleDecimals);
  out += ")\" d=\"";
  const std::size_t empty = out.size();
  GlyphPen pen(out);
  for (const PlacedGlyph& glyph : text.glyphs) {
    pen.Draw(glyph.glyph, OffsetInUnits(text, glyph));
  }
  if (out.size() == empty) {
    out.resize(begin);  // nothing but spaces
    return;
  }
  out += "\"/>";
}

std::size_t LikelySize(const Drawing& drawing) {
  std::size_t size = kFrameSize + drawing.title.size() + drawing.dark.size() * kBarSize;
  for (const PlacedText& text : drawing.texts) {
    size += text.glyphs.size() * kGlyphSize;
  }
  return size;
}

}  // namespace

std::string WriteSvg(const Drawing& drawing) {
  std::string out = "<svg xmlns=\"http://www.w3.org/2000/svg\"";
  out.reserve(LikelySize(drawing));
  AppendSize(out, "width", drawing.width, drawing.dpi);
  AppendSize(out, "height", drawing.height, drawing.dpi);
  AppendPieces(out, " viewBox=\"0 0 ", drawing.width, ' ', drawing.height, "\" role=\"img\">");
  AppendTitle(out, drawing.title);
  if (drawing.background.a != 0) {
    out += "<path";
    AppendPaint(out, kFill, drawing.background);
    AppendPieces(out, " d=\"M0 0h", drawing.width, 'v', drawing.height, "H0\"/>");
  }
  AppendBars(out, drawing);
  for (const PlacedText& text : drawing.texts) {
    if (!text.glyphs.empty()) {
      AppendText(out, text, drawing.foreground);
    }
  }
  out += "</svg>\n";
  return out;
}

}  // namespace barcode::label
