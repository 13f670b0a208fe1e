#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

// Rows of GS1 DataBar symbols: built module by module, handed on as element widths.
namespace barcode {

// The modules of one row from left to right: '1' dark, '0' light.
using DataBarModuleRow = std::string;

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

// A row that shares the height left over by the others.
inline constexpr int kSharedHeight = -1;

// One row of a symbol. `widths` holds element widths in modules as digits '0' to '9', bars and spaces in
// turn, first a bar; '0' is an element that is not there, so that a row can begin with a space ("01...") and
// a run of ten or more modules can be written ("903" is twelve).
struct DataBarRow {
  std::string widths;
  int height;  // in modules, or kSharedHeight

  bool operator==(const DataBarRow&) const = default;
};

std::string WidthDigits(const DataBarModuleRow& row);

// Element widths of at most 9 modules as digits; in the second form behind an empty bar, for a row that
// begins with a space.
std::string WidthDigits(std::span<const std::uint8_t> elements);
std::string BehindEmptyBar(std::span<const std::uint8_t> elements);

// The sum of a row's digits.
std::size_t DataBarRowModules(const std::string& widths);

}  // namespace barcode
