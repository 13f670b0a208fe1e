#include "label/text_setting.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "base/utf8.h"

namespace barcode::label {
namespace {

constexpr char32_t kFirstBeyondAscii = 0x80;

// Positions are quarters of a dot: finer ones cannot be seen, and take more bytes to write.
double Quartered(double position) {
  return std::round(position * 4.0) / 4.0;
}

// The largest whole size, up to `wanted`, at which so many units are at most `width` dots wide.
int LargestSizeOf(double units, double width, int wanted) {
  if (units * wanted <= width * kUnitsPerEm) {
    return wanted;
  }
  return static_cast<int>(std::max(0.0, std::floor(width * kUnitsPerEm / units)));
}

}  // namespace

// How far an outline reaches from its origin.
struct TextLine::Ink {
  double left = 0;  // to either side, negative to the left
  double right = 0;
  double top = 0;
  double bottom = 0;

  explicit Ink(const Outline& outline) {
    for (const OutlinePiece& piece : outline) {
      Include(piece.to);
      if (piece.kind == OutlinePiece::Kind::kCurve) {
        Include(piece.control);
      }
    }
  }

  void Include(const UnitPoint& point) {
    left = std::min<double>(left, point.x);
    right = std::max<double>(right, point.x);
    top = std::max<double>(top, point.y);
    bottom = std::max<double>(bottom, -point.y);
  }
};

TextLine::TextLine(const Font& font, std::string_view text)
    : m_ascent(font.Ascent()), m_descent(font.Descent()) {
  m_glyphs.reserve(text.size());
  m_advances.reserve(text.size());
  VisitUtf8(text, [&](char32_t character) {
    const std::optional<int> glyph = font.FindGlyph(character);
    if (!glyph && m_missing.size() < kMissingToldOf && m_missing.find(character) == std::u32string::npos) {
      m_missing += character;
    }
    m_glyphs.push_back(glyph.value_or(kPlaceholderGlyph));
    m_advances.push_back(font.Advance(m_glyphs.back()));
    // Accents may reach beyond the lines of the face, and marks that follow no letter beyond the line's ends.
    const bool isBeyondAscii = character >= kFirstBeyondAscii;
    if (isBeyondAscii || m_width == 0) {
      const Ink ink(font.GlyphOutline(m_glyphs.back()));
      IncludeInk(ink, m_width);
      m_ascent = isBeyondAscii ? std::max(m_ascent, ink.top) : m_ascent;
      m_descent = isBeyondAscii ? std::max(m_descent, ink.bottom) : m_descent;
    }
    m_width += m_advances.back();
    m_widest = std::max(m_widest, m_advances.back());
  });
  IncludeEnd(font);
}

void TextLine::IncludeInk(const Ink& ink, double pen) {
  m_inkLeft = std::min(m_inkLeft, pen + ink.left);
  m_inkRight = std::max(m_inkRight, pen + ink.right);
}

// The last character that takes room, which others may stand on.
void TextLine::IncludeEnd(const Font& font) {
  const auto last =
      std::find_if(m_advances.rbegin(), m_advances.rend(), [](double advance) { return advance > 0; });
  if (last != m_advances.rend()) {
    const auto index = m_advances.rend() - last - 1;
    IncludeInk(Ink(font.GlyphOutline(m_glyphs[static_cast<std::size_t>(index)])), m_width - *last);
  }
  m_inkRight = std::max(m_inkRight, m_width);
}

int TextLine::Ascent(int size) const {
  return static_cast<int>(std::ceil(m_ascent * size / kUnitsPerEm));
}

int TextLine::Descent(int size) const {
  return static_cast<int>(std::ceil(m_descent * size / kUnitsPerEm));
}

int TextLine::LargestSize(double width, int wanted) const {
  return LargestSizeOf(InkWidth(), width, wanted);
}

int TextLine::LargestCellSize(double width, int wanted) const {
  return LargestSizeOf(m_widest, width, wanted);
}

PlacedText TextLine::SetAt(double x, double baseLine, int size) const {
  PlacedText placed;
  placed.size = size;
  placed.glyphs.reserve(m_glyphs.size());
  double pen = x - m_inkLeft * size / kUnitsPerEm;
  for (std::size_t i = 0; i < m_glyphs.size(); ++i) {
    placed.glyphs.push_back({m_glyphs[i], Quartered(pen), baseLine});
    pen += m_advances[i] * size / kUnitsPerEm;
  }
  return placed;
}

PlacedText TextLine::SetAround(const std::vector<double>& centres, double baseLine, int size) const {
  PlacedText placed;
  placed.size = size;
  placed.glyphs.reserve(m_glyphs.size());
  for (std::size_t i = 0; i < m_glyphs.size(); ++i) {
    const double half = m_advances[i] * size / kUnitsPerEm / 2.0;
    placed.glyphs.push_back({m_glyphs[i], Quartered(centres[i] - half), baseLine});
  }
  return placed;
}

}  // namespace barcode::label
