#include "label/dark_area.h"

#include <algorithm>

namespace barcode::label {
namespace {

// Consecutive columns of a row for which `isDark` holds: visit(first, end).
template <class IsDark, class Visit>
void VisitRuns(int columns, IsDark isDark, Visit visit) {
  for (int column = 0; column < columns; ++column) {
    if (!isDark(column)) {
      continue;
    }
    const int first = column;
    while (column + 1 < columns && isDark(column + 1)) {
      ++column;
    }
    visit(first, column + 1);
  }
}

}  // namespace

std::vector<Bar> BarsOf(const RunVector& pattern) {
  std::vector<Bar> bars;
  bars.reserve(pattern.size() / 2 + 1);
  std::int64_t pen = 0;
  std::int64_t end = -1;  // of the last bar
  for (std::size_t run = 0; run < pattern.size(); run += 2) {
    const std::int64_t modules = pattern[run];
    if (modules > 0 && pen == end) {
      bars.back().modules += modules;
    } else if (modules > 0) {
      bars.push_back({pen, modules, run});
    }
    pen += modules;
    end = modules > 0 ? pen : end;
    pen += run + 1 < pattern.size() ? pattern[run + 1] : 0;
  }
  return bars;
}

void AddBars(std::vector<DotRect>& dark, const std::vector<Bar>& bars, int module, int adjust,
             const RowPlace& place) {
  const std::size_t before = dark.size();
  dark.resize(before + bars.size());
  const auto dots = [module](std::int64_t modules) { return static_cast<int>(modules * module); };
  for (std::size_t i = 0; i < bars.size(); ++i) {
    const int start = place.x + dots(bars[i].start);
    int width = dots(bars[i].modules);
    if (adjust != 0) {
      const int lightEnd = i + 1 < bars.size() ? place.x + dots(bars[i + 1].start) : place.lightEnd;
      width = std::clamp(width + adjust, 1, std::max(width, lightEnd - start - 1));
    }
    dark[before + i] = {start, place.y, width, place.height};
  }
}

void AddMatrix(std::vector<DotRect>& dark, const ModuleMatrix& matrix, int x, int y, int cellWidth,
               int cellHeight, int adjust) {
  const int wider = std::clamp(adjust, 1 - cellWidth, cellWidth - 1);
  const int higher = std::clamp(adjust, 1 - cellHeight, cellHeight - 1);
  for (int row = 0; row < matrix.Rows(); ++row) {
    const int top = y + row * cellHeight;
    VisitRuns(
        matrix.Columns(), [&](int column) { return matrix.At(column, row); },
        [&](int first, int end) {
          dark.push_back(
              {x + first * cellWidth, top, (end - first) * cellWidth + wider, cellHeight + higher});
        });
    if (higher >= 0 || row + 1 == matrix.Rows()) {
      continue;
    }
    // Where the module below is dark too, nothing is light between them.
    VisitRuns(
        matrix.Columns(), [&](int column) { return matrix.At(column, row) && matrix.At(column, row + 1); },
        [&](int first, int end) {
          const bool endsRun = end == matrix.Columns() || !matrix.At(end, row) || !matrix.At(end, row + 1);
          dark.push_back({x + first * cellWidth, top + cellHeight + higher,
                          (end - first) * cellWidth + (endsRun ? wider : 0), -higher});
        });
  }
}

}  // namespace barcode::label
