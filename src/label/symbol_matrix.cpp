#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "base/ascii.h"
#include "base/encoder_lines.h"
#include "base/line.h"
#include "base/utf8.h"
#include "datamatrix/codeword_encoder.h"
#include "datamatrix/datamatrix_encoder.h"
#include "label/symbol_families.h"
#include "pdf417/encoder.h"
#include "qr/qr_encoder.h"
#include "qr/qr_tables.h"
#include "text/input_encoding.h"

namespace barcode::label {
namespace {

Symbol MatrixSymbolOf(ModuleMatrix matrix, int rowHeight, const SymbolText& text) {
  Symbol symbol;
  symbol.modules = MatrixSymbol{std::move(matrix), rowHeight};
  symbol.text = text.Shown();
  return symbol;
}

// ---- Character sets ----

constexpr Keywords<CharacterSet, 3> kCharacterSets = {{{"utf-8", CharacterSet::kUtf8},
                                                       {"shift-jis", CharacterSet::kShiftJis},
                                                       {"shift_jis", CharacterSet::kShiftJis}}};

// The conversion ends at a NUL; the text goes on.
std::string ToShiftJis(std::string_view text) {
  std::string bytes;
  for (;;) {
    const std::size_t end = std::min(text.find('\0'), text.size());
    bytes += ConvertEncoding(text.substr(0, end), CharacterSet::kUtf8, CharacterSet::kShiftJis);
    if (end == text.size()) {
      return bytes;
    }
    bytes += '\0';
    text.remove_prefix(end + 1);
  }
}

[[noreturn]] void RefuseForShiftJis(const SymbolText& text) {
  const std::string_view bytes = text.Bytes();
  std::size_t offset = 0;
  while (offset < bytes.size()) {
    const std::size_t length = FirstUtf8Character(bytes.substr(offset)).length;
    const std::string_view character = bytes.substr(offset, length);
    if (character != "?" && ToShiftJis(character).find('?') != std::string::npos) {
      break;
    }
    offset += length;
  }
  text.Refuse(
      Line("Shift-JIS lacks ", text.CharacterAt(offset), "; replace it or choose string_encoding utf-8."));
}

// The bytes that the symbol holds.
std::string EncodedBytes(const SymbolText& text, const Request& request) {
  const CharacterSet wanted = KeywordOr(kCharacterSets, request.stringEncoding, CharacterSet::kUtf8);
  const std::string_view given = text.Bytes();
  if (text.IsRaw() || wanted == CharacterSet::kUtf8) {
    return std::string(given);
  }
  // "?" stands for a character that is lacking; it is no second byte of another one.
  std::string bytes = ToShiftJis(given);
  if (std::count(bytes.begin(), bytes.end(), '?') != std::count(given.begin(), given.end(), '?')) {
    RefuseForShiftJis(text);
  }
  return bytes;
}

// ---- QR ----

// Characters of the largest symbol.
std::size_t QrCapacity(const QrOptions& options) {
  const int bits =
      QrCapacityBits(options.level, kQrMaxVersion) - kQrModeBits - QrCountBits(options.mode, kQrMaxVersion);
  const auto room = static_cast<std::size_t>(bits);
  if (options.mode == QrMode::kByte) {
    return room / 8;
  }
  // Three digits in ten bits, one in four, two in seven.
  const std::size_t rest = room % 10;
  return room / 10 * 3 + (rest >= 7 ? 2 : rest >= 4 ? 1 : 0);
}

void RequireQrCapacity(const SymbolText& text, std::size_t length, const QrOptions& options) {
  const std::size_t capacity = QrCapacity(options);
  if (length <= capacity) {
    return;
  }
  const std::string_view level = kQrLevelKeywords[static_cast<std::size_t>(options.level)].first;
  text.RefuseLength(Line("At error correction level ", level, " QR Code holds ", capacity,
                         options.mode == QrMode::kByte ? " bytes" : " digits", " and the text has ", length,
                         "; shorten it", options.level == QrLevel::kL ? "." : " or choose a lower level."));
}

// ---- Data Matrix ----

void RequireSchemeCharacters(const SymbolText& text, std::string_view bytes, datamatrix::Scheme scheme) {
  const bool isX12 = scheme == datamatrix::Scheme::kX12;
  if (!isX12 && scheme != datamatrix::Scheme::kEdifact) {
    return;
  }
  const auto isHeld = [isX12](char c) {
    const auto byte = static_cast<std::uint8_t>(c);
    return isX12 ? !datamatrix::TripletValues(datamatrix::Scheme::kX12, byte).empty()
                 : datamatrix::IsEdifactByte(byte);
  };
  const std::string_view rule =
      isX12 ? "The scheme X12 takes A to Z, 0 to 9, the space, the carriage return, * and >"
            : "The scheme EDIFACT takes ASCII characters from the space to \"^\"";
  // Both lack all that is not ASCII, in whatever character set.
  if (!std::all_of(bytes.begin(), bytes.end(), isHeld)) {
    text.RequireCharacters(isHeld, {rule, "choose another encode_scheme"});
  }
}

[[noreturn]] void RefuseDataMatrixLength(const SymbolText& text, std::string_view bytes,
                                         const datamatrix::Options& options) {
  const std::string_view otherScheme = options.scheme ? " or choose encode_scheme AUTO." : ".";
  EncoderLines lines;
  const std::size_t needed =
      options.size
          ? datamatrix::EncodeCodewords(bytes, {.scheme = options.scheme, .size = std::nullopt}, lines).size()
          : 0;
  if (needed == 0) {
    text.RefuseLength(Line(
        "Data Matrix holds ", datamatrix::AdmittedSizes(std::nullopt).back().dataCodewords,
        " codewords, at most 3116 digits or 1556 bytes, and the text takes more; shorten it", otherScheme));
  }
  text.RefuseLength(Line("A symbol of ", datamatrix::kSizeKeywords[*options.size].first, " modules holds ",
                         datamatrix::kSymbolSizes[*options.size].dataCodewords,
                         " codewords and the text takes ", needed, "; shorten it, choose a larger code_size",
                         otherScheme));
}

}  // namespace

Symbol MakeQr(const SymbolText& text, const Request& request) {
  const QrOptions options{.level = KeywordOr(kQrLevelKeywords, request.errorCorrectionLevel, QrLevel::kM),
                          .minVersion = request.qrVersion.value_or(0),
                          .mode = KeywordOr(kQrModeKeywords, request.encodeMode, QrMode::kByte)};
  if (options.mode == QrMode::kNumeric) {
    text.RequireDigits("The mode NUMERIC");
  }
  const std::string bytes = EncodedBytes(text, request);
  RequireQrCapacity(text, bytes.size(), options);
  return MatrixSymbolOf(EncodeQr(bytes, options).matrix, 1, text);
}

Symbol MakeDataMatrix(const SymbolText& text, const Request& request) {
  datamatrix::Options options;
  if (request.encodeScheme) {
    options.scheme = FindKeyword(datamatrix::kSchemeKeywords, *request.encodeScheme);
  }
  if (request.codeSize) {
    options.size = FindKeyword(datamatrix::kSizeKeywords, *request.codeSize);
  }
  const std::string bytes = EncodedBytes(text, request);
  if (options.scheme) {
    RequireSchemeCharacters(text, bytes, *options.scheme);
  }
  try {
    EncoderLines lines;
    return MatrixSymbolOf(datamatrix::EncodeDataMatrix(bytes, options, lines), 1, text);
  } catch (const std::runtime_error&) {
    RefuseDataMatrixLength(text, bytes, options);
  }
}

Symbol MakePdf417(const SymbolText& text, const Request& request) {
  pdf417::Options options;
  options.aspectRatio = request.aspectRatio.value_or(options.aspectRatio);
  options.yHeight = request.yHeight.value_or(options.yHeight);
  const std::string bytes = EncodedBytes(text, request);
  try {
    EncoderLines lines;
    return MatrixSymbolOf(pdf417::Encode(bytes, options, lines).modules, options.RowHeight(), text);
  } catch (const std::out_of_range&) {
    text.RefuseLength(
        "PDF417 holds at most 1108 bytes, 1850 characters of ASCII or 2710 digits, and the text takes more; "
        "shorten it.");
  }
}

}  // namespace barcode::label
