#include "label/sheet_writer.h"

#include <utility>

#include "label/units.h"

namespace barcode::label {
namespace {

constexpr double kOutlineMm = 0.1;

double Points(double millimetres) {
  return millimetres * kPointsPerInch / kMillimetresPerInch;
}

}  // namespace

SheetWriter::SheetWriter(const SheetOptions& options, PdfFile::Sink sink)
    : m_options(options), m_file(std::move(sink), ""), m_next(options.firstCell) {}

void SheetWriter::Put(const SheetLabel& label) {
  TurnPage();
  const double pointsPerDot = kPointsPerInch / *label.drawing.dpi;
  const PdfPoint corner{.x = label.x * pointsPerDot,
                        .y = Points(m_options.grid.pageHeight) - label.y * pointsPerDot};
  m_content.Paint(label.drawing, corner, pointsPerDot);
  ++m_next;
}

void SheetWriter::LeaveEmpty() {
  TurnPage();
  ++m_next;
}

void SheetWriter::Finish() {
  if (m_pages == 0) {
    BeginPage();
  }
  EndPage();
  m_file.Finish();
}

void SheetWriter::TurnPage() {
  if (m_next / CellsOf(m_options.grid) < m_pages) {
    return;
  }
  if (m_pages > 0) {
    EndPage();
  }
  BeginPage();
}

void SheetWriter::BeginPage() {
  m_content = PdfContent();
  ++m_pages;
}

void SheetWriter::EndPage() {
  if (m_options.outline) {
    DrawOutlines();
  }
  m_file.AddPage(Points(m_options.grid.pageWidth), Points(m_options.grid.pageHeight), m_content);
}

void SheetWriter::DrawOutlines() {
  const SheetGrid& grid = m_options.grid;
  for (std::int64_t number = 0; number < CellsOf(grid); ++number) {
    const Cell cell = CellAt(grid, number);
    m_content.Frame({.x = Points(cell.x), .y = Points(grid.pageHeight - cell.y - cell.height)},
                    Points(cell.width), Points(cell.height), Points(kOutlineMm));
  }
}

}  // namespace barcode::label
