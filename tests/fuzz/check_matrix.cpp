#include <bitset>
#include <span>
#include <string>
#include <vector>

#include "base/reed_solomon.h"
#include "datamatrix/codeword_decoder.h"
#include "datamatrix/codeword_encoder.h"
#include "datamatrix/datamatrix_encoder.h"
#include "datamatrix/error_correction.h"
#include "datamatrix/symbol_sizes.h"
#include "fuzz/checks.h"
#include "fuzz/require.h"
#include "pdf417/codeword_decoder.h"
#include "pdf417/encoder.h"
#include "pdf417/limits.h"
#include "qr/qr_encoder.h"
#include "qr/qr_reference.h"

namespace barcode::fuzz {
namespace {

// Stretches of the characters that the schemes and modes pack best, and of any bytes.
std::string MixedText(ByteReader& reader) {
  constexpr std::array<std::string_view, 10> kAlphabets = {"0123456789",
                                                           "ABCDEFGHIJKLMNOPQRSTUVWXYZ 0123456789",
                                                           "abcdefghijklmnopqrstuvwxyz 0123456789",
                                                           "\r*> AB12",
                                                           "AZ09!@#$%^*()-+[]",
                                                           "aA1! \x80\xE9\xC9",
                                                           "Aa",
                                                           "A\xE9\xC9",
                                                           "ABCabc019&\r\t,:#-.$/+%*=^;<>@[\\]_`~!\n\"|(?{}'",
                                                           "\x80\xFF\xA0"};
  std::string text;
  while (!reader.Empty() && text.size() < 600) {
    const std::size_t kind = reader.Byte();
    std::string run = reader.Bytes(kind % 8 == 0 ? 100 : 12);
    if (kind % 16 == 15) {
      run = std::string(std::size_t{reader.Byte()}, static_cast<char>(reader.Byte()));
    } else if (kind % 4 != 3) {
      run = InAlphabet(std::move(run), kAlphabets[kind / 16 % kAlphabets.size()]);
    }
    text += run;
  }
  return text;
}

// ---- QR ----

// The codewords of a symbol. The order of the modules, which takes the time, is kept for each version.
std::vector<std::uint8_t> QrCodewords(const QrSymbol& symbol) {
  static std::array<std::vector<std::pair<int, int>>, kQrMaxVersion + 1> orders;
  auto& order = orders[static_cast<std::size_t>(symbol.version)];
  if (order.empty()) {
    order = qr_reference::DataOrder(symbol.version);
  }
  std::vector<std::uint8_t> codewords(order.size() / 8);
  for (std::size_t i = 0; i < codewords.size() * 8; ++i) {
    const auto [x, y] = order[i];
    const bool bit = symbol.matrix.At(x, y) != qr_reference::Inverts(symbol.mask, x, y);
    codewords[i / 8] = static_cast<std::uint8_t>(codewords[i / 8] << 1 | (bit ? 1 : 0));
  }
  return codewords;
}

// The data codewords, after a check of the error correction, block by block: the longer blocks stand last.
std::vector<std::uint8_t> QrData(const QrSymbol& symbol) {
  const std::vector<std::uint8_t> codewords = QrCodewords(symbol);
  const QrBlocks layout = QrBlocksOf(symbol.level, symbol.version);
  const auto blocks = static_cast<std::size_t>(layout.blocks);
  const auto total = static_cast<std::size_t>(QrDataCodewords(symbol.level, symbol.version));
  const std::size_t shortLength = total / blocks;
  const std::size_t shortBlocks = blocks - total % blocks;
  std::vector<std::uint8_t> data;
  for (std::size_t block = 0; block < blocks; ++block) {
    std::vector<std::uint8_t> message;
    for (std::size_t i = 0; i < shortLength; ++i) {
      message.push_back(codewords[i * blocks + block]);
    }
    if (block >= shortBlocks) {
      message.push_back(codewords[shortLength * blocks + block - shortBlocks]);
    }
    data.insert(data.end(), message.begin(), message.end());
    for (std::size_t i = 0; i < static_cast<std::size_t>(layout.ecPerBlock); ++i) {
      message.push_back(codewords[total + i * blocks + block]);
    }
    using Field = GaloisField256<0x11D>;
    for (std::size_t root = 0; root < static_cast<std::size_t>(layout.ecPerBlock); ++root) {
      std::uint8_t value = 0;
      for (const std::uint8_t codeword : message) {
        value = Field::Multiply(value, Field::kTables.antilog[root]) ^ codeword;
      }
      Require(value == 0, "a QR block is a multiple of the generator");
    }
  }
  return data;
}

class BitStream {
 public:
  explicit BitStream(std::span<const std::uint8_t> bytes) : m_bytes(bytes) {}

  unsigned Next(int count) {
    unsigned value = 0;
    for (int i = 0; i < count; ++i, ++m_bit) {
      Require(m_bit / 8 < m_bytes.size(), "bits do not run out");
      value = value * 2 + (m_bytes[m_bit / 8] >> (7 - m_bit % 8) & 1U);
    }
    return value;
  }

 private:
  std::span<const std::uint8_t> m_bytes;
  std::size_t m_bit = 0;
};

std::string DecodeQr(const QrSymbol& symbol, QrMode mode) {
  const std::vector<std::uint8_t> data = QrData(symbol);
  BitStream bits(data);
  Require(bits.Next(4) == (mode == QrMode::kNumeric ? 1U : 4U), "a QR segment begins with its mode");
  const bool isNumeric = mode == QrMode::kNumeric;
  const int version = symbol.version;
  const unsigned count = bits.Next(isNumeric      ? (version < 10   ? 10
                                                     : version < 27 ? 12
                                                                    : 14)
                                   : version < 10 ? 8
                                                  : 16);
  std::string text;
  while (text.size() < count) {
    if (!isNumeric) {
      text += static_cast<char>(bits.Next(8));
      continue;
    }
    const unsigned digits = std::min(3U, count - static_cast<unsigned>(text.size()));
    const std::string number = std::to_string(bits.Next(static_cast<int>(3 * digits + 1)));
    Require(number.size() <= digits, "a group holds its digits");
    text += std::string(digits - number.size(), '0') + number;
  }
  return text;
}

// ---- Data Matrix ----

using datamatrix::Scheme;

std::string DecodeDataMatrix(std::vector<std::uint8_t> codewords, std::optional<std::size_t> place) {
  datamatrix::PadCodewords(codewords,
                           *datamatrix::FindSize(datamatrix::AdmittedSizes(place), codewords.size()));
  const auto text = Accepted([&] { return datamatrix::DecodeCodewords(codewords); });
  Require(text.has_value(), "Data Matrix decodes");
  return *text;
}

void RequireDataMatrixSymbol(std::string_view text, const datamatrix::Options& options,
                             std::size_t codewords) {
  EncoderLines lines;
  const ModuleMatrix symbol = datamatrix::EncodeDataMatrix(text, options, lines);
  const datamatrix::SymbolSize& size =
      *datamatrix::FindSize(datamatrix::AdmittedSizes(options.size), codewords);
  Require(symbol.Rows() == size.rows && symbol.Columns() == size.columns,
          "a symbol has the size of its codewords");
  for (int x = 0; x < symbol.Columns(); ++x) {
    Require(symbol.At(x, symbol.Rows() - 1), "the lower edge is dark");
    Require(symbol.At(x, 0) == (x % 2 == 0), "the upper edge is a clock");
  }
}

}  // namespace

void CheckQr(ByteReader& reader) {
  QrOptions options;
  options.level = reader.Of(qr_reference::kLevels);
  options.mode = reader.OneIn(3) ? QrMode::kNumeric : QrMode::kByte;
  options.minVersion =
      reader.OneIn(32) ? static_cast<int>(reader.Below(41)) : static_cast<int>(reader.Below(8));
  std::string text = reader.OneIn(16) ? MixedText(reader) : reader.Bytes(80);
  if (options.mode == QrMode::kNumeric) {
    if (reader.OneIn(8)) {
      (void)EncodeQr(text, options);
      return;
    }
    text = InAlphabet(std::move(text), kDigits);
  }
  const QrSymbol symbol = EncodeQr(text, options);
  Require(symbol.matrix.Empty() == text.empty(), "an empty text has no symbol");
  if (text.empty()) {
    return;
  }
  Require(symbol.version >= options.minVersion && symbol.version >= 1 && symbol.level == options.level,
          "a symbol has the version and the level that were asked for");
  Require(symbol.matrix.Columns() == QrSize(symbol.version) && symbol.matrix.Rows() == QrSize(symbol.version),
          "a symbol has the size of its version");
  Require(DecodeQr(symbol, options.mode) == text, "QR reads back");
}

void CheckDataMatrix(ByteReader& reader) {
  std::optional<std::size_t> place;
  if (const std::size_t choice = reader.Below(64); choice < datamatrix::kSymbolSizes.size()) {
    place = choice;
  }
  // One of the schemes for most texts, all for some.
  const std::size_t chosen = reader.Byte();
  const bool triesAll = chosen >= 224;
  const bool drawsSymbol = chosen % 4 == 3;
  const std::string text = MixedText(reader);
  EncoderLines lines;
  const auto automatic = datamatrix::EncodeCodewords(text, {std::nullopt, place}, lines);
  if (!automatic.empty()) {
    Require(DecodeDataMatrix(automatic, place) == text, "Data Matrix reads back with schemes in turn");
  }
  if (!automatic.empty() && drawsSymbol) {
    RequireDataMatrixSymbol(text, {std::nullopt, place}, automatic.size());
  }
  for (std::size_t i = 0; i < datamatrix::kSchemes.size(); ++i) {
    if (!triesAll && i != chosen % datamatrix::kSchemes.size()) {
      continue;
    }
    const auto fixed = datamatrix::EncodeCodewords(text, {datamatrix::kSchemes[i], place}, lines);
    if (fixed.empty()) {
      continue;
    }
    Require(DecodeDataMatrix(fixed, place) == text, "Data Matrix reads back in one scheme");
    Require(!automatic.empty() && automatic.size() <= fixed.size(),
            "AUTO is never longer than a scheme alone");
  }
  Require(automatic.empty() || !text.empty(), "an empty text is refused");
  Require(!automatic.empty() || text.empty() || place || text.size() > 770,
          "a short text has a square that holds it");
}

void CheckPdf417(ByteReader& reader) {
  constexpr std::array kRatios = {0.5, 0.5, 0.001, 0.01, 0.1, 1.0, 4.0, 1000.0};
  const pdf417::Options options{
      .codeColumns = 0,
      .codeRows = 0,
      .errorLevel = 2,
      .aspectRatio = reader.OneIn(16) ? reader.Any<double>() : reader.Of(kRatios),
      .yHeight = reader.OneIn(16) ? reader.Any<int>() : static_cast<int>(reader.Below(12))};
  const bool readsModules = reader.OneIn(8);
  const std::string text = MixedText(reader);
  EncoderLines lines;
  const auto symbol = Accepted([&] { return pdf417::Encode(text, options, lines); });
  Require(symbol.has_value() || text.empty() || text.size() > 900, "a text that fits is encoded");
  if (!symbol) {
    return;
  }
  const std::span<const int> all = symbol->codewords;
  const pdf417::Layout& layout = symbol->layout;
  Require(layout.columns >= 1 && layout.columns <= pdf417::kMaxColumns && layout.rows >= pdf417::kMinRows &&
              layout.rows <= pdf417::kMaxRows && layout.errorLevel >= 0 &&
              layout.errorLevel <= pdf417::kMaxErrorLevel,
          "the grid is one of the standard");
  Require(all.size() == static_cast<std::size_t>(layout.Total()) && layout.Total() <= pdf417::kMaxCodewords,
          "the codewords fill the grid");
  Require(test::DecodePDF417Codewords(all.first(static_cast<std::size_t>(layout.DataLength()))) == text,
          "PDF417 reads back");
  if (readsModules) {
    Require(test::HasZeroSyndromes(all, pdf417::ErrorCodewords(layout.errorLevel)),
            "the codewords are a multiple of the generator");
    const auto read = test::ReadPDF417Modules(symbol->modules);
    Require(read && read->codewords == symbol->codewords && read->rows == layout.rows &&
                read->columns == layout.columns && read->errorLevel == layout.errorLevel,
            "the modules hold the codewords");
  }
}

}  // namespace barcode::fuzz
