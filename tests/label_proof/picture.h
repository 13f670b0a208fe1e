#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "support/image.h"

namespace barcode::test {

// Pictures as readers get them: on white paper where they are transparent, as luminance. An empty image is
// what could not be read.
GreyImage GreyOfPng(std::string_view png);

// As librsvg renders it, at one pixel a unit. margin: pixels around the picture that show what stands
// outside of it.
GreyImage GreyOfSvg(const std::string& svg, int width, int height, int margin = 0);

// As poppler renders each, all in one run of its program; width and height in pixels.
struct PdfPage {
  std::string pdf;
  int width = 0;
  int height = 0;
};
std::vector<GreyImage> GreyOfPdfs(const std::vector<PdfPage>& pages);

// All pages of one PDF, at so many pixels an inch.
std::vector<GreyImage> GreyOfPages(const std::string& pdf, int dpi);

// What poppler says of a PDF, a line for each of its sizes, page by page: "Pages: 2", "Page 1 size: 595 x
// 842 pts". "" when it does not like it.
std::string PdfInfo(const std::string& pdf);

struct Millimetres {
  double width = 0;
  double height = 0;
};

// The page of a PDF, from its MediaBox.
Millimetres PageOfPdf(std::string_view pdf);

// Each pixel `scale` times.
GreyImage Enlarged(const GreyImage& image, int scale);

// Turned by so many quarters clockwise.
GreyImage Turned(const GreyImage& image, int quarters);

// True for pixels darker than half-way between the darkest and the lightest of the picture.
class DarkPixels {
 public:
  explicit DarkPixels(const GreyImage& image);

  int Width() const { return m_width; }
  int Height() const { return m_height; }
  bool At(int x, int y) const {
    return m_dark[static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width) +
                  static_cast<std::size_t>(x)];
  }
  // Lengths of the runs of a row, the first one light.
  std::vector<int> Runs(int y) const;
  bool SameRows(int y, int otherY) const;
  // Whether any pixel of x < right, y < bottom is dark, from left and top on.
  bool AnyIn(int left, int top, int right, int bottom) const;

 private:
  int m_width;
  int m_height;
  std::vector<bool> m_dark;
};

}  // namespace barcode::test
