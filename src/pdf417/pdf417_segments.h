#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace barcode {

// A stretch [start, end) of the text that is compacted in one way: 'T' text, 'B' bytes, 'N' digits.
struct PDF417Segment {
  char kind = 'T';
  std::size_t start = 0;
  std::size_t end = 0;

  bool operator==(const PDF417Segment&) const = default;
};

// True for the bytes that Text Compaction can express: 32 to 126, carriage return, tab and line feed.
bool IsPDF417Text(char byte);

// Divides the text. Neighbours differ in kind, and together they cover the text. A text segment may hold
// single other bytes between its characters.
std::vector<PDF417Segment> SegmentPDF417(std::string_view text);

}  // namespace barcode
