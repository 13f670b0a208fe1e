#include "qr/qr_encoder.h"

#include <algorithm>
#include <array>
#include <span>
#include <stdexcept>
#include <utility>

#include "base/reed_solomon.h"
#include "qr/qr_mask.h"
#include "qr/qr_tables.h"
#include "qr/qr_template.h"

namespace barcode {
namespace {

constexpr unsigned kField = 0x11D;  // x^8 + x^4 + x^3 + x^2 + 1
constexpr int kLevelM = 1;
constexpr int kModeNumeric = 1;
constexpr int kModeAlphanumeric = 2;
constexpr int kModeByte = 4;
// Byte mode encodes what is not numeric, whatever the letter of the mode.
constexpr unsigned kByteModeIndicator = 0b0100;
constexpr unsigned kNumericModeIndicator = 0b0001;
constexpr unsigned kModeBits = 4;
constexpr std::size_t kTerminatorBits = 4;
constexpr int kFirstVersionWithInformation = 7;

constexpr const char* kTooLong =
    "Data too long for QR Code. Data requires more capacity than Version 40 can provide. "
    "Reduce data length or use a lower error correction level.";

// Bits, most significant first, in codewords.
class BitWriter {
 public:
  explicit BitWriter(std::size_t codewords) { m_codewords.reserve(codewords); }

  void Append(unsigned value, unsigned bits) {
    m_pending = m_pending << bits | (value & ((1U << bits) - 1U));
    m_pendingBits += bits;
    while (m_pendingBits >= 8) {
      m_pendingBits -= 8;
      m_codewords.push_back(static_cast<std::uint8_t>(m_pending >> m_pendingBits));
    }
  }

  std::size_t Size() const { return m_codewords.size() * 8 + m_pendingBits; }

  // Completes the last codeword with zeros.
  std::vector<std::uint8_t> Take() {
    if (m_pendingBits > 0) {
      Append(0, 8 - m_pendingBits);
    }
    return std::move(m_codewords);
  }

 private:
  std::vector<std::uint8_t> m_codewords;
  std::uint32_t m_pending = 0;
  unsigned m_pendingBits = 0;
};

// Characters are not checked: each counts as its code minus that of "0", and a group keeps its low bits.
void AppendDigits(BitWriter& bits, std::string_view text) {
  constexpr std::array<unsigned, 4> kGroupBits = {0, 4, 7, 10};
  for (std::size_t begin = 0; begin < text.size(); begin += 3) {
    const std::string_view group = text.substr(begin, 3);
    unsigned value = 0;
    for (const char c : group) {
      value = value * 10 + (static_cast<unsigned char>(c) - unsigned{'0'});
    }
    bits.Append(value, kGroupBits[group.size()]);
  }
}

int ModeIndicatorOf(std::string_view mode) {
  if (mode == "N") {
    return kModeNumeric;
  }
  return mode == "A" ? kModeAlphanumeric : kModeByte;
}

QREncoder::DataBits CountDataBits(std::size_t length) {
  constexpr std::array<std::size_t, 3> kNumericRest = {0, 4, 7};
  return {.numeric = length / 3 * 10 + kNumericRest[length % 3],
          .alphanumeric = length / 2 * 11 + length % 2 * 6,
          .byte = length * 8};
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

}  // namespace

QREncoder::QREncoder(std::string_view mode, std::uint32_t version, std::uint32_t level)
    : m_modeIndicator(ModeIndicatorOf(mode)),
      m_requestedVersion(version <= kQrMaxVersion ? static_cast<int>(version) : 0),
      m_level(level < kQrLevels ? static_cast<int>(level) : kLevelM) {}

void QREncoder::Encode(std::string_view text) {
  m_matrix = ModuleMatrix();
  m_dataBits = CountDataBits(text.size());
  if (text.empty()) {
    return;
  }
  // A version too small for the text is replaced without a word.
  m_version = std::max(ChooseVersion(), m_requestedVersion);
  Place(WithErrorCorrection(DataCodewords(text)));
  WriteFormat();
  if (m_version >= kFirstVersionWithInformation) {
    WriteVersion();
  }
}

int QREncoder::CountBits(int version) const {
  if (IsNumeric()) {
    return version < 10 ? 10 : version < 27 ? 12 : 14;
  }
  return version < 10 ? 8 : 16;
}

int QREncoder::ChooseVersion() const {
  for (int version = 1; version <= kQrMaxVersion; ++version) {
    const std::size_t bits = kModeBits + static_cast<std::size_t>(CountBits(version)) + DataFieldBits();
    if (bits <= static_cast<std::size_t>(QrCapacityBits(m_level, version))) {
      return version;
    }
  }
  throw std::runtime_error(kTooLong);
}

QREncoder::Codewords QREncoder::DataCodewords(std::string_view text) const {
  const auto capacity = static_cast<std::size_t>(QrDataCodewords(m_level, m_version));
  BitWriter bits(capacity);
  bits.Append(IsNumeric() ? kNumericModeIndicator : kByteModeIndicator, kModeBits);
  bits.Append(static_cast<unsigned>(text.size()), static_cast<unsigned>(CountBits(m_version)));
  if (IsNumeric()) {
    AppendDigits(bits, text);
  } else {
    for (const char c : text) {
      bits.Append(static_cast<unsigned char>(c), 8);
    }
  }
  bits.Append(0, static_cast<unsigned>(std::min(kTerminatorBits, capacity * 8 - bits.Size())));

  Codewords codewords = bits.Take();
  for (std::uint8_t pad = 0b11101100; codewords.size() < capacity; pad ^= 0b11101100 ^ 0b00010001) {
    codewords.push_back(pad);
  }
  return codewords;
}

// Splits the data into blocks, the shorter ones first, and interleaves them: the first codeword of every
// block, the second of every block, and so on; then the error-correction codewords likewise.
QREncoder::Codewords QREncoder::WithErrorCorrection(const Codewords& data) const {
  const QrBlocks layout = QrBlocksOf(m_level, m_version);
  const auto blocks = static_cast<std::size_t>(layout.blocks);
  const auto ecLength = static_cast<std::size_t>(layout.ecPerBlock);
  const std::size_t shortLength = data.size() / blocks;
  const std::size_t shortBlocks = blocks - data.size() % blocks;
  const ReedSolomonDivider<kField> divider(GeneratorPolynomial<kField>(ecLength, 0));

  Codewords codewords(static_cast<std::size_t>(QrTotalCodewords(m_version)));
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

// Puts every module under all eight masks, chooses the mask and keeps its modules. The areas of format and
// version information still count as light then.
void QREncoder::Place(const Codewords& codewords) {
  const QrTemplate symbol(m_version);
  MaskCells cells = MaskedTemplate(symbol);
  const auto positions = symbol.DataPositions();
  // The remainder bits after the last codeword are zeros.
  std::uint8_t* const first = cells.Column(0);
  for (std::size_t i = 0; i < codewords.size(); ++i) {
    for (std::size_t bit = 0; bit < 8; ++bit) {
      const bool dark = (codewords[i] >> (7 - bit) & 1U) != 0;
      first[positions[8 * i + bit]] ^= dark ? MaskCells::kDark : MaskCells::kLight;
    }
  }
  m_mask = BestMask(MaskPenalties(cells, static_cast<int>(positions.size())));
  m_matrix = ModulesUnderMask(cells, m_mask);
}

void QREncoder::WriteFormat() {
  const auto pastTiming = [](int i) { return i < 6 ? i : i + 1; };
  const std::uint32_t format = QrFormatBits(m_level, m_mask);
  const int size = m_matrix.Columns();
  for (int i = 0; i < 15; ++i) {
    const bool dark = (format >> (14 - i) & 1U) != 0;
    // Around the upper left finder: row 8 to the right, then column 8 upwards.
    if (i < 8) {
      m_matrix.Set(pastTiming(i), 8, dark);
    } else {
      m_matrix.Set(8, pastTiming(14 - i), dark);
    }
    // From the lower left corner upwards, then towards the upper right corner.
    if (i < 7) {
      m_matrix.Set(8, size - 1 - i, dark);
    } else {
      m_matrix.Set(size - 15 + i, 8, dark);
    }
  }
}

void QREncoder::WriteVersion() {
  const std::uint32_t version = QrVersionBits(m_version);
  const int size = m_matrix.Columns();
  for (int k = 0; k < 18; ++k) {
    const bool dark = (version >> k & 1U) != 0;
    m_matrix.Set(size - 11 + k % 3, k / 3, dark);
    m_matrix.Set(k / 3, size - 11 + k % 3, dark);
  }
}

}  // namespace barcode
