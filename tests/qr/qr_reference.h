#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "base/module_matrix.h"
#include "qr/qr_tables.h"

// A second, naive implementation of the QR rules for the tests to compare with: one module and one mask at a
// time, written without a look at the encoder's data structures.
namespace barcode::qr_reference {

inline constexpr std::array<QrLevel, kQrLevels> kLevels = {QrLevel::kL, QrLevel::kM, QrLevel::kQ,
                                                           QrLevel::kH};

inline char Name(QrLevel level) {
  return "LMQH"[static_cast<int>(level)];
}

inline bool IsFunction(int version, int x, int y) {
  const int n = QrSize(version);
  if ((x < 9 && y < 9) || (x >= n - 8 && y < 9) || (x < 9 && y >= n - 8) || x == 6 || y == 6) {
    return true;  // finders, separators, format information, timing
  }
  if (version >= 7 && ((x >= n - 11 && y < 6) || (y >= n - 11 && x < 6))) {
    return true;
  }
  const auto& centres = QrAlignmentCentres(version);
  for (const int cx : centres) {
    for (const int cy : centres) {
      const bool nearFinder = (cx == 6 && cy == 6) || (cx == 6 && cy == n - 7) || (cx == n - 7 && cy == 6);
      if (cx != 0 && cy != 0 && !nearFinder && std::abs(x - cx) <= 2 && std::abs(y - cy) <= 2) {
        return true;
      }
    }
  }
  return false;
}

inline bool Inverts(int mask, int x, int y) {
  const int i = y;
  const int j = x;
  const std::array<int, 8> zeroWhere = {(i + j) % 2,
                                        i % 2,
                                        j % 3,
                                        (i + j) % 3,
                                        (i / 2 + j / 3) % 2,
                                        (i * j) % 2 + (i * j) % 3,
                                        ((i * j) % 2 + (i * j) % 3) % 2,
                                        ((i + j) % 2 + (i * j) % 3) % 2};
  return zeroWhere[static_cast<std::size_t>(mask)] == 0;
}

// Data modules as (x, y) in the order of the bits.
inline std::vector<std::pair<int, int>> DataOrder(int version) {
  std::vector<std::pair<int, int>> order;
  const int n = QrSize(version);
  int y = n - 1;
  int step = -1;
  for (int x = n - 1; x > 0; x -= 2) {
    x -= x == 6 ? 1 : 0;
    for (; y >= 0 && y < n; y += step) {
      if (!IsFunction(version, x, y)) {
        order.emplace_back(x, y);
      }
      if (!IsFunction(version, x - 1, y)) {
        order.emplace_back(x - 1, y);
      }
    }
    step = -step;
    y += step;
  }
  return order;
}

inline int LinePenalty(const std::string& line) {
  int penalty = 0;
  for (std::size_t begin = 0; begin < line.size();) {
    const std::size_t end = std::min(line.find_first_not_of(line[begin], begin), line.size());
    const auto run = static_cast<int>(end - begin);
    penalty += run >= 5 ? run - 2 : 0;
    begin = end;
  }
  for (std::size_t at = line.find("1011101"); at != std::string::npos; at = line.find("1011101", at + 1)) {
    penalty += 40;
  }
  return penalty;
}

inline int Penalty(const ModuleMatrix& matrix, int dataBits) {
  const int n = matrix.Columns();
  int penalty = 0;
  int dark = 0;
  for (int i = 0; i < n; ++i) {
    std::string row;
    std::string column;
    for (int j = 0; j < n; ++j) {
      row += matrix.At(j, i) ? '1' : '0';
      column += matrix.At(i, j) ? '1' : '0';
      dark += matrix.At(i, j) ? 1 : 0;
    }
    penalty += LinePenalty(row) + LinePenalty(column);
  }
  for (int x = 1; x < n; ++x) {
    for (int y = 1; y < n; ++y) {
      const int sum = matrix.At(x, y) + matrix.At(x - 1, y) + matrix.At(x, y - 1) + matrix.At(x - 1, y - 1);
      penalty += sum == 0 || sum == 4 ? 3 : 0;
    }
  }
  // 90 down to 0 in steps of 10, a second 0, and up to 90, the last value twice.
  const long k = std::min(20L, std::lround(20.0 * dark / dataBits));
  penalty += static_cast<int>(k <= 9 ? 90 - 10 * k : std::min(90L, 10 * (k - 10)));
  return penalty;
}

// The symbol as it is scored under another mask: format and version information light, the data inverted
// anew.
inline ModuleMatrix Remasked(const ModuleMatrix& drawn, int version, int drawnMask, int mask) {
  ModuleMatrix matrix = drawn;
  const int n = drawn.Columns();
  for (int x = 0; x < n; ++x) {
    for (int y = 0; y < n; ++y) {
      if (!IsFunction(version, x, y)) {
        matrix.Set(x, y, drawn.At(x, y) != (Inverts(drawnMask, x, y) != Inverts(mask, x, y)));
      }
    }
  }
  for (int i = 0; i < 9; ++i) {
    if (i != 6) {
      matrix.Set(8, i, false);
      matrix.Set(i, 8, false);
    }
  }
  for (int i = n - 8; i < n; ++i) {
    matrix.Set(i, 8, false);
    matrix.Set(8, i, i == n - 8);
  }
  for (int i = 0; version >= 7 && i < 18; ++i) {
    matrix.Set(n - 11 + i % 3, i / 3, false);
    matrix.Set(i / 3, n - 11 + i % 3, false);
  }
  return matrix;
}

inline std::vector<std::uint8_t> ReadCodewords(const ModuleMatrix& matrix, int version, int mask) {
  const auto order = DataOrder(version);
  std::vector<std::uint8_t> codewords(order.size() / 8);
  for (std::size_t i = 0; i < codewords.size() * 8; ++i) {
    const auto [x, y] = order[i];
    const bool bit = matrix.At(x, y) != Inverts(mask, x, y);
    codewords[i / 8] = static_cast<std::uint8_t>(codewords[i / 8] << 1 | (bit ? 1 : 0));
  }
  return codewords;
}

}  // namespace barcode::qr_reference
