#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "pdf417/segments.h"

namespace barcode::pdf417 {

// The data codewords of the text, without the length descriptor: every segment in its compaction mode of
// ISO/IEC 15438, a mode latch in front of each but a text that opens the symbol.
std::vector<int> Compact(std::string_view text, std::span<const Segment> segments);

}  // namespace barcode::pdf417
