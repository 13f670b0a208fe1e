#include "label/outline_fit.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <optional>
#include <span>

namespace barcode::label {
namespace {

// Below it, two directions are parallel.
constexpr double kLeastSine = 1e-9;

// Where on each curve the fit is examined.
constexpr std::array kParameters = {0.25, 0.5, 0.75, 1.0};

ExactPoint operator-(const ExactPoint& a, const ExactPoint& b) {
  return {a.x - b.x, a.y - b.y};
}

double Cross(const ExactPoint& a, const ExactPoint& b) {
  return a.x * b.y - a.y * b.x;
}

ExactPoint At(const ExactPoint& from, const ExactPiece& curve, double t) {
  const double a = (1 - t) * (1 - t);
  const double b = 2 * t * (1 - t);
  const double c = t * t;
  return {a * from.x + b * curve.control.x + c * curve.to.x,
          a * from.y + b * curve.control.y + c * curve.to.y};
}

// The control point of the one curve that begins and ends in the directions of these.
std::optional<ExactPoint> CommonControl(const ExactPoint& from, std::span<const ExactPiece> curves) {
  const ExactPoint begin = curves.front().control - from;
  const ExactPoint end = curves.back().to - curves.back().control;
  const ExactPoint whole = curves.back().to - from;
  const double sine = Cross(begin, end);
  if (std::fabs(sine) < kLeastSine) {
    return std::nullopt;
  }
  const double alongBegin = Cross(whole, end) / sine;
  const double alongEnd = Cross(begin, whole) / sine;
  if (alongBegin <= 0 || alongEnd <= 0) {
    return std::nullopt;  // it would bend back
  }
  return ExactPoint{from.x + alongBegin * begin.x, from.y + alongBegin * begin.y};
}

// Distances from a curve. With the point from + u a + v b, a and b leading to the control point and on from
// there, a curve is u = 2t - t^2, v = t^2; another point with the same v is off along a, and what counts of
// that is what is square to the curve.
class Nearness {
 public:
  Nearness(const ExactPoint& from, const ExactPiece& curve, double tolerance)
      : m_from(from),
        m_a(curve.control - from),
        m_b(curve.to - curve.control),
        m_area(Cross(m_a, m_b)),
        m_tolerance(tolerance) {}

  bool Holds(const ExactPoint& point) const {
    const ExactPoint offset = point - m_from;
    const double u = Cross(offset, m_b) / m_area;
    const double v = Cross(m_a, offset) / m_area;
    if (v < 0 || v > 1) {
      return false;
    }
    const double t = std::sqrt(v);
    const ExactPoint direction{(1 - t) * m_a.x + t * m_b.x, (1 - t) * m_a.y + t * m_b.y};
    const double square = (u - (2 * t - v)) * t * m_area;
    return std::fabs(square) <=
           m_tolerance * std::sqrt(direction.x * direction.x + direction.y * direction.y);
  }

 private:
  ExactPoint m_from;
  ExactPoint m_a;
  ExactPoint m_b;
  double m_area;
  double m_tolerance;
};

// The curve that stands for all of these, if there is one.
std::optional<ExactPiece> Fitted(const ExactPoint& from, std::span<const ExactPiece> curves,
                                 double tolerance) {
  const std::optional<ExactPoint> control = CommonControl(from, curves);
  if (!control) {
    return std::nullopt;
  }
  const ExactPiece fitted{.kind = OutlinePiece::Kind::kCurve, .to = curves.back().to, .control = *control};
  const Nearness nearness(from, fitted, tolerance);
  ExactPoint begin = from;
  for (const ExactPiece& curve : curves) {
    for (const double t : kParameters) {
      const bool isEnd = &curve == &curves.back() && t == 1.0;
      if (!isEnd && !nearness.Holds(At(begin, curve, t))) {
        return std::nullopt;
      }
    }
    begin = curve.to;
  }
  return fitted;
}

}  // namespace

std::vector<ExactPiece> WithFewerCurves(const std::vector<ExactPiece>& pieces, double tolerance) {
  std::vector<ExactPiece> fewer;
  fewer.reserve(pieces.size());
  for (std::size_t i = 0; i < pieces.size();) {
    ExactPiece piece = pieces[i];
    std::size_t end = i + 1;
    while (piece.kind == OutlinePiece::Kind::kCurve && end < pieces.size() &&
           pieces[end].kind == OutlinePiece::Kind::kCurve) {
      const auto longer = Fitted(fewer.back().to, std::span(pieces).subspan(i, end + 1 - i), tolerance);
      if (!longer) {
        break;
      }
      piece = *longer;
      ++end;
    }
    fewer.push_back(piece);
    i = end;
  }
  return fewer;
}

}  // namespace barcode::label
