#include "label/text_setting.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "base/utf8.h"

namespace barcode::label {
namespace {

constexpr char32_t kFirstBeyondAscii = 0x80;

// The largest whole size, up to `wanted`, at which so many units are at most `width` dots wide.
int LargestSizeOf(double units, double width, int wanted) {
  if (units * wanted <= width * kUnitsPerEm) {
    return wanted;
  }
  return static_cast<int>(std::max(0.0, std::floor(width * kUnitsPerEm / units)));
}

}  // namespace

TextLine::TextLine(const Font& font, std::string_view text)
    : m_text(text), m_ascent(font.Ascent()), m_descent(font.Descent()) {
  m_letters.reserve(text.size());
  VisitUtf8(text, [&](char32_t character) {
    const std::optional<int> found = font.FindGlyph(character);
    if (!found && m_missing.size() < kMissingToldOf && m_missing.find(character) == std::u32string::npos) {
      m_missing += character;
    }
    const int glyph = found.value_or(kPlaceholderGlyph);
    const double advance = font.Advance(glyph);
    m_letters.push_back({glyph, advance});
    // Accents may reach beyond the lines of the face, and marks that follow no letter beyond the line's ends.
    const bool isBeyondAscii = character >= kFirstBeyondAscii;
    if (isBeyondAscii || m_width == 0) {
      const GlyphReach ink = font.Reach(glyph);
      IncludeInk(ink, m_width);
      m_ascent = isBeyondAscii ? std::max<double>(m_ascent, ink.top) : m_ascent;
      m_descent = isBeyondAscii ? std::max<double>(m_descent, ink.bottom) : m_descent;
    }
    m_width += advance;
    m_widest = std::max(m_widest, advance);
  });
  IncludeEnd(font);
}

void TextLine::IncludeInk(const GlyphReach& ink, double pen) {
  m_inkLeft = std::min(m_inkLeft, pen + ink.left);
  m_inkRight = std::max(m_inkRight, pen + ink.right);
}

// The last character that takes room, which others may stand on.
void TextLine::IncludeEnd(const Font& font) {
  const auto last = std::find_if(m_letters.rbegin(), m_letters.rend(),
                                 [](const Letter& letter) { return letter.advance > 0; });
  if (last != m_letters.rend()) {
    IncludeInk(font.Reach(last->glyph), m_width - last->advance);
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
  placed.glyphs.reserve(m_letters.size());
  double pen = x - m_inkLeft * size / kUnitsPerEm;
  for (const Letter& letter : m_letters) {
    placed.glyphs.push_back({letter.glyph, Quartered(pen), baseLine});
    pen += letter.advance * size / kUnitsPerEm;
  }
  return placed;
}

}  // namespace barcode::label
