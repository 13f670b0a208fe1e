#include "label/pdf_content.h"

#include <cmath>
#include <cstdint>

#include "base/line.h"
#include "label/bar_shape.h"
#include "label/text_outline.h"

namespace barcode::label {
namespace {

// Decimals of points, of places in dots, of factors and of parts of a colour.
constexpr int kPointDecimals = 5;
constexpr int kPlaceDecimals = 4;
constexpr int kFactorDecimals = 11;
constexpr int kColourDecimals = 4;

constexpr int kFullColour = 255;

// By the rules of PDF an area paints every dot that it touches, so that one whose edge is off by nothing but
// a rounding would become a dot wider on printers of just this resolution. By so many dots its edges stay
// inside: no eye, and no printer of another resolution, sees them.
constexpr double kInset = 0.001;
constexpr int kInsetDecimals = 3;

// Outlines are written in thirds of a unit: so the control points of the cubic curves are whole numbers, too.
constexpr int kThirds = 3;

Decimal Points(double value) {
  return {value, kPointDecimals};
}

Decimal Place(double dots) {
  return {dots, kPlaceDecimals};
}

// From here on, a unit is so many of those before, its origin is at (x, y), and y runs downwards if `down`
// is -1.
void Scale(std::string& out, double factor, const Decimal& x, const Decimal& y, int down) {
  const Decimal across{factor, kFactorDecimals};
  const Decimal upright{factor * down, kFactorDecimals};
  AppendPieces(out, across, " 0 0 ", upright, ' ', x, ' ', y, " cm\n");
}

void AppendArea(std::string& out, const DotRect& rect) {
  const auto place = [](int dots) { return Decimal{dots + kInset, kInsetDecimals}; };
  const auto length = [](int dots) { return Decimal{dots - 2 * kInset, kInsetDecimals}; };
  AppendPieces(out, place(rect.x), ' ', place(rect.y), ' ', length(rect.width), ' ', length(rect.height),
               " re\n");
}

class OutlinePen {
 public:
  explicit OutlinePen(std::string& out) : m_out(out) {}

  void Draw(const OutlinePiece& piece) {
    switch (piece.kind) {
      case OutlinePiece::Kind::kMove:
        Write(kThirds * piece.to.x, kThirds * piece.to.y);
        m_out += "m\n";
        break;
      case OutlinePiece::Kind::kLine:
        Write(kThirds * piece.to.x, kThirds * piece.to.y);
        m_out += "l\n";
        break;
      case OutlinePiece::Kind::kCurve:
        Write(m_last.x + 2 * piece.control.x, m_last.y + 2 * piece.control.y);
        Write(piece.to.x + 2 * piece.control.x, piece.to.y + 2 * piece.control.y);
        Write(kThirds * piece.to.x, kThirds * piece.to.y);
        m_out += "c\n";
        break;
    }
    m_last = piece.to;
  }

 private:
  void Write(int x, int y) { AppendPieces(m_out, x, ' ', y, ' '); }

  std::string& m_out;
  UnitPoint m_last;
};

std::string AlphaName(unsigned alpha) {
  return Line("A", alpha);
}

}  // namespace

void PdfContent::Paint(const Drawing& drawing, const PdfPoint& corner, double pointsPerDot) {
  m_operators += "q\n";
  Scale(m_operators, pointsPerDot, Points(corner.x), Points(corner.y), -1);
  if (drawing.background.a != 0) {
    m_operators += "q\n";
    SetFill(drawing.background);
    AppendArea(m_operators, {0, 0, drawing.width, drawing.height});
    m_operators += "f\nQ\n";
  }
  SetFill(drawing.foreground);
  FillBars(drawing);
  for (const PlacedText& text : drawing.texts) {
    FillText(text);
  }
  m_operators += "Q\n";
}

void PdfContent::Frame(const PdfPoint& lowerLeft, double width, double height, double lineWidth) {
  AppendPieces(m_operators, "0 G\n", Points(lineWidth), " w\n", Points(lowerLeft.x), ' ', Points(lowerLeft.y),
               ' ', Points(width), ' ', Points(height), " re\nS\n");
}

std::string PdfContent::Resources() const {
  if (m_alphas.empty()) {
    return "<< >>";
  }
  std::string states = "<< /ExtGState <<";
  for (const unsigned alpha : m_alphas) {
    AppendPieces(states, " /", AlphaName(alpha), " << /ca ",
                 Decimal{double{1} * alpha / kFullColour, kColourDecimals}, " >>");
  }
  return states + " >> >>";
}

// Greys, black among them, have one component: printers need no mixture of colours for them.
void PdfContent::SetFill(const Colour& colour) {
  const auto part = [](std::uint8_t value) {
    return Decimal{double{1} * value / kFullColour, kColourDecimals};
  };
  if (colour.r == colour.g && colour.g == colour.b) {
    AppendPieces(m_operators, part(colour.r), " g\n");
  } else {
    AppendPieces(m_operators, part(colour.r), ' ', part(colour.g), ' ', part(colour.b), " rg\n");
  }
  if (colour.a != kFullColour) {
    m_alphas.insert(colour.a);
    AppendPieces(m_operators, '/', AlphaName(colour.a), " gs\n");
  }
}

void PdfContent::FillBars(const Drawing& drawing) {
  if (drawing.dark.empty()) {
    return;
  }
  for (const DotRect& rect : MergedBars(drawing.dark).rects) {
    AppendArea(m_operators, rect);
  }
  m_operators += "f\n";
}

void PdfContent::FillText(const PlacedText& text) {
  const Outline outline = OutlineOf(text);
  if (outline.empty()) {
    return;
  }
  const PlacedGlyph& first = text.glyphs.front();
  m_operators += "q\n";
  Scale(m_operators, text.size / (kThirds * kUnitsPerEm), Place(first.x), Place(first.y), 1);
  OutlinePen pen(m_operators);
  for (const OutlinePiece& piece : outline) {
    pen.Draw(piece);
  }
  m_operators += "f\nQ\n";
}

}  // namespace barcode::label
