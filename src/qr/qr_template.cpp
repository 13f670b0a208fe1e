#include "qr/qr_template.h"

#include <algorithm>
#include <cstdlib>

#include "qr/qr_tables.h"

namespace barcode {
namespace {

constexpr int kTimingLine = 6;
constexpr int kFormatLine = 8;

}  // namespace

std::array<QrModule, 2> QrFormatModules(int size, int bit) {
  const auto pastTiming = [](int i) { return i < kTimingLine ? i : i + 1; };
  constexpr int kLast = kQrFormatLength - 1;
  // Around the upper left finder: column 8 downwards, then row 8 to the left.
  const QrModule near =
      bit < 7 ? QrModule{kFormatLine, pastTiming(bit)} : QrModule{pastTiming(kLast - bit), kFormatLine};
  // From the upper right corner to the left, then down to the lower left corner.
  const QrModule far =
      bit < 8 ? QrModule{size - 1 - bit, kFormatLine} : QrModule{kFormatLine, size - 1 - (kLast - bit)};
  return {near, far};
}

std::array<QrModule, 2> QrVersionModules(int size, int bit) {
  const int along = bit / 3;
  const int across = size - 11 + bit % 3;
  return {QrModule{across, along}, QrModule{along, across}};
}

QrTemplate::QrTemplate(int version)
    : m_size(QrSize(version)),
      m_cells(static_cast<std::size_t>(m_size) * static_cast<std::size_t>(m_size), kFree) {
  SetTiming();
  SetAlignment(version);
  ReserveFormat();
  if (QrHasVersionInformation(version)) {
    ReserveVersion();
  }
  SetFinders();
}

// Concentric square rings around a dark centre, as far as they lie inside the symbol. Bit r of `lightRings`
// makes the ring of radius r light.
void QrTemplate::SetRings(int x, int y, int radius, int lightRings) {
  const int last = m_size - 1;
  for (int i = std::max(x - radius, 0); i <= std::min(x + radius, last); ++i) {
    for (int j = std::max(y - radius, 0); j <= std::min(y + radius, last); ++j) {
      const int ring = std::max(std::abs(i - x), std::abs(j - y));
      Set(i, j, (lightRings >> ring & 1) == 0);
    }
  }
}

void QrTemplate::SetFinders() {
  constexpr int kRadius = 4;  // separator included
  constexpr int kLightRings = 0b10100;
  const int far = m_size - 4;
  SetRings(3, 3, kRadius, kLightRings);
  SetRings(far, 3, kRadius, kLightRings);
  SetRings(3, far, kRadius, kLightRings);
}

void QrTemplate::SetTiming() {
  for (int i = 8; i < m_size - 8; ++i) {
    Set(i, kTimingLine, i % 2 == 0);
    Set(kTimingLine, i, i % 2 == 0);
  }
}

void QrTemplate::SetAlignment(int version) {
  const auto& centres = QrAlignmentCentres(version);
  const int count = QrAlignmentCentreCount(version);
  for (int i = 0; i < count; ++i) {
    for (int j = 0; j < count; ++j) {
      const bool isCorner = (i == 0 && j == 0) || (i == 0 && j == count - 1) || (i == count - 1 && j == 0);
      if (!isCorner) {
        SetRings(centres[static_cast<std::size_t>(i)], centres[static_cast<std::size_t>(j)], 2, 0b010);
      }
    }
  }
}

void QrTemplate::ReserveFormat() {
  for (int bit = 0; bit < kQrFormatLength; ++bit) {
    for (const auto [x, y] : QrFormatModules(m_size, bit)) {
      Set(x, y, false);
    }
  }
  Set(kFormatLine, m_size - 8, true);  // the dark module
}

void QrTemplate::ReserveVersion() {
  for (int bit = 0; bit < kQrVersionLength; ++bit) {
    for (const auto [x, y] : QrVersionModules(m_size, bit)) {
      Set(x, y, false);
    }
  }
}

std::vector<std::uint16_t> QrTemplate::DataPositions() const {
  std::vector<std::uint16_t> positions(m_cells.size() + 1);
  std::size_t count = 0;
  // Written in any case, kept only when the module is free: which it is follows no pattern worth a branch.
  const auto take = [&](std::size_t cell) {
    positions[count] = static_cast<std::uint16_t>(cell);
    count += m_cells[cell] < kFunction ? 1 : 0;
  };
  bool upwards = true;
  for (int right = m_size - 1; right > 0; right -= 2) {
    if (right == kTimingLine) {
      --right;  // the column of the vertical timing pattern is no half of a pair
    }
    const std::size_t top = Index(right, 0);
    const auto height = static_cast<std::size_t>(m_size);
    for (std::size_t i = 0; i < height; ++i) {
      const std::size_t cell = top + (upwards ? height - 1 - i : i);
      take(cell);
      take(cell - height);
    }
    upwards = !upwards;
  }
  positions.resize(count);
  return positions;
}

}  // namespace barcode
