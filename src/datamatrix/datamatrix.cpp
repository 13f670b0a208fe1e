#include "datamatrix/datamatrix.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/keywords.h"
#include "datamatrix/datamatrix_encoder.h"

namespace barcode {
namespace {

// In floating point, as it is defined: where the product is not exact it may come out a pixel above the box.
std::uint32_t DrawnLength(int modules, double module) {
  constexpr double kMax = std::numeric_limits<std::uint32_t>::max();
  return static_cast<std::uint32_t>(std::min(std::ceil(modules * module), kMax));
}

}  // namespace

void DataMatrix::SetCodeSize(std::string_view keyword) {
  m_options.size = FindKeyword(datamatrix::kSizeKeywords, keyword);
}

void DataMatrix::SetEncodeScheme(std::string_view keyword) {
  m_options.scheme = FindKeyword(datamatrix::kSchemeKeywords, keyword);
}

ModuleMatrix DataMatrix::Encode(const std::string& text, EncoderLines& lines) const {
  return datamatrix::EncodeDataMatrix(text, m_options, lines);
}

MatrixDrawing DataMatrix::Layout(const ModuleMatrix& matrix, std::uint32_t width, std::uint32_t height,
                                 PixelGrid grid) const {
  const int columns = matrix.Columns();
  const int rows = matrix.Rows();
  const ModuleSize module = SquareModules(width, height, columns, rows, m_fitWidth);
  MatrixDrawing drawing{.width = DrawnLength(columns, module.width),
                        .height = DrawnLength(rows, module.height),
                        .module = module,
                        .grid = {},
                        .rule = {.adjust = static_cast<double>(m_pxAdjustBlack), .skip = SkipModules::kNone}};
  if (grid == PixelGrid::kWhole) {
    drawing.grid = RoundedGrid(module, columns, rows, 0, 0);
    drawing.rule.skip = SkipModules::kEmptyRect;
  } else {
    drawing.grid = DividedGrid(drawing.width, drawing.height, columns, rows);
  }
  return drawing;
}

void DataMatrix::ReportSymbol(const ModuleMatrix& matrix, const MatrixDrawing& drawing) const {
  PrintLine("  パターンサイズ: ", matrix.Columns(), "列 x ", matrix.Rows(),
            "行\n  モジュールサイズ: ", Fixed2{drawing.module.width}, "\n  実際の描画サイズ: ", drawing.width,
            " x ", drawing.height);
  PrintModules(
      Line("【Debug: DataMatrixのビットパターン出力 ", matrix.Columns(), "列x", matrix.Rows(), "行】"),
      matrix);
}

}  // namespace barcode
