#include "datamatrix/datamatrix.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <exception>
#include <limits>

#include "base/number_format.h"
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
  m_sizeOption = OptionOf(keyword, kSizeKeywords, kAutomaticSquareSize);
}

void DataMatrix::SetEncodeScheme(std::string_view keyword) {
  m_schemeOption = OptionOf(keyword, kSchemeKeywords, kAutomaticScheme);
}

bool DataMatrix::DrawMatrix(const std::string& text, int x, int y, std::uint32_t width,
                            std::uint32_t height) {
  return Reported(kTag, [&] {
    try {
      return IsSvgOutput() ? DrawSvgDocument(text, width, height) : DrawRaster(text, x, y, width, height);
    } catch (const std::exception& error) {
      m_lastError = std::string(kTag) + error.what();
      throw;
    }
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
