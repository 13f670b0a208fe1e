#include "layout/stacked_layout.h"

#include <algorithm>

#include "text/text_bands.h"

namespace barcode {
namespace {

constexpr int kMinTextGap = 1;
constexpr std::int64_t kMinRoom = 10;

// Adds the bars of one row; returns the pen behind its last element.
float LayoutRow(std::string_view widths, const ElementScale& scale, RectF row, std::vector<RectF>& bars) {
  bool isBar = true;
  for (const char digit : widths) {
    if (digit != '0') {
      row.width = scale.ElementWidth(static_cast<std::uint32_t>(digit - '0'), isBar);
      if (isBar && row.height > 0) {
        bars.push_back(row);
      }
      row.x += row.width;
    }
    isBar = !isBar;
  }
  return row.x;
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

std::vector<float> ProportionalHeights(std::span<const DataBarRow> rows, const StackedRoom& room) {
  int units = 0;
  for (const DataBarRow& row : rows) {
    units += row.height;
  }
  std::vector<float> heights;
  heights.reserve(rows.size());
  for (const DataBarRow& row : rows) {
    heights.push_back(static_cast<float>(row.height) * static_cast<float>(room.rows) /
                      static_cast<float>(units));
  }
  return heights;
}

std::vector<float> SharedHeights(std::span<const DataBarRow> rows, const StackedRoom& room, float moduleWidth,
                                 float smallestShare) {
  float fixed = 0;
  int sharing = 0;
  for (const DataBarRow& row : rows) {
    if (row.height == kSharedHeight) {
      ++sharing;
    } else {
      fixed += static_cast<float>(row.height) * moduleWidth;
    }
  }
  const float share =
      std::max(smallestShare, (static_cast<float>(room.rows) - fixed) / static_cast<float>(sharing));
  std::vector<float> heights;
  heights.reserve(rows.size());
  for (const DataBarRow& row : rows) {
    heights.push_back(row.height == kSharedHeight ? share : static_cast<float>(row.height) * moduleWidth);
  }
  return heights;
}

std::size_t WidestRow(std::span<const DataBarRow> rows) {
  std::size_t widest = 0;
  for (const DataBarRow& row : rows) {
    widest = std::max(widest, DataBarRowModules(row.widths));
  }
  return widest;
}

Drawing LayoutRows(std::span<const DataBarRow> rows, std::span<const float> heights,
                   const ElementScale& scale, const Box& box) {
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
