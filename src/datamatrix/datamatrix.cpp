#include "datamatrix/datamatrix.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <limits>

#include "base/encoder_lines.h"
#include "base/keywords.h"
#include "base/number_format.h"
#include "core/diagnostics.h"
#include "datamatrix/datamatrix_encoder.h"

namespace barcode {
namespace {

struct DrawnSize {
  std::uint32_t width;
  std::uint32_t height;
};

// In floating point, as it is defined: where the product is not exact it may come out a pixel above the box.
DrawnSize SizeOf(const ModuleMatrix& matrix, const ModuleSize& module) {
  const auto rounded = [](double size) {
    constexpr double kMax = std::numeric_limits<std::uint32_t>::max();
    return static_cast<std::uint32_t>(std::min(std::ceil(size), kMax));
  };
  return {rounded(matrix.Columns() * module.width), rounded(matrix.Rows() * module.height)};
}

void PrintSizes(const ModuleMatrix& matrix, const ModuleSize& module, const DrawnSize& drawn) {
  std::string lines = "  パターンサイズ: ";
  AppendInt(lines, matrix.Columns());
  lines += "列 x ";
  AppendInt(lines, matrix.Rows());
  lines += "行\n  モジュールサイズ: ";
  AppendFixed2(lines, module.width);
  lines += "\n  実際の描画サイズ: ";
  AppendInt(lines, drawn.width);
  lines += " x ";
  AppendInt(lines, drawn.height);
  PrintLine(lines);
}

std::string DumpHeader(const ModuleMatrix& matrix) {
  std::string header = "【Debug: DataMatrixのビットパターン出力 ";
  AppendInt(header, matrix.Columns());
  header += "列x";
  AppendInt(header, matrix.Rows());
  header += "行】";
  return header;
}

}  // namespace

void DataMatrix::SetCodeSize(std::string_view keyword) {
  m_options.size = FindKeyword(datamatrix::kSizeKeywords, keyword);
}

void DataMatrix::SetEncodeScheme(std::string_view keyword) {
  m_options.scheme = FindKeyword(datamatrix::kSchemeKeywords, keyword);
}

bool DataMatrix::DrawMatrix(const std::string& text, int x, int y, std::uint32_t width,
                            std::uint32_t height) {
  return Reported(kTag, [&] {
    return IsSvgOutput() ? DrawSvgDocument(text, width, height) : DrawRaster(text, x, y, width, height);
  });
}

bool DataMatrix::DrawRaster(const std::string& text, int x, int y, std::uint32_t width,
                            std::uint32_t height) {
  auto target = PrepareTarget(x, y, width, height, Progress::kPrinted);
  if (!target) {
    return false;
  }
  const ModuleMatrix matrix = Encode(text);
  if (!matrix.Empty()) {
    const ModuleSize module =
        SquareModules(target->width, target->height, matrix.Columns(), matrix.Rows(), m_fitWidth);
    PrintSizes(matrix, module, SizeOf(matrix, module));
    PrintModules(DumpHeader(matrix), matrix);
    FillTarget(*target);
    PaintModules(*target, matrix, module, m_pxAdjustBlack);
  }
  FinishTarget(*target);
  PrintLine("--- DataMatrix::Draw 終了 (成功) ---");
  return true;
}

bool DataMatrix::DrawSvgDocument(const std::string& text, std::uint32_t width, std::uint32_t height) {
  const ModuleMatrix matrix = Encode(text);
  const DrawnSize drawn =
      SizeOf(matrix, SquareModules(width, height, matrix.Columns(), matrix.Rows(), m_fitWidth));
  WriteSvg(drawn.width, drawn.height, matrix,
           DividedGrid(drawn.width, drawn.height, matrix.Columns(), matrix.Rows()),
           {.adjust = static_cast<double>(m_pxAdjustBlack), .skip = SkipModules::kNone});
  return true;
}

ModuleMatrix DataMatrix::Encode(const std::string& text) const {
  EncoderLines lines;
  try {
    ModuleMatrix matrix = datamatrix::EncodeDataMatrix(text, m_options, lines);
    Print(lines.Text());
    return matrix;
  } catch (const std::exception&) {
    Print(lines.Text());
    throw;
  }
}

}  // namespace barcode
