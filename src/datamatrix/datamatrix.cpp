#include "datamatrix/datamatrix.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <exception>
#include <limits>

#include "core/diagnostics.h"
#include "datamatrix/symbol_encoder.h"

namespace barcode {
namespace {

// In the order of the size indices.
constexpr std::array<std::string_view, kSymbolSizes> kSizeKeywords = {
    "10x10",   "12x12",   "14x14",   "16x16",   "18x18", "20x20", "22x22", "24x24", "26x26", "32x32",
    "36x36",   "40x40",   "44x44",   "48x48",   "52x52", "64x64", "72x72", "80x80", "88x88", "96x96",
    "104x104", "120x120", "132x132", "144x144", "8x18",  "8x32",  "12x26", "12x36", "16x36", "16x48"};

// In the order of EncodationScheme.
constexpr std::array<std::string_view, kEncodationSchemes> kSchemeKeywords = {"ASCII", "C40",     "TEXT",
                                                                              "X12",   "EDIFACT", "BASE256"};

// The keyword's place in the list, or the option that stands for any other text.
template <std::size_t Size>
int OptionOf(std::string_view keyword, const std::array<std::string_view, Size>& keywords, int otherwise) {
  const auto* const found = std::find(keywords.begin(), keywords.end(), keyword);
  return found == keywords.end() ? otherwise : static_cast<int>(found - keywords.begin());
}

// In floating point, as it is defined: where the product is not exact it may come out a pixel above the box.
std::uint32_t DrawnLength(int modules, double module) {
  constexpr double kMax = std::numeric_limits<std::uint32_t>::max();
  return static_cast<std::uint32_t>(std::min(std::ceil(modules * module), kMax));
}

}  // namespace

void DataMatrix::SetCodeSize(std::string_view keyword) {
  m_sizeOption = OptionOf(keyword, kSizeKeywords, kAutomaticSquareSize);
}

void DataMatrix::SetEncodeScheme(std::string_view keyword) {
  m_schemeOption = OptionOf(keyword, kSchemeKeywords, kAutomaticScheme);
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

ModuleMatrix DataMatrix::Encode(const std::string& text) const {
  EncoderMessages messages;
  const auto print = [&messages] {
    for (const std::string_view message : messages) {
      Print(message);
    }
  };
  try {
    ModuleMatrix matrix = EncodeDataMatrix(text, m_schemeOption, m_sizeOption, messages);
    print();
    return matrix;
  } catch (const std::exception&) {
    print();
    throw;
  }
}

}  // namespace barcode
