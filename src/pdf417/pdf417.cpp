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
constexpr std::int32_t kNoAdjustment = 0;

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

bool PDF417::DrawMatrix(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) {
  return Reported(kTag, [&] {
    const PDF417Options options = EncoderOptions();
    PDF417Encoder encoder(options);
    EncodeAndReport(encoder, text);
    const ModuleMatrix& modules = encoder.Modules();
    if (modules.Empty()) {
      return false;
    }
    const std::uint32_t drawnWidth =
        width == height ? ProportionalWidth(modules, height, options.RowHeight()) : width;
    if (!IsSvgOutput()) {
      return DrawRaster(modules, x, y, drawnWidth, height);
    }
    DrawSvgDocument(modules, drawnWidth, height);
    return true;
  });
}

bool PDF417::DrawRaster(const ModuleMatrix& modules, int x, int y, std::uint32_t width,
                        std::uint32_t height) {
  auto target = PrepareTarget(x, y, width, height, Progress::kSilent);
  if (!target) {
    return false;
  }
  FillTarget(*target);
  PaintModules(*target, modules,
               StretchedModules(target->width, target->height, modules.Columns(), modules.Rows(), m_fitWidth),
               kNoAdjustment);
  FinishTarget(*target);
  return true;
}

void PDF417::DrawSvgDocument(const ModuleMatrix& modules, std::uint32_t width, std::uint32_t height) {
  const ModuleSize module = StretchedModules(width, height, modules.Columns(), modules.Rows(), m_fitWidth);
  WriteSvg(width, height, modules, ExactGrid(module, modules.Columns(), modules.Rows()), kSvgRule);
}

}  // namespace barcode
