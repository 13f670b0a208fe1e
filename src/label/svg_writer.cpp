#include <array>
#include <charconv>
#include <cstddef>
#include <numeric>
#include <string>
#include <string_view>

#include "base/line.h"
#include "base/number_format.h"
#include "label/bar_shape.h"
#include "label/text_outline.h"
#include "label/title.h"
#include "label/writers.h"

namespace barcode::label {
namespace {

constexpr double kMillimetresPerInch = 25.4;
// Significant digits: of sizes in millimetres, of places and of factors.
constexpr int kSizeDigits = 8;
constexpr int kPlaceDigits = 7;

// Bytes of a document beside its bars, and of a bar or a piece of outline in its path.
constexpr std::size_t kFrameSize = 512;
constexpr std::size_t kPieceSize = 12;

// The data of a <path>, in whole numbers and without a character too many.
class PathData {
 public:
  explicit PathData(std::string& out) : m_out(out) {}

  void Command(char command) {
    m_out += command;
    m_apart = true;
  }

  void Number(int value) {
    std::array<char, 16> buffer;
    char* const begin = buffer.data();
    char* end = begin;
    if (!m_apart && value >= 0) {
      *end++ = ' ';
    }
    if (value >= 0 && value <= 9) {
      *end++ = static_cast<char>('0' + value);
    } else {
      end = std::to_chars(end, begin + buffer.size(), value).ptr;
    }
    m_out.append(begin, end);
    m_apart = false;
  }

  // Half of a number.
  void Half(int value) {
    Number(value / 2);
    if (value % 2 != 0) {
      m_out += ".5";
    }
  }

 private:
  std::string& m_out;
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

// The bars are written in modules: from the corner of the first one, in steps that divide every place and size.
struct Grid {
  int x = 0;
  int y = 0;
  int step = 1;
};

Grid GridOf(const std::vector<DotRect>& rects) {
  Grid grid{.x = rects.front().x, .y = rects.front().y, .step = 0};
  for (const DotRect& rect : rects) {
    for (const int length : {rect.x - grid.x, rect.y - grid.y, rect.width, rect.height}) {
      if (grid.step == 0 || length % grid.step != 0) {
        grid.step = std::gcd(grid.step, length);
      }
    }
    if (grid.step == 1) {
      return {};
    }
  }
  return grid;
}

DotRect OnGrid(const DotRect& rect, const Grid& grid) {
  return {(rect.x - grid.x) / grid.step, (rect.y - grid.y) / grid.step, rect.width / grid.step,
          rect.height / grid.step};
}

// Bars of one height are lines of that width, one run behind the other.
void AppendLinesAcross(std::string& out, const std::vector<DotRect>& rects, const Grid& grid) {
  PathData path(out);
  int x = 0;
  int y = 0;
  bool first = true;
  for (const DotRect& dots : rects) {
    const DotRect rect = OnGrid(dots, grid);
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
}

void AppendLinesDown(std::string& out, const std::vector<DotRect>& rects, const Grid& grid) {
  PathData path(out);
  int x = 0;
  int y = 0;
  bool first = true;
  for (const DotRect& dots : rects) {
    const DotRect rect = OnGrid(dots, grid);
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
}

void AppendAreas(std::string& out, const std::vector<DotRect>& rects, const Grid& grid) {
  PathData path(out);
  int x = 0;
  int y = 0;
  for (const DotRect& dots : rects) {
    const DotRect rect = OnGrid(dots, grid);
    path.Command('m');
    path.Number(rect.x - x);
    path.Number(rect.y - y);
    path.Command('h');
    path.Number(rect.width);
    path.Command('v');
    path.Number(rect.height);
    path.Command('h');
    path.Number(-rect.width);
    path.Command('z');
    x = rect.x;
    y = rect.y;
  }
}

void AppendGrid(std::string& out, const Grid& grid) {
  if (grid.step == 1) {
    return;
  }
  out += " transform=\"";
  if (grid.x != 0 || grid.y != 0) {
    AppendPieces(out, "translate(", grid.x, ' ', grid.y, ')');
  }
  AppendPieces(out, "scale(", grid.step, ")\"");
}

void AppendBars(std::string& out, const Drawing& drawing) {
  if (drawing.dark.empty()) {
    return;
  }
  const Bars bars = MergedBars(drawing.dark);
  const Grid grid = GridOf(bars.rects);
  const bool lines = bars.shape != BarShape::kMixed;
  out.reserve(out.size() + kFrameSize + bars.rects.size() * kPieceSize);
  AppendPieces(out, "<path shape-rendering=\"crispEdges\"", Paint(lines ? "stroke" : "fill", drawing.foreground));
  if (lines) {
    const DotRect rect = OnGrid(bars.rects.front(), grid);
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

// Contours from one point to the next.
void AppendOutline(std::string& out, const Outline& outline) {
  out.reserve(out.size() + outline.size() * kPieceSize);
  PathData path(out);
  UnitPoint last;
  UnitPoint start;
  for (const OutlinePiece& piece : outline) {
    const UnitPoint step{piece.to.x - last.x, piece.to.y - last.y};
    switch (piece.kind) {
      case OutlinePiece::Kind::kMove:
        path.Command('m');
        path.Number(step.x);
        path.Number(step.y);
        start = piece.to;
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
        path.Command('q');
        path.Number(piece.control.x - last.x);
        path.Number(piece.control.y - last.y);
        path.Number(step.x);
        path.Number(step.y);
        break;
    }
    last = piece.to;
  }
}

void AppendText(std::string& out, const PlacedText& text, const Colour& colour) {
  const Outline outline = OutlineOf(text);
  if (outline.empty()) {
    return;
  }
  const PlacedGlyph& first = text.glyphs.front();
  AppendPieces(out, "<path", Paint("fill", colour), " transform=\"translate(", General{first.x, kPlaceDigits},
               ' ', General{first.y, kPlaceDigits}, ")scale(", General{text.size / kUnitsPerEm, kPlaceDigits},
               ")\" d=\"");
  AppendOutline(out, outline);
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
