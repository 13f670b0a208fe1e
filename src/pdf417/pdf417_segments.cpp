#include "pdf417/pdf417_segments.h"

#include "base/ascii.h"

namespace barcode {
namespace {

constexpr std::size_t kMinNumericLength = 13;
constexpr std::size_t kMinTextLength = 5;
constexpr std::size_t kMinTextAroundByte = 3;

std::size_t Length(const PDF417Segment& segment) {
  return segment.end - segment.start;
}

// Appends a segment that continues where the last one ends; equal neighbours become one.
void Append(std::vector<PDF417Segment>& segments, const PDF417Segment& segment) {
  if (!segments.empty() && segments.back().kind == segment.kind) {
    segments.back().end = segment.end;
  } else {
    segments.push_back(segment);
  }
}

std::size_t DigitRunEnd(std::string_view text, std::size_t start) {
  std::size_t end = start;
  while (end < text.size() && IsDigit(text[end])) {
    ++end;
  }
  return end;
}

// Long digit runs, text and other bytes, before anything is merged.
std::vector<PDF417Segment> Divide(std::string_view text) {
  std::vector<PDF417Segment> segments;
  std::size_t start = 0;
  while (start < text.size()) {
    const std::size_t digitsEnd = DigitRunEnd(text, start);
    if (digitsEnd - start >= kMinNumericLength) {
      Append(segments, {'N', start, digitsEnd});
      start = digitsEnd;
    } else if (digitsEnd > start) {
      Append(segments, {'T', start, digitsEnd});
      start = digitsEnd;
    } else {
      Append(segments, {IsPDF417Text(text[start]) ? 'T' : 'B', start, start + 1});
      ++start;
    }
  }
  return segments;
}

// A single byte between two texts of some length is cheaper shifted to than latched to and back.
std::vector<PDF417Segment> JoinTextAroundSingleBytes(const std::vector<PDF417Segment>& segments) {
  std::vector<PDF417Segment> joined;
  for (std::size_t i = 0; i < segments.size(); ++i) {
    const bool between = segments[i].kind == 'B' && Length(segments[i]) == 1 && !joined.empty() &&
                         joined.back().kind == 'T' && i + 1 < segments.size() && segments[i + 1].kind == 'T';
    if (between && Length(joined.back()) + Length(segments[i + 1]) >= kMinTextAroundByte) {
      joined.back().end = segments[i].end;
    } else {
      Append(joined, segments[i]);
    }
  }
  return joined;
}

// A short text beside bytes is not worth the latches. What stands on its far side is a numeric segment or
// bytes, never another text, so that no decision depends on the order in which they are taken.
std::vector<PDF417Segment> JoinShortTextToBytes(const std::vector<PDF417Segment>& segments) {
  std::vector<PDF417Segment> joined;
  for (std::size_t i = 0; i < segments.size(); ++i) {
    PDF417Segment segment = segments[i];
    const bool besideBytes =
        (i > 0 && segments[i - 1].kind == 'B') || (i + 1 < segments.size() && segments[i + 1].kind == 'B');
    if (segment.kind == 'T' && Length(segment) < kMinTextLength && besideBytes) {
      segment.kind = 'B';
    }
    Append(joined, segment);
  }
  return joined;
}

}  // namespace

bool IsPDF417Text(char byte) {
  return (byte >= 32 && byte <= 126) || byte == '\r' || byte == '\t' || byte == '\n';
}

std::vector<PDF417Segment> SegmentPDF417(std::string_view text) {
  return JoinShortTextToBytes(JoinTextAroundSingleBytes(Divide(text)));
}

}  // namespace barcode
