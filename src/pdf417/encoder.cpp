#include "pdf417/encoder.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>
#include <stdexcept>
#include <string>

#include "pdf417/compaction.h"
#include "pdf417/error_correction.h"
#include "pdf417/segments.h"
#include "pdf417/tables.h"

namespace barcode::pdf417 {
namespace {

constexpr std::size_t kMaxTextLength = 5420;
constexpr int kPadCodeword = 900;
constexpr int kPropertyPrecision = 12;

constexpr const char* kEmptyText = "Text cannot be null.";
constexpr const char* kTooBig = "The text is too big.";

template <class Error>
[[noreturn]] void Refuse(const char* message, EncoderLines& lines) {
  lines.Add(message);
  throw Error(message);
}

// The length descriptor, not yet filled in, and the compacted text.
std::vector<int> DataCodewords(std::string_view text, EncoderLines& lines) {
  if (text.empty()) {
    Refuse<std::runtime_error>(kEmptyText, lines);
  }
  if (text.size() > kMaxTextLength) {
    Refuse<std::out_of_range>(kTooBig, lines);
  }
  std::vector<int> codewords = Compact(text, DivideIntoSegments(text));
  codewords.insert(codewords.begin(), 0);
  if (codewords.size() > static_cast<std::size_t>(kMaxDataCodewords)) {
    Refuse<std::out_of_range>(kTooBig, lines);
  }
  return codewords;
}

// Pads the data to the length of the layout, states that length and appends the error correction.
void Complete(std::vector<int>& codewords, const Layout& layout) {
  codewords.resize(static_cast<std::size_t>(layout.DataLength()), kPadCodeword);
  codewords.front() = layout.DataLength();
  const std::vector<int> check = ErrorCorrection(codewords, layout.errorLevel);
  codewords.insert(codewords.end(), check.begin(), check.end());
}

void AddCodewords(std::span<const int> codewords, EncoderLines& lines) {
  std::string list;
  for (const int codeword : codewords) {
    AppendPieces(list, list.empty() ? "" : ",", codeword);
  }
  lines.Add("C++ codewords len=", codewords.size(), ": [", list, ']');
}

struct RowIndicators {
  int left = 0;
  int right = 0;
};

// Three rows together tell the reader the number of rows, the error level and the number of columns.
RowIndicators IndicatorsOf(int row, const Layout& layout) {
  const int base = 30 * (row / 3);
  const int rows = base + (layout.rows - 1) / 3;
  const int level = base + 3 * layout.errorLevel + (layout.rows - 1) % 3;
  const int columns = base + layout.columns - 1;
  switch (row % 3) {
    case 0:
      return {rows, columns};
    case 1:
      return {level, rows};
    default:
      return {columns, level};
  }
}

// Writes symbol characters into the matrix, row by row, from left to right.
class RowWriter {
 public:
  RowWriter(ModuleMatrix& modules, int row) : m_modules(modules), m_row(row) {}

  void Pattern(std::uint32_t pattern, int length) {
    for (int bit = length - 1; bit >= 0; --bit) {
      m_modules.Set(m_x++, m_row, ((pattern >> static_cast<unsigned>(bit)) & 1U) != 0);
    }
  }

  void Codeword(int codeword) {
    const auto& cluster = kClusters[static_cast<std::size_t>(m_row % 3)];
    Pattern(cluster[static_cast<std::size_t>(codeword)], kModulesPerCodeword);
  }

 private:
  ModuleMatrix& m_modules;
  int m_row;
  int m_x = 0;
};

// The codewords fill the layout.
ModuleMatrix BuildModules(std::span<const int> codewords, const Layout& layout, EncoderLines& lines) {
  // Beside the codewords stand two row indicators and the start and stop patterns.
  constexpr int kFrame = kStartModules + 2 * kModulesPerCodeword + kStopModules;
  ModuleMatrix modules(kModulesPerCodeword * layout.columns + kFrame, layout.rows);
  const auto columns = static_cast<std::size_t>(layout.columns);
  for (int row = 0; row < layout.rows; ++row) {
    const std::size_t start = static_cast<std::size_t>(row) * columns;
    lines.Add("[C++] row=", row, " startCp=", start, " codeColumns=", columns,
              " lenCodewords=", codewords.size());
    const RowIndicators indicators = IndicatorsOf(row, layout);
    RowWriter writer(modules, row);
    writer.Pattern(kStartPattern, kStartModules);
    writer.Codeword(indicators.left);
    for (const int codeword : codewords.subspan(start, columns)) {
      writer.Codeword(codeword);
    }
    writer.Codeword(indicators.right);
    writer.Pattern(kStopPattern, kStopModules);
  }
  return modules;
}

}  // namespace

void AddProperties(const Options& options, std::string_view stringEncoding, EncoderLines& lines) {
  // No host can select another kind of size or a fixed error level.
  lines.Add("C++ props: Encoding=", stringEncoding, ", SizeKind=AUTO, CodeColumns=", options.codeColumns,
            ", CodeRows=", options.codeRows, ", UseAutoErrorLevel=True, ErrorLevel(now)=", options.errorLevel,
            ", AspectRatio=", General{options.aspectRatio, kPropertyPrecision},
            ", YHeight=", options.yHeight);
}

Symbol Encode(std::string_view text, const Options& options, EncoderLines& lines) {
  Symbol symbol;
  symbol.codewords = DataCodewords(text, lines);
  symbol.layout = ChooseLayout(static_cast<int>(symbol.codewords.size()), options);
  Complete(symbol.codewords, symbol.layout);
  AddCodewords(symbol.codewords, lines);
  symbol.modules = BuildModules(symbol.codewords, symbol.layout, lines);
  return symbol;
}

}  // namespace barcode::pdf417
