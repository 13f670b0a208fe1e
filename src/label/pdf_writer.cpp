#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

#include "base/line.h"
#include "label/error.h"
#include "label/pdf_content.h"
#include "label/pdf_file.h"
#include "label/writers.h"

namespace barcode::label {
namespace {

constexpr int kDefaultDpi = 96;
constexpr double kLeastPoints = 3;
constexpr double kMostPoints = 14'400;

double PointsPerDot(const Drawing& drawing) {
  return kPointsPerInch / drawing.dpi.value_or(kDefaultDpi);
}

void RequirePageSize(const Drawing& drawing) {
  const double scale = PointsPerDot(drawing);
  if (std::max(drawing.width, drawing.height) * scale > kMostPoints) {
    throw LabelError(
        ErrorCode::kTooLarge, "format",
        "A PDF page ends at 200 inches a side: choose png or svg, a higher dpi or a smaller label.");
  }
  if (std::min(drawing.width, drawing.height) * scale < kLeastPoints) {
    const int dots = static_cast<int>(std::ceil(kLeastPoints / scale));
    throw LabelError(ErrorCode::kTooSmall, "format",
                     Line("A PDF page has at least 1/24 inch a side, here ", dots,
                          " dots: choose png or svg, a lower dpi or a larger label."),
                     Size{std::max(drawing.width, dots), std::max(drawing.height, dots)});
  }
}

}  // namespace

std::string WritePdf(const Drawing& drawing) {
  RequirePageSize(drawing);
  const double pointsPerDot = PointsPerDot(drawing);
  const double width = drawing.width * pointsPerDot;
  const double height = drawing.height * pointsPerDot;
  PdfContent content;
  content.Paint(drawing, {.x = 0, .y = height}, pointsPerDot);
  std::string bytes;
  PdfFile file([&bytes](std::string_view more) { bytes += more; }, drawing.title);
  file.AddPage(width, height, content);
  file.Finish();
  return bytes;
}

}  // namespace barcode::label
