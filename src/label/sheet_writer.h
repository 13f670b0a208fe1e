#pragma once

#include <cstdint>

#include "label/pdf_content.h"
#include "label/pdf_file.h"
#include "label/sheet_grid.h"
#include "label/sheet_label.h"

namespace barcode::label {

struct SheetOptions {
  SheetGrid grid;
  bool outline = false;        // of the cells, as a thin line
  std::int64_t firstCell = 0;  // of the first page, from 0
};

// A PDF of pages with labels in cells, row by row. It holds one page at a time. All functions throw
// std::bad_alloc and what the sink throws.
class SheetWriter {
 public:
  SheetWriter(const SheetOptions& options, PdfFile::Sink sink);

  // The cell that the next label gets.
  Cell NextCell() const { return CellAt(m_options.grid, m_next % CellsOf(m_options.grid)); }
  // Made for that cell.
  void Put(const SheetLabel& label);
  void LeaveEmpty();

  // The last page; without labels it is the only one, with empty cells. Nothing may follow.
  void Finish();

  std::int64_t Pages() const { return m_pages; }

 private:
  // The page of the next cell.
  void TurnPage();
  void BeginPage();
  void EndPage();
  // Over the labels: grounds would cover half of the lines.
  void DrawOutlines();

  SheetOptions m_options;
  PdfFile m_file;
  PdfContent m_content;
  std::int64_t m_next;       // cell, counted over all pages
  std::int64_t m_pages = 0;  // begun
};

}  // namespace barcode::label
