#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "label/sheet_grid.h"

// What the options say of the paper. All throw UsageError, with what would do.
namespace barcode::tool {

// --page: "A4", "letter" or a size such as "100x150mm".
void SetPage(label::SheetGrid& grid, std::string_view page);

// --grid: "3x8".
void SetCells(label::SheetGrid& grid, std::string_view cells);

// --margin and --gap: millimetres, "2.5" or "ACROSSxDOWN". option: for the message.
label::Spacing SpacingOf(std::string_view option, std::string_view text);

// --start-at: the number of a cell, from 1.
std::int64_t CellNumber(std::string_view number);

// That the cells have room on the page, and that it has a cell of that number.
void CheckPaper(const label::SheetGrid& grid, std::int64_t cellNumber);

}  // namespace barcode::tool
