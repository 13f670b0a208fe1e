#include "qr/qr_template.h"

#include <algorithm>
#include <cstdlib>

#include "qr/qr_tables.h"

namespace barcode {
namespace {

constexpr int kTimingLine = 6;
constexpr int kFirstVersionWithInformation = 7;

}  // namespace

QrTemplate::QrTemplate(int version)
    : m_size(QrSize(version)),
      m_cells(static_cast<std::size_t>(m_size) * static_cast<std::size_t>(m_size), kFree) {
  SetTiming();
  SetAlignment(version);
  ReserveFormat();
  if (version >= kFirstVersionWithInformation) {
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
  for (int i = 0; i <= 8; ++i) {
    if (i != kTimingLine) {
      Set(8, i, false);
      Set(i, 8, false);
    }
  }
  for (int i = m_size - 8; i < m_size; ++i) {
    Set(8, i, false);
    Set(i, 8, false);
  }
  Set(8, m_size - 8, true);  // the dark module
}

void QrTemplate::ReserveVersion() {
  for (int i = 0; i < 6; ++i) {
    for (int j = m_size - 11; j < m_size - 8; ++j) {
      Set(i, j, false);
      Set(j, i, false);
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
