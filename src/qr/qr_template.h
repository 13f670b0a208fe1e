#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace barcode {

struct QrModule {
  int x;
  int y;
};

// The two places of one bit of the format information of a symbol of that size; bit 0 is the least
// significant one.
std::array<QrModule, 2> QrFormatModules(int size, int bit);

// The same for the version information.
std::array<QrModule, 2> QrVersionModules(int size, int bit);

// The function patterns of one QR Code version and the order in which its free modules take the data.
class QrTemplate {
 public:
  // Cells below kFunction are free for data.
  enum Marker : std::uint8_t { kFree = 0, kFunctionLight = 2, kFunctionDark = 3 };
  static constexpr std::uint8_t kFunction = 2;

  explicit QrTemplate(int version);

  int Size() const { return m_size; }
  std::uint8_t At(int x, int y) const { return m_cells[Index(x, y)]; }
  bool IsFree(int x, int y) const { return At(x, y) < kFunction; }

  // The markers of column x, from top to bottom.
  std::span<const std::uint8_t> Column(int x) const {
    return std::span(m_cells).subspan(Index(x, 0), static_cast<std::size_t>(m_size));
  }

  // The free modules in the order of the bits, each as x * Size() + y: pairs of columns from the right edge
  // leftwards, upwards and downwards in turn.
  std::vector<std::uint16_t> DataPositions() const;

 private:
  std::size_t Index(int x, int y) const {
    return static_cast<std::size_t>(x) * static_cast<std::size_t>(m_size) + static_cast<std::size_t>(y);
  }
  void Set(int x, int y, bool dark) { m_cells[Index(x, y)] = dark ? kFunctionDark : kFunctionLight; }
  void SetRings(int x, int y, int radius, int lightRings);
  void SetFinders();
  void SetTiming();
  void SetAlignment(int version);
  void ReserveFormat();
  void ReserveVersion();

  int m_size;
  std::vector<std::uint8_t> m_cells;
};

}  // namespace barcode
