#include "label/text_setting.h"

#include <algorithm>
#include <cmath>

#include "base/utf8.h"

namespace barcode::label {
namespace {

constexpr char32_t kFirstBeyondAscii = 0x80;

// Positions are quarters of a dot: finer ones cannot be seen, and take more bytes to write.
double Quartered(double position) {
  return std::round(position * 4.0) / 4.0;
}

struct Extent {
  double top = 0;
  double bottom = 0;
};

// How far an outline reaches above and below the base line.
Extent ExtentOf(const Outline& outline) {
  Extent extent;
  const auto include = [&extent](const UnitPoint& point) {
    extent.top = std::max<double>(extent.top, point.y);
    extent.bottom = std::max<double>(extent.bottom, -point.y);
  };
  for (const OutlinePiece& piece : outline) {
    include(piece.to);
    if (piece.kind == OutlinePiece::Kind::kCurve) {
      include(piece.control);
    }
  }
  return extent;
}

// The largest whole size, up to `wanted`, at which so many units are at most `width` dots wide.
int LargestSizeOf(double units, double width, int wanted) {
  if (units * wanted <= width * kUnitsPerEm) {
    return wanted;
  }
  return static_cast<int>(std::max(0.0, std::floor(width * kUnitsPerEm / units)));
}

}  // namespace

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
    m_width += m_advances.back();
    m_widest = std::max(m_widest, m_advances.back());
    if (character >= kFirstBeyondAscii) {  // accents may reach beyond the lines of the face
      const Extent extent = ExtentOf(font.GlyphOutline(m_glyphs.back()));
      m_ascent = std::max(m_ascent, extent.top);
      m_descent = std::max(m_descent, extent.bottom);
    }
  });
}

int TextLine::Ascent(int size) const {
  return static_cast<int>(std::ceil(m_ascent * size / kUnitsPerEm));
}

int TextLine::Descent(int size) const {
  return static_cast<int>(std::ceil(m_descent * size / kUnitsPerEm));
}

int TextLine::LargestSize(double width, int wanted) const {
  return LargestSizeOf(m_width, width, wanted);
}

int TextLine::LargestCellSize(double width, int wanted) const {
  return LargestSizeOf(m_widest, width, wanted);
}

PlacedText TextLine::SetAt(double x, double baseLine, int size) const {
  PlacedText placed;
  placed.size = size;
  placed.glyphs.reserve(m_glyphs.size());
  double pen = x;
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
