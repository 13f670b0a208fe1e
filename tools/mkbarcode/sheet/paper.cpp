#include "mkbarcode/sheet/paper.h"

#include <charconv>
#include <cmath>
#include <optional>
#include <utility>

#include "base/ascii.h"
#include "base/line.h"
#include "mkbarcode/errors.h"

namespace barcode::tool {
namespace {

// In millimetres. The longest page that PDF knows has 200 inches.
constexpr double kShortestSide = 5;
constexpr double kLongestSide = 5080;
constexpr double kMostLength = 1000;
constexpr int kMostCells = 100;  // in a row and in a column

[[noreturn]] void Refuse(std::string_view option, std::string_view wanted, std::string_view given) {
  throw UsageError(Line("The option \"", option, "\" must be ", wanted, ", not \"", given, "\"."));
}

// Digits, with a decimal point or without.
std::optional<double> Length(std::string_view text) {
  double value = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value, std::chars_format::fixed);
  const bool isNumber = error == std::errc() && stop == end && std::isfinite(value) && !std::signbit(value);
  return isNumber ? std::optional(value) : std::nullopt;
}

std::optional<int> WholeNumber(std::string_view text) {
  int value = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  return error == std::errc() && stop == end ? std::optional(value) : std::nullopt;
}

// What stands on both sides of an x.
std::optional<std::pair<std::string_view, std::string_view>> Sides(std::string_view text) {
  const std::size_t x = text.find_first_of("xX");
  if (x == std::string_view::npos) {
    return std::nullopt;
  }
  return std::pair(text.substr(0, x), text.substr(x + 1));
}

bool IsSide(const std::optional<double>& length) {
  return length && *length >= kShortestSide && *length <= kLongestSide;
}

bool IsSpace(const std::optional<double>& length) {
  return length && *length <= kMostLength;
}

bool IsCount(const std::optional<int>& number) {
  return number && *number >= 1 && *number <= kMostCells;
}

// A size of hundredths, never more than it is.
double Told(double millimetres) {
  constexpr double kHundredths = 100;
  return std::floor(millimetres * kHundredths + label::kDotTolerance) / kHundredths;
}

std::string Told(const label::Spacing& spacing) {
  return spacing.across == spacing.down ? Line(spacing.across) : Line(spacing.across, " x ", spacing.down);
}

}  // namespace

void SetPage(label::SheetGrid& grid, std::string_view page) {
  const std::string name = ToUpper(page);
  if (name == "A4") {
    grid.pageWidth = 210;
    grid.pageHeight = 297;
    return;
  }
  if (name == "LETTER") {
    grid.pageWidth = 215.9;
    grid.pageHeight = 279.4;
    return;
  }
  constexpr std::string_view kUnit = "MM";
  if (const auto sides = Sides(page); sides && name.ends_with(kUnit)) {
    const auto [first, second] = *sides;
    const std::optional<double> width = Length(first);
    const std::optional<double> height = Length(second.substr(0, second.size() - kUnit.size()));
    if (IsSide(width) && IsSide(height)) {
      grid.pageWidth = *width;
      grid.pageHeight = *height;
      return;
    }
  }
  Refuse("--page", "A4, letter or a size such as 100x150mm, with sides from 5 to 5080 mm", page);
}

void SetCells(label::SheetGrid& grid, std::string_view cells) {
  if (const auto sides = Sides(cells)) {
    const std::optional<int> columns = WholeNumber(sides->first);
    const std::optional<int> rows = WholeNumber(sides->second);
    if (IsCount(columns) && IsCount(rows)) {
      grid.columns = *columns;
      grid.rows = *rows;
      return;
    }
  }
  Refuse("--grid", "COLUMNSxROWS, such as 3x8, with 1 to 100 of each", cells);
}

label::Spacing SpacingOf(std::string_view option, std::string_view text) {
  const auto sides = Sides(text).value_or(std::pair(text, text));
  const std::optional<double> across = Length(sides.first);
  const std::optional<double> down = Length(sides.second);
  if (!IsSpace(across) || !IsSpace(down)) {
    Refuse(option, "millimetres from 0 to 1000, such as 2.5, or ACROSSxDOWN, such as 2.5x0", text);
  }
  return {*across, *down};
}

std::int64_t CellNumber(std::string_view number) {
  if (const std::optional<int> value = WholeNumber(number); value && *value >= 1) {
    return *value;
  }
  Refuse("--start-at", "the number of a cell, from 1", number);
}

void CheckPaper(const label::SheetGrid& grid, std::int64_t cellNumber) {
  const label::Cell cell = label::CellAt(grid, 0);
  if (Told(cell.width) <= 0 || Told(cell.height) <= 0) {
    throw UsageError(Line("A margin of ", Told(grid.margin), " mm and gaps of ", Told(grid.gap),
                          " mm leave no room for ", grid.columns, " x ", grid.rows, " cells on a page of ",
                          grid.pageWidth, " x ", grid.pageHeight,
                          " mm; choose a smaller margin, smaller gaps or fewer cells."));
  }
  if (cellNumber > label::CellsOf(grid)) {
    throw UsageError(Line("The option \"--start-at\" must be a cell of the page, from 1 to ",
                          label::CellsOf(grid), ", not ", cellNumber, '.'));
  }
}

}  // namespace barcode::tool
