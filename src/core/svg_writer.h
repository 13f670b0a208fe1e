#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/colour.h"

namespace barcode {

// Builds one SVG 1.1 document in a growing buffer. Coordinates are pixels, written with two decimals whatever
// the locale; sizes of the document and of the font are integers.
class SvgWriter {
 public:
  // Empties the buffer and opens a document of width x height.
  void BeginSvg(std::uint32_t width, std::uint32_t height);

  // Makes room for about so many more elements, for documents whose size is known beforehand.
  void Reserve(std::size_t elements);

  // A filled rectangle; an alpha below 255 becomes a fill-opacity.
  void SvgRect(double x, double y, double width, double height, const Colour& colour);

  // A text element whose top is at y. anchor: "start" or "middle". The text is written as it is: nothing is
  // escaped, and the colour's alpha is not written.
  void SvgText(double x, double y, std::string_view text, int fontSize, const Colour& colour,
               std::string_view anchor);

  void EndSvg();

  const std::string& Document() const { return m_document; }

 private:
  // What follows the height of a rectangle of this colour.
  std::string_view RectEnd(const Colour& colour);

  std::string m_document;
  Colour m_rectColour;
  std::string m_rectEnd;  // of m_rectColour; empty before the first rectangle
};

// "rgb(r,g,b)".
std::string ColorToRgb(const Colour& colour);

}  // namespace barcode
