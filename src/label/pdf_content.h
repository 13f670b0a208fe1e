#pragma once

#include <set>
#include <string>

#include "base/colour.h"
#include "label/drawing.h"

namespace barcode::label {

inline constexpr double kPointsPerInch = 72;

// In points from the lower left corner of the page, y upwards, as all of a PDF.
struct PdfPoint {
  double x = 0;
  double y = 0;
};

// What is painted on a page of a PDF. All functions throw std::bad_alloc.
class PdfContent {
 public:
  // The drawing with its upper left corner here.
  void Paint(const Drawing& drawing, const PdfPoint& corner, double pointsPerDot);

  // A black line around a rectangle, half of it inside.
  void Frame(const PdfPoint& lowerLeft, double width, double height, double lineWidth);

  const std::string& Operators() const { return m_operators; }
  // The dictionary of what the operators name.
  std::string Resources() const;

 private:
  void SetFill(const Colour& colour);
  void FillBars(const Drawing& drawing);
  void FillText(const PlacedText& text);

  std::string m_operators;
  std::set<unsigned> m_alphas;  // of translucent colours
};

}  // namespace barcode::label
