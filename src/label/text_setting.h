#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/numeric.h"
#include "label/drawing.h"
#include "label/font.h"

// Lines of human-readable text as glyphs of the embedded font.
namespace barcode::label {

// The smallest size that a text is set in; one that does not fit then is left out.
inline constexpr int kSmallestTextSize = 6;

// How many characters without a glyph are told of, at most.
inline constexpr std::size_t kMissingToldOf = 8;

// One line in the order of its characters, left to right, without kerning and ligatures. Sizes and positions
// are in dots; sizes are whole.
class TextLine {
 public:
  // text: UTF-8, which stays where it is. Characters that the font lacks become placeholders.
  TextLine(const Font& font, std::string_view text);

  std::string_view Text() const { return m_text; }
  bool Empty() const { return m_letters.empty(); }
  std::size_t Length() const { return m_letters.size(); }
  // The first characters without a glyph, each once, in their order.
  const std::u32string& Missing() const { return m_missing; }

  // Ink that leans out at the ends is part of the line.
  double Width(double size) const { return InkWidth() * size / kUnitsPerEm; }
  double WidestAdvance(double size) const { return m_widest * size / kUnitsPerEm; }
  // Whole dots above and below the base line that hold every character.
  int Ascent(int size) const;
  int Descent(int size) const;
  // The largest whole size at which the line is at most so wide; no more than `wanted`.
  int LargestSize(double width, int wanted) const;
  // The same for each character by itself in a cell.
  int LargestCellSize(double width, int wanted) const;

  // The line in one piece with the left end of its width at x, or one character around each centre.
  PlacedText SetAt(double x, double baseLine, int size) const;
  // Calls centreOf(i) for the centre of each.
  template <class CentreOf>
  PlacedText SetAround(CentreOf centreOf, double baseLine, int size) const;

 private:
  struct Letter {
    int glyph = 0;
    double advance = 0;  // units
  };

  // Positions are quarters of a dot: finer ones cannot be seen, and take more bytes to write.
  static double Quartered(double position) { return static_cast<double>(RoundToInt64(position * 4.0)) / 4.0; }

  void IncludeInk(const GlyphReach& ink, double pen);
  void IncludeEnd(const Font& font);
  double InkWidth() const { return m_inkRight - m_inkLeft; }

  std::string_view m_text;
  std::vector<Letter> m_letters;
  std::u32string m_missing;
  double m_width = 0;     // of the advances
  double m_inkLeft = 0;   // 0, or less where ink leans out
  double m_inkRight = 0;  // m_width, or more
  double m_widest = 0;
  double m_ascent = 0;
  double m_descent = 0;
};

template <class CentreOf>
PlacedText TextLine::SetAround(CentreOf centreOf, double baseLine, int size) const {
  PlacedText placed;
  placed.size = size;
  placed.glyphs.reserve(m_letters.size());
  for (std::size_t i = 0; i < m_letters.size(); ++i) {
    const double half = m_letters[i].advance * size / kUnitsPerEm / 2.0;
    placed.glyphs.push_back({m_letters[i].glyph, Quartered(centreOf(i) - half), baseLine});
  }
  return placed;
}

}  // namespace barcode::label
