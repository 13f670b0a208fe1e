#include "label/outline_fit.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <numbers>

namespace barcode::label {
namespace {

using Kind = OutlinePiece::Kind;
using Pieces = std::vector<ExactPiece>;

// A circle of that radius, of so many equal curves.
Pieces Circle(double radius, int curves) {
  const double angle = 2 * std::numbers::pi / curves;
  const double reach = radius / std::cos(angle / 2);
  Pieces pieces = {{Kind::kMove, {radius, 0}, {}}};
  for (int i = 1; i <= curves; ++i) {
    pieces.push_back({Kind::kCurve,
                      {radius * std::cos(i * angle), radius * std::sin(i * angle)},
                      {reach * std::cos((i - 0.5) * angle), reach * std::sin((i - 0.5) * angle)}});
  }
  return pieces;
}

// How far the curves go from the circle.
double Deviation(const Pieces& pieces, double radius) {
  constexpr int kSteps = 50;
  double most = 0;
  for (std::size_t i = 1; i < pieces.size(); ++i) {
    const ExactPoint& from = pieces[i - 1].to;
    const ExactPoint& by = pieces[i].control;
    const ExactPoint& to = pieces[i].to;
    for (int step = 0; step <= kSteps; ++step) {
      const double t = static_cast<double>(step) / kSteps;
      const double x = (1 - t) * (1 - t) * from.x + 2 * t * (1 - t) * by.x + t * t * to.x;
      const double y = (1 - t) * (1 - t) * from.y + 2 * t * (1 - t) * by.y + t * t * to.y;
      most = std::max(most, std::fabs(std::hypot(x, y) - radius));
    }
  }
  return most;
}

TEST(LabelOutlineFit, FewerCurvesWithinTheTolerance) {
  const Pieces circle = Circle(100, 32);
  std::size_t before = circle.size();
  for (const double tolerance : {0.1, 0.5, 3.0}) {
    const Pieces fewer = WithFewerCurves(circle, tolerance);
    EXPECT_LT(fewer.size(), before) << tolerance;
    EXPECT_LT(Deviation(fewer, 100), tolerance + 0.01) << tolerance;
    EXPECT_EQ(fewer.back().to.x, circle.back().to.x);
    before = fewer.size();
  }
}

TEST(LabelOutlineFit, WithoutToleranceNothingIsLost) {
  EXPECT_EQ(WithFewerCurves(Circle(100, 16), 0.0).size(), 17U);
}

TEST(LabelOutlineFit, LinesAndCornersStay) {
  const Pieces pieces = {{Kind::kMove, {0, 0}, {}},
                         {Kind::kLine, {0, 100}, {}},
                         {Kind::kLine, {0, 200}, {}},
                         {Kind::kCurve, {100, 300}, {0, 300}},    // to the right
                         {Kind::kCurve, {200, 200}, {100, 200}},  // a corner: down from there
                         {Kind::kLine, {0, 0}, {}}};
  const Pieces fewer = WithFewerCurves(pieces, 1.0);
  ASSERT_EQ(fewer.size(), pieces.size());
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    EXPECT_EQ(fewer[i].kind, pieces[i].kind);
    EXPECT_EQ(fewer[i].to.x, pieces[i].to.x);
    EXPECT_EQ(fewer[i].to.y, pieces[i].to.y);
  }
}

TEST(LabelOutlineFit, WavesStay) {
  // Bends to one side and then to the other: no one curve does that.
  const Pieces wave = {
      {Kind::kMove, {0, 0}, {}}, {Kind::kCurve, {100, 0}, {50, 50}}, {Kind::kCurve, {200, 0}, {150, -50}}};
  EXPECT_EQ(WithFewerCurves(wave, 5.0).size(), 3U);
}

TEST(LabelOutlineFit, NothingIsNothing) {
  EXPECT_TRUE(WithFewerCurves({}, 1.0).empty());
}

}  // namespace
}  // namespace barcode::label
