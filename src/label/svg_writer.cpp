#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <numeric>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/line.h"
#include "base/number_format.h"
#include "label/bar_shape.h"
#include "label/font.h"
#include "label/text_outline.h"
#include "label/title.h"
#include "label/writers.h"

namespace barcode::label {
namespace {

constexpr double kMillimetresPerInch = 25.4;
// Significant digits: of sizes in millimetres, of places and of factors.
constexpr int kSizeDigits = 8;
constexpr int kPlaceDigits = 7;

// Bytes of a document beside its bars, of a bar in its path, and of a glyph.
constexpr std::size_t kFrameSize = 512;
constexpr std::size_t kPieceSize = 12;
constexpr std::size_t kGlyphSize = 256;

// The data of a <path>, in whole numbers and without a character too many. It is complete in the document
// when it has been finished.
class PathData {
 public:
  explicit PathData(std::string& out) : m_out(out) {}

  // Throws std::bad_alloc, as all of these.
  void Finish() {
    m_out.append(m_buffer.data(), m_size);
    m_size = 0;
  }

  void Command(char command) {
    Reserve(1);
    m_buffer[m_size++] = command;
    m_apart = true;
  }

  void Number(int value) {
    constexpr std::size_t kLongest = 12;
    Reserve(kLongest);
    if (!m_apart && value >= 0) {
      m_buffer[m_size++] = ' ';
    }
    if (value >= 0 && value <= 9) {
      m_buffer[m_size++] = static_cast<char>('0' + value);
    } else {
      char* const begin = m_buffer.data() + m_size;
      m_size += static_cast<std::size_t>(std::to_chars(begin, begin + kLongest, value).ptr - begin);
    }
    m_apart = false;
  }

  // Path data that begins with a command and ends with a number; nothing of it may be all.
  void Text(std::string_view data) {
    Finish();
    m_out += data;
    m_apart = m_apart && data.empty();
  }

  // Half of a number.
  void Half(int value) {
    Number(value / 2);
    if (value % 2 != 0) {
      Reserve(2);
      m_buffer[m_size++] = '.';
      m_buffer[m_size++] = '5';
    }
  }

 private:
  // Short pieces are gathered before they go to the document.
  void Reserve(std::size_t size) {
    if (m_size + size + 1 > m_buffer.size()) {
      Finish();
    }
  }

  std::string& m_out;
  std::array<char, 256> m_buffer;
  std::size_t m_size = 0;
  bool m_apart = true;  // no digit stands before
};

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

// `property`: "fill" or "stroke".
std::string Paint(std::string_view property, const Colour& colour) {
  std::string attributes = Line(' ', property, "=\"", ShortHex(colour), '"');
  if (colour.a != 255) {
    AppendPieces(attributes, ' ', property, "-opacity=\"", General{colour.a / 255.0, 4}, '"');
  }
  return attributes;
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

// The bars are written in modules: from the corner of the first one, in steps that divide every place and
// size.
class Grid {
 public:
  explicit Grid(const std::vector<DotRect>& rects) : m_x(rects.front().x), m_y(rects.front().y) {
    for (const DotRect& rect : rects) {
      Include(rect.x - m_x);
      Include(rect.y - m_y);
      Include(rect.width);
      Include(rect.height);
    }
    if (m_step == 1) {
      m_x = 0;
      m_y = 0;
    }
  }

  int X() const { return m_x; }
  int Y() const { return m_y; }
  int Step() const { return m_step; }

  DotRect Of(const DotRect& rect) const {
    return {Steps(rect.x - m_x), Steps(rect.y - m_y), Steps(rect.width), Steps(rect.height)};
  }

 private:
  void Include(int length) {
    if (m_step == 0 || Steps(length) * m_step != length) {
      m_step = std::gcd(m_step, length);
      m_steps = m_step == 0 ? 0.0 : 1.0 / m_step;
    }
  }

  // Exact where the step divides the length, without a division for each.
  int Steps(int length) const {
    const double steps = length * m_steps;
    return static_cast<int>(steps < 0 ? steps - 0.5 : steps + 0.5);
  }

  int m_x = 0;
  int m_y = 0;
  int m_step = 0;
  double m_steps = 0;
};

// Bars of one height are lines of that width, one run behind the other.
void AppendLinesAcross(std::string& out, const std::vector<DotRect>& rects, const Grid& grid) {
  PathData path(out);
  int x = 0;
  int y = 0;
  bool first = true;
  for (const DotRect& dots : rects) {
    const DotRect rect = grid.Of(dots);
    if (first) {
      path.Command('M');
      path.Number(rect.x);
      path.Half(2 * rect.y + rect.height);
      first = false;
    } else {
      path.Command('m');
      path.Number(rect.x - x);
      path.Number(rect.y - y);
    }
    path.Command('h');
    path.Number(rect.width);
    x = rect.x + rect.width;
    y = rect.y;
  }
  path.Finish();
}

void AppendLinesDown(std::string& out, const std::vector<DotRect>& rects, const Grid& grid) {
  PathData path(out);
  int x = 0;
  int y = 0;
  bool first = true;
  for (const DotRect& dots : rects) {
    const DotRect rect = grid.Of(dots);
    if (first) {
      path.Command('M');
      path.Half(2 * rect.x + rect.width);
      path.Number(rect.y);
      first = false;
    } else {
      path.Command('m');
      path.Number(rect.x - x);
      path.Number(rect.y - y);
    }
    path.Command('v');
    path.Number(rect.height);
    x = rect.x;
    y = rect.y + rect.height;
  }
  path.Finish();
}

// Bars of several heights: contours, without a close where the fill closes them. Bars that stand on one line
// are one contour, which runs back to that line and along it to the next.
void AppendAreas(std::string& out, const std::vector<DotRect>& rects, const Grid& grid) {
  PathData path(out);
  const bool upright = rects.size() < 2 || rects[0].y == rects[1].y;
  const char along = upright ? 'h' : 'v';
  const char across = upright ? 'v' : 'h';
  UnitPoint pen;
  for (std::size_t i = 0; i < rects.size(); ++i) {
    const DotRect rect = grid.Of(rects[i]);
    const int gap = upright ? rect.x - pen.x : rect.y - pen.y;
    const bool aligned = upright ? rect.y == pen.y : rect.x == pen.x;
    if (i > 0 && aligned) {
      path.Command(along);
      path.Number(gap);
    } else {
      path.Command('m');
      path.Number(rect.x - pen.x);
      path.Number(rect.y - pen.y);
    }
    const int length = upright ? rect.height : rect.width;
    const int thickness = upright ? rect.width : rect.height;
    path.Command(across);
    path.Number(length);
    path.Command(along);
    path.Number(thickness);
    path.Command(across);
    path.Number(-length);
    pen = upright ? UnitPoint{rect.x + thickness, rect.y} : UnitPoint{rect.x, rect.y + thickness};
  }
  path.Finish();
}

void AppendGrid(std::string& out, const Grid& grid) {
  if (grid.Step() == 1) {
    return;
  }
  out += " transform=\"";
  if (grid.X() != 0 || grid.Y() != 0) {
    AppendPieces(out, "translate(", grid.X(), ' ', grid.Y(), ')');
  }
  AppendPieces(out, "scale(", grid.Step(), ")\"");
}

void AppendBars(std::string& out, const Drawing& drawing) {
  if (drawing.dark.empty()) {
    return;
  }
  const Bars bars = MergedBars(drawing.dark);
  const Grid grid(bars.rects);
  const bool lines = bars.shape != BarShape::kMixed;
  out.reserve(out.size() + kFrameSize + bars.rects.size() * kPieceSize);
  AppendPieces(out, "<path shape-rendering=\"crispEdges\"",
               Paint(lines ? "stroke" : "fill", drawing.foreground));
  if (lines) {
    const DotRect rect = grid.Of(bars.rects.front());
    const int thickness = bars.shape == BarShape::kOneHeight ? rect.height : rect.width;
    if (thickness != 1) {
      AppendPieces(out, " stroke-width=\"", thickness, '"');
    }
  }
  AppendGrid(out, grid);
  out += " d=\"";
  if (bars.shape == BarShape::kOneHeight) {
    AppendLinesAcross(out, bars.rects, grid);
  } else if (bars.shape == BarShape::kOneWidth) {
    AppendLinesDown(out, bars.rects, grid);
  } else {
    AppendAreas(out, bars.rects, grid);
  }
  out += "\"/>";
}

// Where a contour was left, for the moves from one point to the next.
using Pen = UnitPoint;

// Writes pieces of an outline from the pen on.
void AppendOutline(PathData& path, std::span<const OutlinePiece> pieces, Pen& pen) {
  for (const OutlinePiece& piece : pieces) {
    const UnitPoint step{piece.to.x - pen.x, piece.to.y - pen.y};
    switch (piece.kind) {
      case OutlinePiece::Kind::kMove:
        path.Command('m');
        path.Number(step.x);
        path.Number(step.y);
        break;
      case OutlinePiece::Kind::kLine:
        if (step.x == 0 || step.y == 0) {
          path.Command(step.y == 0 ? 'h' : 'v');
          path.Number(step.x + step.y);
        } else {
          path.Command('l');
          path.Number(step.x);
          path.Number(step.y);
        }
        break;
      case OutlinePiece::Kind::kCurve:
        path.Command(piece.smooth ? 't' : 'q');
        if (!piece.smooth) {
          path.Number(piece.control.x - pen.x);
          path.Number(piece.control.y - pen.y);
        }
        path.Number(step.x);
        path.Number(step.y);
        break;
    }
    pen = piece.to;
  }
}

// A glyph of an upright text whose origin is (0, 0): where its first contour begins, the path from there on,
// and where that ends.
struct GlyphPath {
  UnitPoint start;
  std::string rest;
  UnitPoint end;
};

// The paths of printable ASCII, of which most texts consist, by glyph. They are the same at every size.
using GlyphPaths = std::vector<std::optional<GlyphPath>>;

GlyphPaths MakeGlyphPaths() {
  GlyphPaths paths;
  const Font font;
  for (char32_t character = '!'; character <= '~'; ++character) {
    const std::optional<int> glyph = font.FindGlyph(character);
    if (!glyph) {
      continue;
    }
    PlacedText text;
    text.size = kUnitsPerEm;
    text.glyphs.push_back({.glyph = *glyph});
    const Outline outline = OutlineOf(text);
    GlyphPath entry{.start = outline.front().to, .rest = {}, .end = outline.front().to};
    PathData path(entry.rest);
    AppendOutline(path, std::span(outline).subspan(1), entry.end);
    path.Finish();
    const auto index = static_cast<std::size_t>(*glyph);
    paths.resize(std::max(paths.size(), index + 1));
    paths[index] = std::move(entry);
  }
  return paths;
}

// Null for any other glyph.
const GlyphPath* FindGlyphPath(int glyph) {
  static const GlyphPaths paths = MakeGlyphPaths();
  const auto index = static_cast<std::size_t>(glyph);
  return glyph >= 0 && index < paths.size() && paths[index] ? &*paths[index] : nullptr;
}

void AppendGlyph(PathData& path, const PlacedText& text, const PlacedGlyph& glyph, Pen& pen) {
  const GlyphPath* const known = text.rotation == Rotation::kNone ? FindGlyphPath(glyph.glyph) : nullptr;
  if (known == nullptr) {
    Outline outline;
    AppendGlyphOutline(text, glyph, outline);
    AppendOutline(path, outline, pen);
    return;
  }
  const UnitPoint origin = GlyphOrigin(text, glyph);
  path.Command('m');
  path.Number(origin.x + known->start.x - pen.x);
  path.Number(origin.y + known->start.y - pen.y);
  path.Text(known->rest);
  pen = {origin.x + known->end.x, origin.y + known->end.y};
}

void AppendText(std::string& out, const PlacedText& text, const Colour& colour) {
  if (text.glyphs.empty()) {
    return;
  }
  out.reserve(out.size() + kFrameSize + text.glyphs.size() * kGlyphSize);
  const PlacedGlyph& first = text.glyphs.front();
  AppendPieces(out, "<path", Paint("fill", colour), " transform=\"translate(", General{first.x, kPlaceDigits},
               ' ', General{first.y, kPlaceDigits}, ")scale(", General{text.size / kUnitsPerEm, kPlaceDigits},
               ")\" d=\"");
  PathData path(out);
  Pen pen;
  for (const PlacedGlyph& glyph : text.glyphs) {
    AppendGlyph(path, text, glyph, pen);
  }
  path.Finish();
  out += "\"/>";
}

}  // namespace

std::string WriteSvg(const Drawing& drawing) {
  std::string out = "<svg xmlns=\"http://www.w3.org/2000/svg\"";
  out.reserve(kFrameSize + drawing.title.size());
  AppendSize(out, "width", drawing.width, drawing.dpi);
  AppendSize(out, "height", drawing.height, drawing.dpi);
  AppendPieces(out, " viewBox=\"0 0 ", drawing.width, ' ', drawing.height, "\" role=\"img\">");
  AppendTitle(out, drawing.title);
  if (drawing.background.a != 0) {
    AppendPieces(out, "<path", Paint("fill", drawing.background), " d=\"M0 0h", drawing.width, 'v',
                 drawing.height, "H0z\"/>");
  }
  AppendBars(out, drawing);
  for (const PlacedText& text : drawing.texts) {
    AppendText(out, text, drawing.foreground);
  }
  out += "</svg>\n";
  return out;
}

}  // namespace barcode::label
