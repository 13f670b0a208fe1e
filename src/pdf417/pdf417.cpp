#include "pdf417/pdf417.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "pdf417/encoder.h"
#include "pdf417/limits.h"

namespace barcode {
namespace {

// In SVG every module overlaps its neighbours by half a pixel, which closes hairline gaps.
constexpr ModuleRule kSvgRule = {.adjust = 0.5, .skip = SkipModules::kNone};
constexpr ModuleRule kRasterRule = {.adjust = 0, .skip = SkipModules::kEmptyRect};

// The width that gives the symbol its natural proportion at this height.
std::uint32_t ProportionalWidth(const ModuleMatrix& modules, std::uint32_t height, int rowHeight) {
  const double width = std::round(static_cast<double>(modules.Columns()) * height /
                                  (static_cast<double>(rowHeight) * modules.Rows()));
  constexpr double kMax = std::numeric_limits<std::uint32_t>::max();
  return static_cast<std::uint32_t>(std::min(width, kMax));
}

}  // namespace

void PDF417::SetCodeColumns(std::int32_t columns) {
  if (columns >= 0 && columns <= pdf417::kMaxColumns) {
    m_options.codeColumns = columns;
  }
}

void PDF417::SetCodeRows(std::int32_t rows) {
  if (rows >= 0 && rows <= pdf417::kMaxRows) {
    m_options.codeRows = rows;
  }
}

void PDF417::SetAspectRatio(double ratio) {
  if (ratio >= pdf417::kMinAspectRatio && ratio <= pdf417::kMaxAspectRatio) {
    m_options.aspectRatio = ratio;
  }
}

void PDF417::SetYHeight(std::int32_t height) {
  if (height > 0) {
    m_options.yHeight = height;
  }
}

ModuleMatrix PDF417::Encode(const std::string& text, EncoderLines& lines) const {
  pdf417::AddProperties(m_options, m_stringEncoding, lines);
  return pdf417::Encode(text, m_options, lines).modules;
}

Box PDF417::DrawnBox(const ModuleMatrix& matrix, const Box& box) const {
  Box drawn = box;
  if (box.width == box.height) {
    drawn.width = ProportionalWidth(matrix, box.height, m_options.RowHeight());
  }
  return drawn;
}

MatrixDrawing PDF417::Layout(const ModuleMatrix& matrix, std::uint32_t width, std::uint32_t height,
                             PixelGrid grid) const {
  return LayoutStretched(matrix, width, height, m_fitWidth, grid,
                         grid == PixelGrid::kWhole ? kRasterRule : kSvgRule);
}

}  // namespace barcode
