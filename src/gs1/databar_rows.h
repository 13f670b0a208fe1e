#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "base/run_vector.h"

// Rows of GS1 DataBar symbols: built module by module, handed on as element widths.
namespace barcode {

// The modules of one row from left to right: 1 dark, 0 light.
using DataBarModuleRow = std::vector<std::uint8_t>;

// Lays elements side by side in alternating colours.
class DataBarRowBuilder {
 public:
  explicit DataBarRowBuilder(bool firstIsDark) : m_dark(firstIsDark) {}

  DataBarRowBuilder& Add(std::span<const std::uint8_t> widths);
  DataBarRowBuilder& AddReversed(std::span<const std::uint8_t> widths);
  DataBarRowBuilder& AddGuard();

  std::size_t Modules() const { return m_row.size(); }
  const DataBarModuleRow& Row() const { return m_row; }

 private:
  void AddElement(std::uint8_t width);

  DataBarModuleRow m_row;
  bool m_dark;
};

// Light modules at both ends of every separator row.
inline constexpr std::size_t kSeparatorMargin = 4;
// The three wide elements of a finder together.
inline constexpr std::size_t kWideFinderModules = 13;

// The separator row next to a data row, for rows that are separated by three: the complement of the data row,
// except along the wide elements of each finder (`wideFinders`: their first modules). There it is light
// beside bars and alternates dark, light, dark, ... beside spaces, so that no reader takes it for a finder.
// The ends are light.
DataBarModuleRow AdjacentSeparator(const DataBarModuleRow& row, std::span<const std::size_t> wideFinders);

// The middle one of three separator rows.
DataBarModuleRow MiddleSeparator(std::size_t modules);

// The widths of the runs as those of a StackedRow: none is above 9, a longer run is split by an element of no
// modules, since each part is drawn and adjusted by itself.
RunVector ElementWidths(const DataBarModuleRow& row);

}  // namespace barcode
