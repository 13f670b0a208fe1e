#include "reading_tables/page_table.h"

#include <fstream>
#include <stdexcept>
#include <string_view>

namespace barcode::test {
namespace {

constexpr std::string_view kHeading = "## What a scanner reads";
constexpr std::ptrdiff_t kFixedColumns = 4;

std::string Trimmed(const std::string& text) {
  const std::size_t first = text.find_first_not_of(' ');
  return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// "| a | b |". A bar within a cell would need an escape, which no cell has.
std::vector<std::string> CellsOf(const std::string& line) {
  std::vector<std::string> cells;
  for (std::size_t at = 1; at < line.size();) {
    const std::size_t end = line.find('|', at);
    if (end == std::string::npos) {
      throw std::runtime_error("a row of the table does not end with a bar: " + line);
    }
    cells.push_back(Trimmed(line.substr(at, end - at)));
    at = end + 1;
  }
  return cells;
}

std::string CodeOf(const std::string& cell) {
  if (cell.size() < 3 || cell.front() != '`' || cell.back() != '`') {
    throw std::runtime_error("no code: " + cell);
  }
  return cell.substr(1, cell.size() - 2);
}

// "none", "20 px", or a label's quiet zone.
int MarginOf(const std::string& cell) {
  if (cell == "none" || cell == "its own") {
    return 0;
  }
  if (!cell.ends_with(" px")) {
    throw std::runtime_error("no margin: " + cell);
  }
  return std::stoi(cell);
}

TableRow RowOf(const std::string& line, std::size_t columns) {
  const std::vector<std::string> cells = CellsOf(line);
  if (cells.size() != columns) {
    throw std::runtime_error("a row of another length than the head: " + line);
  }
  return {cells[0],
          CodeOf(cells[1]),
          CodeOf(cells[2]),
          MarginOf(cells[3]),
          {cells.begin() + kFixedColumns, cells.end()}};
}

std::size_t ColumnsOf(const std::string& head) {
  constexpr std::string_view kReaders = "| | Drawn by | `TEXT` | Margin | ZXing 1.4 | ZBar | zxing-wasm |";
  if (head == kReaders) {
    return std::size_t{kFixedColumns} + 3;
  }
  if (head == std::string(kReaders) + " Decoder of the tests |") {
    return std::size_t{kFixedColumns} + 4;
  }
  throw std::runtime_error("the table's head is another one: " + head);
}

}  // namespace

std::vector<TableRow> TableOf(const std::filesystem::path& page) {
  std::ifstream in(page);
  std::string line;
  while (line != kHeading) {
    if (!std::getline(in, line)) {
      throw std::runtime_error(page.string() + " has no section \"What a scanner reads\"");
    }
  }
  while (!line.starts_with('|')) {
    if (!std::getline(in, line) || line.starts_with("## ")) {
      throw std::runtime_error(page.string() + " has no table of what a scanner reads");
    }
  }
  const std::size_t columns = ColumnsOf(line);
  std::getline(in, line);
  std::vector<TableRow> rows;
  while (std::getline(in, line) && line.starts_with('|')) {
    rows.push_back(RowOf(line, columns));
  }
  return rows;
}

}  // namespace barcode::test
