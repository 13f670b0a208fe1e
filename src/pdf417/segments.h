#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace barcode::pdf417 {

// The compaction modes.
enum class SegmentKind : std::uint8_t { kText, kBytes, kDigits };

// A stretch [start, end) of the text that is compacted in one way.
struct Segment {
  SegmentKind kind = SegmentKind::kText;
  std::size_t start = 0;
  std::size_t end = 0;

  bool operator==(const Segment&) const = default;
};

// True for the bytes that Text Compaction can express: 32 to 126, carriage return, tab and line feed.
bool IsText(char byte);

// Divides the text. Neighbours differ in kind, and together they cover the text. A text segment may hold
// single other bytes between its characters.
std::vector<Segment> DivideIntoSegments(std::string_view text);

}  // namespace barcode::pdf417
