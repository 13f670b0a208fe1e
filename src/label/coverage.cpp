#include "label/coverage.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace barcode::label {
namespace {

// Curves become lines that are nowhere further from them, in dots.
constexpr double kFlatness = 1.0 / 16;
constexpr int kMostLines = 64;

struct Point {
  double x = 0;
  double y = 0;
};

// As std::floor and std::ceil, which the oldest machines call as functions; all values are places in a
// picture.
int Floor(double value) {
  const int whole = static_cast<int>(value);
  return whole - (value < whole ? 1 : 0);
}

int Ceil(double value) {
  return -Floor(-value);
}

Point InDots(const UnitPoint& point, const OutlinePlace& place) {
  return {place.x + point.x * place.scale, place.y + point.y * place.scale};
}

// Sums up, in each row, by how much the coverage grows from dot to dot.
class Accumulator {
 public:
  explicit Accumulator(const DotBox& box)
      : m_box(box),
        m_width(box.right - box.left),
        m_height(box.bottom - box.top),
        m_growth(static_cast<std::size_t>(m_width) * static_cast<std::size_t>(m_height)) {}

  void AddLine(Point from, Point to) {
    if (from.y == to.y) {
      return;  // level lines bound nothing
    }
    double direction = 1;
    if (from.y > to.y) {
      std::swap(from, to);
      direction = -1;
    }
    from = FromCorner(from);
    to = FromCorner(to);
    const double slope = (to.x - from.x) / (to.y - from.y);
    const int begin = std::max(0, Floor(from.y));
    const int end = std::min(m_height, Ceil(to.y));
    if (end == begin + 1 && from.y >= begin && to.y <= end) {
      AddInRow(m_growth.data() + Index(begin, 0), from.x, from.x + (to.y - from.y) * slope,
               direction * (to.y - from.y));
      return;
    }
    for (int row = begin; row < end; ++row) {
      const double top = std::max(from.y, static_cast<double>(row));
      const double bottom = std::min(to.y, static_cast<double>(row + 1));
      AddInRow(m_growth.data() + Index(row, 0), from.x + (top - from.y) * slope,
               from.x + (bottom - from.y) * slope, direction * (bottom - top));
    }
  }

  std::vector<std::uint8_t> Levels() const {
    std::vector<std::uint8_t> levels(m_growth.size());
    for (int row = 0; row < m_height; ++row) {
      double coverage = 0;
      const std::size_t begin = Index(row, 0);
      for (std::size_t i = begin; i < begin + static_cast<std::size_t>(m_width); ++i) {
        coverage += m_growth[i];
        const auto halves = static_cast<unsigned>(std::min(1.0, std::fabs(coverage)) * (2 * kFullCoverage));
        levels[i] = static_cast<std::uint8_t>((halves + 1) / 2);
      }
    }
    return levels;
  }

 private:
  Point FromCorner(const Point& point) const { return {point.x - m_box.left, point.y - m_box.top}; }

  std::size_t Index(int row, int column) const {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(m_width) +
           static_cast<std::size_t>(column);
  }

  // A line inside one row, of that signed height: everything to its right is covered.
  void AddInRow(double* row, double x0, double x1, double height) {
    const double left = std::min(x0, x1);
    const double right = std::max(x0, x1);
    const int first = Floor(left);
    const int last = Floor(right);
    if (first == last) {
      AddInDot(row, first, height, (left + right) / 2);
      return;
    }
    const double perDot = height / (right - left);
    for (int column = first; column <= last; ++column) {
      const double from = std::max(left, static_cast<double>(column));
      const double to = std::min(right, static_cast<double>(column + 1));
      AddInDot(row, column, (to - from) * perDot, (from + to) / 2);
    }
  }

  // A line inside one dot, whose middle is at x.
  void AddInDot(double* row, int column, double height, double x) {
    const double beside = x - column;  // of the dot, left of the line
    Grow(row, column, height * (1 - beside));
    Grow(row, column + 1, height * beside);
  }

  void Grow(double* row, int column, double coverage) {
    if (column < m_width) {
      row[std::max(column, 0)] += coverage;
    }
  }

  DotBox m_box;
  int m_width;
  int m_height;
  std::vector<double> m_growth;
};

// How many lines stand for a curve, by the square of how far it is bent: each is off by that over eight times
// the square of their number.
int LinesOf(double squaredBend) {
  int lines = 1;
  for (; lines < kMostLines; ++lines) {
    const double bend = 8 * kFlatness * lines * lines;
    if (squaredBend <= bend * bend) {
      break;
    }
  }
  return lines;
}

void AddCurve(const Point& from, const Point& control, const Point& to, Accumulator& accumulator) {
  const double bendX = from.x - 2 * control.x + to.x;
  const double bendY = from.y - 2 * control.y + to.y;
  const int lines = LinesOf(bendX * bendX + bendY * bendY);
  Point last = from;
  for (int i = 1; i < lines; ++i) {
    const double t = static_cast<double>(i) / lines;
    const double a = (1 - t) * (1 - t);
    const double b = 2 * t * (1 - t);
    const double c = t * t;
    const Point next{a * from.x + b * control.x + c * to.x, a * from.y + b * control.y + c * to.y};
    accumulator.AddLine(last, next);
    last = next;
  }
  accumulator.AddLine(last, to);
}

}  // namespace

DotBox BoundsOf(const Outline& outline, const OutlinePlace& place) {
  constexpr double kFar = std::numeric_limits<double>::max();
  Point least{kFar, kFar};
  Point most{-kFar, -kFar};
  const auto include = [&](const UnitPoint& unit) {
    const Point point = InDots(unit, place);
    least = {std::min(least.x, point.x), std::min(least.y, point.y)};
    most = {std::max(most.x, point.x), std::max(most.y, point.y)};
  };
  for (const OutlinePiece& piece : outline) {
    include(piece.to);
    if (piece.kind == OutlinePiece::Kind::kCurve) {
      include(piece.control);
    }
  }
  return {Floor(least.x), Floor(least.y), Ceil(most.x), Ceil(most.y)};
}

std::vector<std::uint8_t> CoverageOf(const Outline& outline, const OutlinePlace& place, const DotBox& box) {
  Accumulator accumulator(box);
  Point last;
  for (const OutlinePiece& piece : outline) {
    const Point to = InDots(piece.to, place);
    if (piece.kind == OutlinePiece::Kind::kLine) {
      accumulator.AddLine(last, to);
    } else if (piece.kind == OutlinePiece::Kind::kCurve) {
      AddCurve(last, InDots(piece.control, place), to, accumulator);
    }
    last = to;
  }
  return accumulator.Levels();
}

}  // namespace barcode::label
