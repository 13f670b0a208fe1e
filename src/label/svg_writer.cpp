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

#include "base/number_format.h"
#include "label/bar_shape.h"
#include "label/glyph_path.h"
#include "label/path_data.h"
#include "label/text_outline.h"
#include "label/title.h"
#include "label/units.h"
#include "label/writers.h"

namespace barcode::label {
namespace {

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
constexpr std::size_t kBarSize = 8;
constexpr std::size_t kGlyphSize = 96;

void AddDecimal(TextWriter& out, double value, int decimals) {
  DecimalRoom room{};
  out.Add(WriteDecimal(room, value, decimals));
}

// "#rgb" where that says it, else "#rrggbb".
void AddColour(TextWriter& out, const Colour& colour) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  const std::array<unsigned, 3> channels = {colour.r, colour.g, colour.b};
  const bool isShort = std::all_of(channels.begin(), channels.end(),
                                   [](unsigned channel) { return channel >> 4U == (channel & 15U); });
  out.Add('#');
  for (const unsigned channel : channels) {
    if (!isShort) {
      out.Add(kDigits[channel >> 4U]);
    }
    out.Add(kDigits[channel & 15U]);
  }
}

// `property`: "fill", which is black by itself, or "stroke".
void AddPaint(TextWriter& out, std::string_view property, const Colour& colour) {
  const bool isBlack = colour.r == 0 && colour.g == 0 && colour.b == 0;
  if (property != kFill || !isBlack) {
    out.Add(' ', property, "=\"");
    AddColour(out, colour);
    out.Add('"');
  }
  if (colour.a != 255) {
    out.Add(' ', property, "-opacity=\"");
    AddDecimal(out, colour.a / 255.0, kAlphaDecimals);
    out.Add('"');
  }
}

void AddEscaped(TextWriter& out, char32_t character) {
  switch (character) {
    case '&':
      out.Add("&amp;");
      return;
    case '<':
      out.Add("&lt;");
      return;
    case '>':
      out.Add("&gt;");
      return;
    case '"':
      out.Add("&quot;");
      return;
    case '\r':
      out.Add("&#13;");  // a bare one would be read as a line feed
      return;
    default:
      break;
  }
  if (character < 0x80) {
    out.Add(static_cast<char>(character));
  } else {
    AddUtf8(out, character);
  }
}

void AddTitle(TextWriter& out, std::string_view title) {
  out.Add("<title>");
  while (!title.empty()) {
    AddEscaped(out, TakeDocumentCharacter(title));
  }
  out.Add("</title>");
}

void AddSize(TextWriter& out, std::string_view attribute, int dots, std::optional<int> dpi) {
  out.Add(' ', attribute, "=\"");
  if (dpi) {
    out.Add(General{dots * kMillimetresPerInch / *dpi, kSizeDigits}, "mm");
  } else {
    out.Add(dots);
  }
  out.Add('"');
}

// A length that the bars are counted in. Divides by multiplying: there are many of them.
class Step {
 public:
  explicit Step(int dots) : m_dots(dots), m_inverse(1.0 / dots) {}

  int Dots() const { return m_dots; }
  // To the nearest.
  int Count(int length) const {
    // Above zero, cutting off is rounding down.
    constexpr int kLift = 1 << 30;
    return static_cast<int>(static_cast<std::int64_t>(length * m_inverse + (kLift + 0.5)) - kLift);
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
    path.Line(x - end, rect.y == y ? 0 : grid.step.Count(rect.y - y), 'h', width);
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
    path.Line(rect.x == x ? 0 : grid.step.Count(rect.x - x), y - end, 'v', height);
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

void AddBarData(TextWriter& out, const Bars& bars, const Grid& grid) {
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

void AddGrid(TextWriter& out, const Grid& grid) {
  if (grid.step.Dots() == 1) {
    return;
  }
  out.Add(" transform=\"");
  if (grid.x != 0 || grid.y != 0) {
    out.Add("translate(", grid.x, ' ', grid.y, ')');
  }
  out.Add("scale(", grid.step.Dots(), ")\"");
}

void AddBars(TextWriter& out, const Drawing& drawing) {
  if (drawing.dark.empty()) {
    return;
  }
  const Bars bars = MergedBars(drawing.dark);
  const Grid grid = GridOf(bars.rects);
  const bool lines = bars.shape != BarShape::kMixed;
  out.Add("<path shape-rendering=\"crispEdges\"");
  AddPaint(out, lines ? kStroke : kFill, drawing.foreground);
  if (lines) {
    const DotRect rect = OnGrid(bars.rects.front(), grid);
    const int thickness = bars.shape == BarShape::kOneHeight ? rect.height : rect.width;
    if (thickness != 1) {
      out.Add(" stroke-width=\"", thickness, '"');
    }
  }
  AddGrid(out, grid);
  out.Add(" d=\"");
  AddBarData(out, bars, grid);
  out.Add("\"/>");
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

void AddText(TextWriter& out, const PlacedText& text, const Colour& colour) {
  const std::size_t begin = out.Size();
  out.Add("<path");
  AddPaint(out, kFill, colour);
  const PlacedGlyph& first = text.glyphs.front();
  out.Add(" transform=\"translate(");
  AddDecimal(out, first.x, kPlaceDecimals);
  out.Add(' ');
  AddDecimal(out, first.y, kPlaceDecimals);
  out.Add(')', Rotate(text.rotation), "scale(");
  AddDecimal(out, text.size / kUnitsPerEm, kScaleDecimals);
  out.Add(")\" d=\"");
  const std::size_t empty = out.Size();
  GlyphPen pen(out);
  for (const PlacedGlyph& glyph : text.glyphs) {
    pen.Draw(glyph.glyph, OffsetInUnits(text, glyph));
  }
  if (out.Size() == empty) {
    out.Shorten(begin);  // nothing but spaces
    return;
  }
  out.Add("\"/>");
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
  TextWriter out(LikelySize(drawing));
  out.Add("<svg xmlns=\"http://www.w3.org/2000/svg\"");
  AddSize(out, "width", drawing.width, drawing.dpi);
  AddSize(out, "height", drawing.height, drawing.dpi);
  out.Add(" viewBox=\"0 0 ", drawing.width, ' ', drawing.height, "\" role=\"img\">");
  AddTitle(out, drawing.title);
  if (drawing.background.a != 0) {
    out.Add("<path");
    AddPaint(out, kFill, drawing.background);
    out.Add(" d=\"M0 0h", drawing.width, 'v', drawing.height, "H0\"/>");
  }
  AddBars(out, drawing);
  for (const PlacedText& text : drawing.texts) {
    if (!text.glyphs.empty()) {
      AddText(out, text, drawing.foreground);
    }
  }
  out.Add("</svg>\n");
  return out.Take();
}

}  // namespace barcode::label
