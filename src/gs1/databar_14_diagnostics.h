#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "base/geometry.h"
#include "gs1/databar_14_encoder.h"
#include "layout/stacked_layout.h"

namespace barcode {

// What GS1DataBar14 reports about its work, line by line without line breaks.

// A symbol: the modules of stacked rows, and every row as digits.
std::vector<std::string> DescribeDataBar14(const DataBar14Symbol& symbol);

// The draw of a stacked form: the room, the rows from top to bottom, the text.
std::vector<std::string> DescribeStackedDraw14(const Box& box, const StackedRoom& room,
                                               std::span<const float> rowHeights);

}  // namespace barcode
