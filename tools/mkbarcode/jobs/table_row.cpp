#include "mkbarcode/jobs/table_row.h"

#include <algorithm>
#include <cstddef>

#include "base/line.h"

namespace barcode::tool {
namespace {

std::string InCell(std::size_t number, std::string_view what) {
  return Line("Cell ", number, " of the row ", what);
}

class CellReader {
 public:
  explicit CellReader(std::string_view row) : m_rest(row) {}

  TableRow Read() {
    do {
      if (!ReadCell()) {
        break;
      }
    } while (TakeComma());
    return std::move(m_row);
  }

 private:
  bool ReadCell() {
    m_row.cells.emplace_back();
    return m_rest.starts_with('"') ? ReadQuoted(m_row.cells.back()) : ReadPlain(m_row.cells.back());
  }

  bool ReadPlain(std::string& cell) {
    const std::string_view text = m_rest.substr(0, m_rest.find(','));
    if (text.find('"') != std::string_view::npos) {
      return Fail("has a quote inside: put the cell in quotes and write the quote inside twice.");
    }
    cell = text;
    m_rest.remove_prefix(text.size());
    return true;
  }

  bool ReadQuoted(std::string& cell) {
    m_rest.remove_prefix(1);
    while (true) {
      const std::size_t quote = m_rest.find('"');
      if (quote == std::string_view::npos) {
        return Fail("has a quote that nothing closes.");
      }
      cell += m_rest.substr(0, quote);
      m_rest.remove_prefix(quote + 1);
      if (!m_rest.starts_with('"')) {
        break;
      }
      cell += '"';
      m_rest.remove_prefix(1);
    }
    const bool isAtEnd = m_rest.empty() || m_rest.starts_with(',');
    return isAtEnd || Fail("goes on behind its closing quote: a quote inside a cell is written twice.");
  }

  bool TakeComma() {
    if (m_rest.empty()) {
      return false;
    }
    m_rest.remove_prefix(1);
    return true;
  }

  bool Fail(std::string_view what) {
    m_row.problem = InCell(m_row.cells.size(), what);
    m_row.cells.pop_back();
    return false;
  }

  std::string_view m_rest;
  TableRow m_row;
};

}  // namespace

TableRow CellsOf(std::string_view row) {
  return CellReader(row).Read();
}

}  // namespace barcode::tool
