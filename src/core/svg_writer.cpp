#include "core/svg_writer.h"

#include "base/number_format.h"

namespace barcode {
namespace {

void AppendRgb(std::string& out, const Colour& colour) {
  out += "rgb(";
  AppendInt(out, colour.r);
  out += ',';
  AppendInt(out, colour.g);
  out += ',';
  AppendInt(out, colour.b);
  out += ')';
}

}  // namespace

std::string ColorToRgb(const Colour& colour) {
  std::string out;
  AppendRgb(out, colour);
  return out;
}

void SvgWriter::Begin(std::uint32_t width, std::uint32_t height) {
  m_document.clear();
  m_document += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  m_document += "<svg xmlns=\"http://www.w3.org/2000/svg\" version=\"1.1\" width=\"";
  AppendInt(m_document, width);
  m_document += "\" height=\"";
  AppendInt(m_document, height);
  m_document += "\" viewBox=\"0 0 ";
  AppendInt(m_document, width);
  m_document += ' ';
  AppendInt(m_document, height);
  m_document += "\">\n";
}

void SvgWriter::Rect(double x, double y, double width, double height, const Colour& colour) {
  m_document += "  <rect x=\"";
  AppendFixed2(m_document, x);
  m_document += "\" y=\"";
  AppendFixed2(m_document, y);
  m_document += "\" width=\"";
  AppendFixed2(m_document, width);
  m_document += "\" height=\"";
  AppendFixed2(m_document, height);
  m_document += "\" fill=\"";
  AppendRgb(m_document, colour);
  if (colour.a < 255) {
    m_document += "\" fill-opacity=\"";
    AppendFixed2(m_document, colour.a / 255.0);
  }
  m_document += "\"/>\n";
}

void SvgWriter::Text(double x, double y, std::string_view text, int fontSize, const Colour& colour,
                     std::string_view anchor) {
  m_document += "  <text x=\"";
  AppendFixed2(m_document, x);
  m_document += "\" y=\"";
  AppendFixed2(m_document, y);
  m_document += "\" font-family=\"Arial, sans-serif\" font-size=\"";
  AppendInt(m_document, fontSize);
  m_document += "\" fill=\"";
  AppendRgb(m_document, colour);
  m_document += "\" text-anchor=\"";
  m_document += anchor;
  m_document += "\" dominant-baseline=\"hanging\">";
  m_document += text;
  m_document += "</text>\n";
}

void SvgWriter::End() {
  m_document += "</svg>\n";
}

}  // namespace barcode
