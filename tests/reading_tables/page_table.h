#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace barcode::test {

// A row of the table "What a scanner reads" of a page in docs/symbologies: what to draw, and what the page
// says of each reader.
struct TableRow {
  std::string name;                // "library, default"
  std::string drawn;               // "mkbarcode library code39 TEXT"
  std::string text;                // a pattern, see texts.h
  int margin = 0;                  // white pixels around the picture
  std::vector<std::string> cells;  // of ZXing 1.4, ZBar, zxing-wasm and perhaps the decoder of the tests
};

// Throws std::runtime_error when the page has no such table, or one that cannot be understood.
std::vector<TableRow> TableOf(const std::filesystem::path& page);

}  // namespace barcode::test
