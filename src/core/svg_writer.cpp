#include "core/svg_writer.h"

#include <algorithm>
#include <array>

#include "base/line.h"

namespace barcode {
namespace {

// Bytes of a rectangle in a picture of ordinary size.
constexpr std::size_t kElementSize = 96;

// What stands before the four numbers of a rectangle.
constexpr std::string_view kRectX = "  <rect x=\"";
constexpr std::string_view kRectY = "\" y=\"";
constexpr std::string_view kRectWidth = "\" width=\"";
constexpr std::string_view kRectHeight = "\" height=\"";
constexpr std::size_t kLongestRect =
    kRectX.size() + kRectY.size() + kRectWidth.size() + kRectHeight.size() + 4 * kLongestFixed2;

char* WriteNumber(char* out, std::string_view before, double value) {
  return WriteFixed2(std::copy(before.begin(), before.end(), out), value);
}

}  // namespace

std::string ColorToRgb(const Colour& colour) {
  return Line("rgb(", colour.r, ',', colour.g, ',', colour.b, ')');
}

void SvgWriter::BeginSvg(std::uint32_t width, std::uint32_t height) {
  m_document.clear();
  AppendPieces(m_document, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n",
               "<svg xmlns=\"http://www.w3.org/2000/svg\" version=\"1.1\" width=\"", width, "\" height=\"",
               height, "\" viewBox=\"0 0 ", width, ' ', height, "\">\n");
}

void SvgWriter::Reserve(std::size_t elements) {
  m_document.reserve(m_document.size() + elements * kElementSize);
}

std::string_view SvgWriter::RectEnd(const Colour& colour) {
  if (m_rectEnd.empty() || colour != m_rectColour) {
    m_rectColour = colour;
    m_rectEnd = Line("\" fill=\"", ColorToRgb(colour));
    if (colour.a < 255) {
      AppendPieces(m_rectEnd, "\" fill-opacity=\"", Fixed2{colour.a / 255.0});
    }
    m_rectEnd += "\"/>\n";
  }
  return m_rectEnd;
}

void SvgWriter::SvgRect(double x, double y, double width, double height, const Colour& colour) {
  // One append for a rectangle: they are most of every document.
  std::array<char, kLongestRect> buffer;
  char* end = WriteNumber(buffer.data(), kRectX, x);
  end = WriteNumber(end, kRectY, y);
  end = WriteNumber(end, kRectWidth, width);
  end = WriteNumber(end, kRectHeight, height);
  m_document.append(buffer.data(), end).append(RectEnd(colour));
}

void SvgWriter::SvgText(double x, double y, std::string_view text, int fontSize, const Colour& colour,
                        std::string_view anchor) {
  AppendPieces(m_document, "  <text x=\"", Fixed2{x}, "\" y=\"", Fixed2{y},
               "\" font-family=\"Arial, sans-serif\" font-size=\"", fontSize, "\" fill=\"",
               ColorToRgb(colour), "\" text-anchor=\"", anchor, "\" dominant-baseline=\"hanging\">", text,
               "</text>\n");
}

void SvgWriter::EndSvg() {
  m_document += "</svg>\n";
}

}  // namespace barcode
