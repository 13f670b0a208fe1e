#include "pdf417/pdf417_encoder.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <utility>

#include "base/number_format.h"
#include "pdf417/pdf417_compaction.h"
#include "pdf417/pdf417_error_correction.h"
#include "pdf417/pdf417_segments.h"
#include "pdf417/pdf417_tables.h"

namespace barcode {
namespace {

constexpr std::size_t kMaxTextLength = 5420;
constexpr int kPadCodeword = 900;

constexpr const char* kEmptyText = "Text cannot be null.";
constexpr const char* kTooBig = "The text is too big.";
constexpr const char* kInvalidSize = "Invalid codeword size.";

struct Field {
  const char* label;
  std::int64_t value;
};

void AppendFields(std::string& out, std::initializer_list<Field> fields) {
  for (const Field& field : fields) {
    out += field.label;
    AppendInt(out, field.value);
  }
}

const char* NameOf(PDF417SizeKind kind) {
  switch (kind) {
    case PDF417SizeKind::kAuto:
      return "AUTO";
    case PDF417SizeKind::kColumns:
      return "COLUMNS";
    case PDF417SizeKind::kRows:
      return "ROWS";
    case PDF417SizeKind::kColumnsAndRows:
      return "COLUMNS_AND_ROWS";
  }
  return "UNKNOWN";
}

void AppendProperties(std::string& out, const PDF417Options& options) {
  out += "C++ props: Encoding=" + options.stringEncoding + ", SizeKind=" + NameOf(options.sizeKind);
  AppendFields(out, {{", CodeColumns=", options.codeColumns}, {", CodeRows=", options.codeRows}});
  out += options.useAutoErrorLevel ? ", UseAutoErrorLevel=True" : ", UseAutoErrorLevel=False";
  AppendFields(out, {{", ErrorLevel(now)=", options.errorLevel}});
  out += ", AspectRatio=";
  AppendGeneral(out, options.aspectRatio, 12);
  AppendFields(out, {{", YHeight=", options.yHeight}});
  out += '\n';
}

void AppendCodewords(std::string& out, std::span<const int> codewords) {
  AppendFields(out, {{"C++ codewords len=", std::ssize(codewords)}});
  const char* separator = ": [";
  for (const int codeword : codewords) {
    out += separator;
    AppendInt(out, codeword);
    separator = ",";
  }
  out += "]\n";
}

struct RowIndicators {
  int left = 0;
  int right = 0;
};

// Three rows together tell the reader the number of rows, the error level and the number of columns.
RowIndicators IndicatorsOf(int row, const PDF417Layout& layout) {
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
    const auto& cluster = kPDF417Clusters[static_cast<std::size_t>(m_row % 3)];
    Pattern(cluster[static_cast<std::size_t>(codeword)], kModulesPerCodeword);
  }

  void Blank() { m_x += kModulesPerCodeword; }

  static constexpr int kModulesPerCodeword = 17;

 private:
  ModuleMatrix& m_modules;
  int m_row;
  int m_x = 0;
};

// The codewords of one row of the grid.
void WriteData(RowWriter& writer, int row, const PDF417Layout& layout, std::span<const int> codewords,
               std::string& diagnostics) {
  const std::int64_t length = std::ssize(codewords);
  for (int column = 0; column < layout.columns; ++column) {
    const int index = row * layout.columns + column;
    if (index >= length) {
      AppendFields(diagnostics, {{"[C++] codePtr overflow: row=", row},
                                 {" col=", column},
                                 {" codePtr=", index},
                                 {" lenCodewords=", length}});
      diagnostics += '\n';
      writer.Blank();
      continue;
    }
    const int codeword = codewords[static_cast<std::size_t>(index)];
    if (codeword < 0 || codeword >= kPDF417CodewordValues) {
      AppendFields(diagnostics, {{"[C++] BAD codeword: row=", row},
                                 {" col=", column},
                                 {" codePtr=", index},
                                 {" cw=", codeword},
                                 {" (clusterSize=", kPDF417CodewordValues},
                                 {" lenCodewords=", length}});
      diagnostics += ")\n";
      writer.Blank();
      continue;
    }
    writer.Codeword(codeword);
  }
}

}  // namespace

ModuleMatrix BuildPDF417Modules(std::span<const int> codewords, const PDF417Layout& layout,
                                std::string& diagnostics) {
  ModuleMatrix modules(17 * layout.columns + 69, layout.rows);
  for (int row = 0; row < layout.rows; ++row) {
    AppendFields(diagnostics, {{"[C++] row=", row},
                               {" startCp=", std::int64_t{row} * layout.columns},
                               {" codeColumns=", layout.columns},
                               {" lenCodewords=", std::ssize(codewords)}});
    diagnostics += '\n';
    const RowIndicators indicators = IndicatorsOf(row, layout);
    RowWriter writer(modules, row);
    writer.Pattern(kPDF417StartPattern, kPDF417StartModules);
    writer.Codeword(indicators.left);
    WriteData(writer, row, layout, codewords, diagnostics);
    writer.Codeword(indicators.right);
    writer.Pattern(kPDF417StopPattern, kPDF417StopModules);
  }
  return modules;
}

void PDF417Encoder::Encode(std::string_view text) {
  Begin();
  if (text.empty()) {
    Refuse<std::runtime_error>(kEmptyText);
  }
  if (text.size() > kMaxTextLength) {
    Refuse<std::out_of_range>(kTooBig);
  }
  const std::vector<int> data = CompactPDF417(text, SegmentPDF417(text));
  if (data.size() + 1 > static_cast<std::size_t>(kPDF417MaxDataCodewords)) {
    Refuse<std::out_of_range>(kTooBig);
  }
  m_codewords.assign(1, 0);
  m_codewords.insert(m_codewords.end(), data.begin(), data.end());
  LayOut();
}

void PDF417Encoder::EncodeRaw(std::span<const int> codewords) {
  Begin();
  if (codewords.empty() || codewords.size() > static_cast<std::size_t>(kPDF417MaxDataCodewords) ||
      std::cmp_not_equal(codewords.front(), codewords.size())) {
    Refuse<std::invalid_argument>(kInvalidSize);
  }
  m_codewords.assign(codewords.begin(), codewords.end());
  LayOut();
}

void PDF417Encoder::Begin() {
  m_layout = {};
  m_codewords.clear();
  m_modules = {};
  m_diagnostics.clear();
  AppendProperties(m_diagnostics, m_options);
}

// Grid, padding, length descriptor, error correction and modules of the data codewords.
void PDF417Encoder::LayOut() {
  m_layout = LayoutPDF417(static_cast<int>(m_codewords.size()), m_options);
  m_codewords.resize(static_cast<std::size_t>(m_layout.DataLength()), kPadCodeword);
  m_codewords.front() = m_layout.DataLength();
  const std::vector<int> check = PDF417ErrorCorrection(m_codewords, m_layout.errorLevel);
  m_codewords.insert(m_codewords.end(), check.begin(), check.end());
  AppendCodewords(m_diagnostics, m_codewords);
  m_modules = BuildPDF417Modules(m_codewords, m_layout, m_diagnostics);
}

template <class Error>
void PDF417Encoder::Refuse(const char* message) {
  m_diagnostics += message;
  m_diagnostics += '\n';
  throw Error(message);
}

}  // namespace barcode
