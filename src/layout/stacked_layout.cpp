#include "layout/stacked_layout.h"

#include <algorithm>

#include "text/text_bands.h"

namespace barcode {
namespace {

constexpr int kMinTextGap = 1;
constexpr std::int64_t kMinRoom = 10;

// Adds the bars of one row; returns the pen behind its last element.
float LayoutRow(const RunVector& widths, const ElementScale& scale, const RectF& row,
                std::vector<RectF>& bars) {
  return WalkElements(widths, scale, row.x, [&](std::size_t, bool isBar, float left, float width) {
    if (isBar && row.height > 0) {
      bars.push_back({left, row.y, width, row.height});
    }
  });
}

}  // namespace

StackedRoom StackedRoom::Of(std::uint32_t height, float fontScale, float gapScale) {
  StackedRoom room;
  room.textSize = TextSize(height, fontScale);
  room.textGap = ScaledTextGap(height, kStackedTextGapBands, gapScale);
  const std::int64_t left = std::int64_t{height} - std::max(room.textGap, kMinTextGap) - room.textSize;
  room.rows = std::max(left, kMinRoom);
  return room;
}

std::vector<float> ProportionalHeights(std::span<const StackedRow> rows, const StackedRoom& room) {
  int units = 0;
  for (const StackedRow& row : rows) {
    units += row.height.value_or(0);
  }
  std::vector<float> heights;
  heights.reserve(rows.size());
  for (const StackedRow& row : rows) {
    heights.push_back(static_cast<float>(row.height.value_or(0)) * static_cast<float>(room.rows) /
                      static_cast<float>(units));
  }
  return heights;
}

std::vector<float> SharedHeights(std::span<const StackedRow> rows, const StackedRoom& room, float moduleWidth,
                                 float smallestShare) {
  float fixed = 0;
  int sharing = 0;
  for (const StackedRow& row : rows) {
    if (row.height) {
      fixed += static_cast<float>(*row.height) * moduleWidth;
    } else {
      ++sharing;
    }
  }
  const float share =
      std::max(smallestShare, (static_cast<float>(room.rows) - fixed) / static_cast<float>(sharing));
  std::vector<float> heights;
  heights.reserve(rows.size());
  for (const StackedRow& row : rows) {
    heights.push_back(row.height ? static_cast<float>(*row.height) * moduleWidth : share);
  }
  return heights;
}

std::uint64_t WidestRow(std::span<const StackedRow> rows) {
  std::uint64_t widest = 0;
  for (const StackedRow& row : rows) {
    widest = std::max(widest, TotalModules(row.widths));
  }
  return widest;
}

Drawing LayoutRows(std::span<const StackedRow> rows, std::span<const float> heights, ElementScale scale,
                   const Box& box) {
  scale.minimum = ElementMinimum::kAdjusted;
  const auto x = static_cast<float>(box.x);
  auto y = static_cast<float>(box.y);
  Drawing drawing;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const float end = LayoutRow(rows[i].widths, scale, {x, y, 0, heights[i]}, drawing.bars);
    drawing.drawnWidth = std::max(drawing.drawnWidth, end - x);
    y += heights[i];
  }
  return drawing;
}

}  // namespace barcode
