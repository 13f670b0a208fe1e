#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "gs1/databar_14_encoder.h"
#include "layout/stacked_layout.h"

namespace barcode {

// What GS1DataBar14 reports about its work, line by line without line breaks.

// A symbol: the modules of stacked rows, and every row as digits.
std::vector<std::string> DescribeDataBar14(const DataBar14Symbol& symbol);

// The box of a draw in pixels.
struct DataBarBox {
  int x = 0;
  int y = 0;
  std::uint32_t width = 0;
  std::uint32_t height = 0;
};

// The draw of a stacked form: the room, the rows from top to bottom, the text.
std::vector<std::string> DescribeStackedDraw14(const DataBarBox& box, const StackedRoom& room,
                                               std::span<const float> rowHeights);

}  // namespace barcode
