#include "qr/qr_encoder.h"

#include <algorithm>
#include <array>
#include <span>
#include <stdexcept>
#include <utility>
#include <vector>

#include "base/reed_solomon.h"
#include "qr/qr_mask.h"
#include "qr/qr_tables.h"
#include "qr/qr_template.h"

namespace barcode {
namespace {

constexpr unsigned kField = 0x11D;  // x^8 + x^4 + x^3 + x^2 + 1
constexpr int kByteBits = 8;
constexpr int kTerminatorBits = 4;
// What one, two and three digits take.
constexpr std::array<std::uint8_t, 4> kDigitGroupBits = {0, 4, 7, 10};

constexpr const char* kTooLong =
    "Data too long for QR Code. Data requires more capacity than Version 40 can provide. "
    "Reduce data length or use a lower error correction level.";

using Codewords = std::vector<std::uint8_t>;

// Bits, most significant first, in codewords.
class BitWriter {
 public:
  explicit BitWriter(int codewords) { m_codewords.reserve(static_cast<std::size_t>(codewords)); }

  void Append(unsigned value, int bits) {
    m_pending = m_pending << bits | (value & ((1U << bits) - 1U));
    m_pendingBits += bits;
    while (m_pendingBits >= kByteBits) {
      m_pendingBits -= kByteBits;
      m_codewords.push_back(static_cast<std::uint8_t>(m_pending >> m_pendingBits));
    }
  }

  int Size() const { return static_cast<int>(m_codewords.size()) * kByteBits + m_pendingBits; }

  // Completes the last codeword with zeros.
  Codewords Take() {
    if (m_pendingBits > 0) {
      Append(0, kByteBits - m_pendingBits);
    }
    return std::move(m_codewords);
  }

 private:
  Codewords m_codewords;
  std::uint32_t m_pending = 0;
  int m_pendingBits = 0;
};

// A group keeps the low bits of its value, which only digits are sure to fit.
void AppendDigits(BitWriter& bits, std::string_view text) {
  for (std::size_t begin = 0; begin < text.size(); begin += 3) {
    const std::string_view group = text.substr(begin, 3);
    unsigned value = 0;
    for (const char c : group) {
      value = value * 10 + (static_cast<unsigned char>(c) - unsigned{'0'});
    }
    bits.Append(value, kDigitGroupBits[group.size()]);
  }
}

void AppendBytes(BitWriter& bits, std::string_view text) {
  for (const char c : text) {
    bits.Append(static_cast<unsigned char>(c), kByteBits);
  }
}

std::size_t TextBits(QrMode mode, std::size_t length) {
  if (mode == QrMode::kNumeric) {
    return length / 3 * kDigitGroupBits[3] + kDigitGroupBits[length % 3];
  }
  return length * kByteBits;
}

// The first version that holds so many characters.
int VersionFor(std::size_t length, QrMode mode, QrLevel level) {
  const std::size_t textBits = TextBits(mode, length);
  for (int version = 1; version <= kQrMaxVersion; ++version) {
    const int room = QrCapacityBits(level, version) - kQrModeBits - QrCountBits(mode, version);
    if (textBits <= static_cast<std::size_t>(room)) {
      return version;
    }
  }
  throw std::runtime_error(kTooLong);
}

Codewords DataCodewords(std::string_view text, QrMode mode, QrLevel level, int version) {
  const int capacity = QrDataCodewords(level, version);
  BitWriter bits(capacity);
  bits.Append(QrModeIndicator(mode), kQrModeBits);
  bits.Append(static_cast<unsigned>(text.size()), QrCountBits(mode, version));
  if (mode == QrMode::kNumeric) {
    AppendDigits(bits, text);
  } else {
    AppendBytes(bits, text);
  }
  bits.Append(0, std::min(kTerminatorBits, capacity * kByteBits - bits.Size()));

  Codewords codewords = bits.Take();
  const auto length = static_cast<std::size_t>(capacity);
  for (std::uint8_t pad = 0b11101100; codewords.size() < length; pad ^= 0b11101100 ^ 0b00010001) {
    codewords.push_back(pad);
  }
  return codewords;
}

// Splits the data into blocks, the shorter ones first, and interleaves them: the first codeword of every
// block, the second of every block, and so on; then the error-correction codewords likewise.
Codewords WithErrorCorrection(const Codewords& data, QrLevel level, int version) {
  const QrBlocks layout = QrBlocksOf(level, version);
  const auto blocks = static_cast<std::size_t>(layout.blocks);
  const auto ecLength = static_cast<std::size_t>(layout.ecPerBlock);
  const std::size_t shortLength = data.size() / blocks;
  const std::size_t shortBlocks = blocks - data.size() % blocks;
  const ReedSolomonDivider<kField> divider(GeneratorPolynomial<kField>(ecLength, 0));

  Codewords codewords(static_cast<std::size_t>(QrTotalCodewords(version)));
  Codewords ec(ecLength);
  std::span<const std::uint8_t> rest(data);
  for (std::size_t block = 0; block < blocks; ++block) {
    const std::size_t length = shortLength + (block < shortBlocks ? 0 : 1);
    const auto blockData = rest.first(length);
    rest = rest.subspan(length);
    for (std::size_t i = 0; i < shortLength; ++i) {
      codewords[i * blocks + block] = blockData[i];
    }
    if (length > shortLength) {
      codewords[shortLength * blocks + block - shortBlocks] = blockData[shortLength];
    }
    divider.Remainder(blockData, ec);
    for (std::size_t i = 0; i < ecLength; ++i) {
      codewords[data.size() + i * blocks + block] = ec[i];
    }
  }
  return codewords;
}

// All modules under all masks, the data still light.
MaskCells MaskedTemplate(const QrTemplate& symbol) {
  MaskCells cells(symbol.Size());
  for (int x = 0; x < symbol.Size(); ++x) {
    const auto markers = symbol.Column(x);
    const auto conditions = MaskConditions(x);
    std::uint8_t* const column = cells.Column(x);
    for (std::size_t y = 0; y < markers.size(); ++y) {
      const std::uint8_t function =
          markers[y] == QrTemplate::kFunctionDark ? MaskCells::kDark : MaskCells::kLight;
      column[y] = markers[y] < QrTemplate::kFunction ? conditions[y] : function;
    }
  }
  return cells;
}

ModuleMatrix ModulesUnderMask(const MaskCells& cells, int mask) {
  ModuleMatrix matrix(cells.Size(), cells.Size());
  for (int x = 0; x < cells.Size(); ++x) {
    const std::uint8_t* const column = cells.Column(x);
    const auto modules = matrix.Column(x);
    for (std::size_t y = 0; y < modules.size(); ++y) {
      modules[y] = static_cast<std::uint8_t>(column[y] >> mask & 1);
    }
  }
  return matrix;
}

// Puts every module under all eight masks, chooses the mask and keeps its modules. The areas of format and
// version information still count as light then.
void Place(const Codewords& codewords, QrSymbol& symbol) {
  const QrTemplate functions(symbol.version);
  MaskCells cells = MaskedTemplate(functions);
  const auto positions = functions.DataPositions();
  // The remainder bits after the last codeword are zeros.
  std::uint8_t* const first = cells.Column(0);
  for (std::size_t i = 0; i < codewords.size(); ++i) {
    for (std::size_t bit = 0; bit < 8; ++bit) {
      const bool dark = (codewords[i] >> (7 - bit) & 1U) != 0;
      first[positions[8 * i + bit]] ^= dark ? MaskCells::kDark : MaskCells::kLight;
    }
  }
  symbol.mask = BestMask(MaskPenalties(cells, static_cast<int>(positions.size())));
  symbol.matrix = ModulesUnderMask(cells, symbol.mask);
}

// Puts every bit on its two places.
template <class PlacesOfBit>
void WriteInformation(ModuleMatrix& matrix, std::uint32_t information, int length, PlacesOfBit places) {
  for (int bit = 0; bit < length; ++bit) {
    for (const auto [x, y] : places(matrix.Columns(), bit)) {
      matrix.Set(x, y, (information >> bit & 1U) != 0);
    }
  }
}

}  // namespace

QrSymbol EncodeQr(std::string_view text, const QrOptions& options) {
  if (options.minVersion > kQrMaxVersion) {
    throw std::invalid_argument("QR Code has no version above 40");
  }
  QrSymbol symbol{.matrix = {}, .level = options.level};
  if (text.empty()) {
    return symbol;
  }
  const int version = std::max(VersionFor(text.size(), options.mode, options.level), options.minVersion);
  symbol.version = version;
  const Codewords data = DataCodewords(text, options.mode, options.level, version);
  Place(WithErrorCorrection(data, options.level, version), symbol);
  WriteInformation(symbol.matrix, QrFormatBits(options.level, symbol.mask), kQrFormatLength, QrFormatModules);
  if (QrHasVersionInformation(version)) {
    WriteInformation(symbol.matrix, QrVersionBits(version), kQrVersionLength, QrVersionModules);
  }
  return symbol;
}

}  // namespace barcode
