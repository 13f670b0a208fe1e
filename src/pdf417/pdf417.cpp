#include "pdf417/pdf417.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "base/encoder_lines.h"
#include "core/diagnostics.h"
#include "pdf417/encoder.h"
#include "pdf417/limits.h"

namespace barcode {
namespace {

// In SVG every module overlaps its neighbours by half a pixel, which closes hairline gaps.
constexpr ModuleRule kSvgRule = {.adjust = 0.5, .skip = SkipModules::kNone};
constexpr std::int32_t kNoAdjustment = 0;

// Encodes and prints what the encoder has to say, also when it refuses the text.
ModuleMatrix EncodeAndReport(std::string_view text, const pdf417::Options& options,
                             std::string_view stringEncoding) {
  EncoderLines lines;
  pdf417::AddProperties(options, stringEncoding, lines);
  pdf417::Symbol symbol;
  try {
    symbol = pdf417::Encode(text, options, lines);
  } catch (...) {
    Print(lines.Text());
    throw;
  }
  Print(lines.Text());
  return std::move(symbol.modules);
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

bool PDF417::DrawMatrix(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) {
  return Reported(kTag, [&] {
    const ModuleMatrix modules = EncodeAndReport(text, m_options, m_stringEncoding);
    const std::uint32_t drawnWidth =
        width == height ? ProportionalWidth(modules, height, m_options.RowHeight()) : width;
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
