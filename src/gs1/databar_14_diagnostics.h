#pragma once

#include <span>

#include "base/encoder_lines.h"
#include "base/geometry.h"
#include "gs1/databar_14_encoder.h"
#include "layout/stacked_layout.h"

// What GS1DataBar14 reports about its work. Here alone are rows written as digits.
namespace barcode {

// A symbol: the modules of stacked rows, and every row's widths.
void DescribeDataBar14(const DataBar14Symbol& symbol, EncoderLines& lines);

// The draw of a stacked form into a box: the room, the rows from top to bottom, the text.
void DescribeStackedDraw14(const Box& box, const StackedRoom& room, std::span<const float> rowHeights,
                           EncoderLines& lines);

}  // namespace barcode
