#include "pdf417/pdf417.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/diagnostics.h"
#include "pdf417/pdf417_encoder.h"

namespace barcode {
namespace {

constexpr int kMaxCodeColumns = 30;
constexpr int kMaxCodeRows = 90;

// In SVG every module overlaps its neighbours by half a pixel, which closes hairline gaps.
constexpr ModuleRule kSvgRule = {.adjust = 0.5, .skip = SkipModules::kNone};
constexpr ModuleRule kRasterRule = {.adjust = 0, .skip = SkipModules::kEmptyRect};

// Encodes and prints what the encoder has to say, also when it refuses the text.
void EncodeAndReport(PDF417Encoder& encoder, std::string_view text) {
  try {
    encoder.Encode(text);
  } catch (...) {
    Print(encoder.Diagnostics());
    throw;
  }
  Print(encoder.Diagnostics());
}

// The width that gives the symbol its natural proportion at this height.
std::uint32_t ProportionalWidth(const ModuleMatrix& modules, std::uint32_t height, int rowHeight) {
  const double width = std::round(static_cast<double>(modules.Columns()) * height /
                                  (static_cast<double>(rowHeight) * modules.Rows()));
  constexpr double kMax = std::numeric_limits<std::uint32_t>::max();
  return static_cast<std::uint32_t>(std::min(width, kMax));
}

}  // namespace

void PDF417::SetCodeColumns(std::int32_t columns) {
  if (columns >= 0 && columns <= kMaxCodeColumns) {
    m_codeColumns = columns;
  }
}

void PDF417::SetCodeRows(std::int32_t rows) {
  if (rows >= 0 && rows <= kMaxCodeRows) {
    m_codeRows = rows;
  }
}

void PDF417::SetAspectRatio(double ratio) {
  if (ratio >= kPDF417MinAspectRatio && ratio <= kPDF417MaxAspectRatio) {
    m_aspectRatio = ratio;
  }
}

void PDF417::SetYHeight(std::int32_t height) {
  if (height > 0) {
    m_yHeight = height;
  }
}

PDF417SizeKind PDF417::EncoderSizeKind(SizeKind kind) {
  switch (kind) {
    case SizeKind::kRows:
      return PDF417SizeKind::kColumns;
    case SizeKind::kColumns:
      return PDF417SizeKind::kRows;
    case SizeKind::kColumnsAndRows:
      return PDF417SizeKind::kColumnsAndRows;
    case SizeKind::kAuto:
      break;
  }
  return PDF417SizeKind::kAuto;
}

PDF417Options PDF417::EncoderOptions() const {
  return {.stringEncoding = m_stringEncoding,
          .sizeKind = EncoderSizeKind(m_sizeKind),
          .codeColumns = m_codeColumns,
          .codeRows = m_codeRows,
          .useAutoErrorLevel = m_useAutoErrorLevel,
          .errorLevel = m_errorLevel,
          .aspectRatio = m_aspectRatio,
          .yHeight = m_yHeight};
}

ModuleMatrix PDF417::Encode(const std::string& text) const {
  PDF417Encoder encoder(EncoderOptions());
  EncodeAndReport(encoder, text);
  return encoder.Modules();
}

Box PDF417::DrawnBox(const ModuleMatrix& matrix, const Box& box) const {
  Box drawn = box;
  if (box.width == box.height) {
    drawn.width = ProportionalWidth(matrix, box.height, EncoderOptions().RowHeight());
  }
  return drawn;
}

MatrixDrawing PDF417::Layout(const ModuleMatrix& matrix, std::uint32_t width, std::uint32_t height,
                             PixelGrid grid) const {
  const int columns = matrix.Columns();
  const int rows = matrix.Rows();
  const ModuleSize module = StretchedModules(width, height, columns, rows, m_fitWidth);
  const bool whole = grid == PixelGrid::kWhole;
  return {.width = width,
          .height = height,
          .module = module,
          .grid = whole ? RoundedGrid(module, columns, rows, 0, 0) : ExactGrid(module, columns, rows),
          .rule = whole ? kRasterRule : kSvgRule};
}

}  // namespace barcode
