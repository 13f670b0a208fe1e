#include "pdf417/segments.h"

#include "base/ascii.h"

namespace barcode::pdf417 {
namespace {

constexpr std::size_t kMinNumericLength = 13;
constexpr std::size_t kMinTextLength = 5;
constexpr std::size_t kMinTextAroundByte = 3;

std::size_t Length(const Segment& segment) {
  return segment.end - segment.start;
}

// Appends a segment that continues where the last one ends; equal neighbours become one.
void Append(std::vector<Segment>& segments, const Segment& segment) {
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
std::vector<Segment> DivideByKind(std::string_view text) {
  std::vector<Segment> segments;
  std::size_t start = 0;
  while (start < text.size()) {
    const std::size_t digitsEnd = DigitRunEnd(text, start);
    if (digitsEnd - start >= kMinNumericLength) {
      Append(segments, {SegmentKind::kDigits, start, digitsEnd});
      start = digitsEnd;
    } else if (digitsEnd > start) {
      Append(segments, {SegmentKind::kText, start, digitsEnd});
      start = digitsEnd;
    } else {
      Append(segments, {IsText(text[start]) ? SegmentKind::kText : SegmentKind::kBytes, start, start + 1});
      ++start;
    }
  }
  return segments;
}

// A single byte between two texts of some length is cheaper shifted to than latched to and back.
std::vector<Segment> JoinTextAroundSingleBytes(const std::vector<Segment>& segments) {
  std::vector<Segment> joined;
  for (std::size_t i = 0; i < segments.size(); ++i) {
    const bool between = segments[i].kind == SegmentKind::kBytes && Length(segments[i]) == 1 &&
                         !joined.empty() && joined.back().kind == SegmentKind::kText &&
                         i + 1 < segments.size() && segments[i + 1].kind == SegmentKind::kText;
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
std::vector<Segment> JoinShortTextToBytes(const std::vector<Segment>& segments) {
  std::vector<Segment> joined;
  for (std::size_t i = 0; i < segments.size(); ++i) {
    Segment segment = segments[i];
    const bool besideBytes = (i > 0 && segments[i - 1].kind == SegmentKind::kBytes) ||
                             (i + 1 < segments.size() && segments[i + 1].kind == SegmentKind::kBytes);
    if (segment.kind == SegmentKind::kText && Length(segment) < kMinTextLength && besideBytes) {
      segment.kind = SegmentKind::kBytes;
    }
    Append(joined, segment);
  }
  return joined;
}

}  // namespace

bool IsText(char byte) {
  return (byte >= 32 && byte <= 126) || byte == '\r' || byte == '\t' || byte == '\n';
}

std::vector<Segment> DivideIntoSegments(std::string_view text) {
  return JoinShortTextToBytes(JoinTextAroundSingleBytes(DivideByKind(text)));
}

}  // namespace barcode::pdf417
