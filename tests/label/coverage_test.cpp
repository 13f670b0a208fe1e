#include "label/coverage.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <numeric>

namespace barcode::label {
namespace {

using Kind = OutlinePiece::Kind;

Outline Box(int left, int top, int right, int bottom) {
  return {{Kind::kMove, {left, top}, {}},
          {Kind::kLine, {right, top}, {}},
          {Kind::kLine, {right, bottom}, {}},
          {Kind::kLine, {left, bottom}, {}},
          {Kind::kLine, {left, top}, {}}};
}

int Sum(const std::vector<std::uint8_t>& levels) {
  return std::accumulate(levels.begin(), levels.end(), 0);
}

TEST(LabelCoverage, WholeDots) {
  const OutlinePlace place{.x = 3, .y = 1, .scale = 0.5};
  const Outline box = Box(0, 0, 4, 2);
  const DotBox bounds = BoundsOf(box, place);
  EXPECT_EQ(bounds.left, 3);
  EXPECT_EQ(bounds.top, 1);
  EXPECT_EQ(bounds.right, 5);
  EXPECT_EQ(bounds.bottom, 2);
  EXPECT_EQ(CoverageOf(box, place, {2, 0, 6, 3}),
            (std::vector<std::uint8_t>{0, 0, 0, 0, 0, 15, 15, 0, 0, 0, 0, 0}));
}

TEST(LabelCoverage, PartsOfDots) {
  // A third of each dot: from 1/3 to 2/3 of the way down.
  EXPECT_EQ(CoverageOf(Box(0, 1, 6, 2), {.x = 0, .y = 0, .scale = 1.0 / 3}, {0, 0, 2, 1}),
            (std::vector<std::uint8_t>{5, 5}));
  // From 1/3 of the first dot to 1/3 of the last one.
  EXPECT_EQ(CoverageOf(Box(1, 0, 7, 3), {.x = 0, .y = 0, .scale = 1.0 / 3}, {0, 0, 3, 1}),
            (std::vector<std::uint8_t>{10, 15, 5}));
}

TEST(LabelCoverage, ContoursTheOtherWayRoundAreHoles) {
  Outline ring = Box(0, 0, 3, 3);
  const Outline hole = {{Kind::kMove, {1, 1}, {}},
                        {Kind::kLine, {1, 2}, {}},
                        {Kind::kLine, {2, 2}, {}},
                        {Kind::kLine, {2, 1}, {}},
                        {Kind::kLine, {1, 1}, {}}};
  ring.insert(ring.end(), hole.begin(), hole.end());
  EXPECT_EQ(CoverageOf(ring, {}, {0, 0, 3, 3}),
            (std::vector<std::uint8_t>{15, 15, 15, 15, 0, 15, 15, 15, 15}));
  // Contours of one sense that lie on each other are still full.
  Outline twice = Box(0, 0, 2, 2);
  const Outline again = Box(1, 0, 3, 2);
  twice.insert(twice.end(), again.begin(), again.end());
  EXPECT_EQ(CoverageOf(twice, {}, {0, 0, 3, 1}), (std::vector<std::uint8_t>{15, 15, 15}));
}

TEST(LabelCoverage, SlopesCoverTheirArea) {
  const Outline triangle = {{Kind::kMove, {0, 0}, {}},
                            {Kind::kLine, {40, 0}, {}},
                            {Kind::kLine, {0, 70}, {}},
                            {Kind::kLine, {0, 0}, {}}};
  const std::vector<std::uint8_t> levels = CoverageOf(triangle, {}, {0, 0, 40, 70});
  constexpr double kArea = 0.5 * 40 * 70 * kFullCoverage;
  EXPECT_NEAR(Sum(levels), kArea, 0.01 * kArea);
  EXPECT_EQ(levels.front(), kFullCoverage);
  EXPECT_EQ(levels.back(), 0);
}

TEST(LabelCoverage, CurvesCoverTheirArea) {
  // Under a parabola: two thirds of its box.
  const Outline arch = {
      {Kind::kMove, {0, 60}, {}}, {Kind::kCurve, {60, 60}, {30, -60}}, {Kind::kLine, {0, 60}, {}}};
  const std::vector<std::uint8_t> levels = CoverageOf(arch, {}, {0, 0, 60, 60});
  EXPECT_NEAR(Sum(levels), kFullCoverage * 2400, 0.01 * kFullCoverage * 2400);
}

// Glyphs are made in slices and cut at the picture's edges: both are parts of the whole.
TEST(LabelCoverage, PartsAreTheWholes) {
  const Font font;
  const Outline outline = font.GlyphOutline(font.FindGlyph(U'@').value());
  const OutlinePlace place{.x = 0.3, .y = 40.7, .scale = 0.31};
  const DotBox bounds = BoundsOf(outline, place);
  const std::vector<std::uint8_t> whole = CoverageOf(outline, place, bounds);
  ASSERT_GT(Sum(whole), 0);
  const auto width = static_cast<std::size_t>(bounds.right - bounds.left);
  for (int top = bounds.top; top < bounds.bottom; top += 5) {
    const DotBox part{bounds.left + 3, top, bounds.right - 2, std::min(top + 5, bounds.bottom)};
    const std::vector<std::uint8_t> levels = CoverageOf(outline, place, part);
    std::size_t i = 0;
    for (int y = part.top; y < part.bottom; ++y) {
      for (int x = part.left; x < part.right; ++x, ++i) {
        const std::size_t index =
            static_cast<std::size_t>(y - bounds.top) * width + static_cast<std::size_t>(x - bounds.left);
        ASSERT_EQ(levels[i], whole[index]) << x << ' ' << y;
      }
    }
  }
}

}  // namespace
}  // namespace barcode::label
