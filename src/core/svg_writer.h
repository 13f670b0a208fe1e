#pragma once

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
  void Begin(std::uint32_t width, std::uint32_t height);

  // A filled rectangle; an alpha below 255 becomes a fill-opacity.
  void Rect(double x, double y, double width, double height, const Colour& colour);

  // A text element whose top is at y. anchor: "start", "middle" or "end". The text is written as it is:
  // nothing is escaped, and the colour's alpha is not written.
  void Text(double x, double y, std::string_view text, int fontSize, const Colour& colour,
            std::string_view anchor);

  void End();

  const std::string& Document() const { return m_document; }

 private:
  std::string m_document;
};

// "rgb(r,g,b)".
std::string ColorToRgb(const Colour& colour);

}  // namespace barcode
