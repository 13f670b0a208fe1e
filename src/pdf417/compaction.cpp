#include "pdf417/compaction.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "pdf417/text_compaction.h"

namespace barcode::pdf417 {
namespace {

constexpr int kLatchToText = 900;
constexpr int kLatchToByte = 901;
constexpr int kLatchToNumeric = 902;
constexpr int kLatchToByteMultipleOf6 = 924;

constexpr unsigned kBase = 900;
constexpr std::size_t kBytesPerGroup = 6;
constexpr std::size_t kCodewordsPerByteGroup = 5;
constexpr std::size_t kDigitsPerGroup = 44;
constexpr std::size_t kMaxCodewordsPerDigitGroup = kDigitsPerGroup / 3 + 1;

// Six bytes as five digits of base 900.
void AppendByteGroup(std::vector<int>& codewords, std::string_view bytes) {
  std::uint64_t value = 0;
  for (const char byte : bytes) {
    value = value << 8U | static_cast<unsigned char>(byte);
  }
  std::array<int, kCodewordsPerByteGroup> digits{};
  for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit) {
    *digit = static_cast<int>(value % kBase);
    value /= kBase;
  }
  codewords.insert(codewords.end(), digits.begin(), digits.end());
}

void AppendByteSegment(std::vector<int>& codewords, std::string_view bytes) {
  codewords.push_back(bytes.size() % kBytesPerGroup == 0 ? kLatchToByteMultipleOf6 : kLatchToByte);
  while (bytes.size() >= kBytesPerGroup) {
    AppendByteGroup(codewords, bytes.substr(0, kBytesPerGroup));
    bytes.remove_prefix(kBytesPerGroup);
  }
  for (const char byte : bytes) {
    codewords.push_back(static_cast<unsigned char>(byte));
  }
}

// Up to 44 digits with a 1 in front as a number of base 900.
void AppendDigitGroup(std::vector<int>& codewords, std::string_view digits) {
  std::array<unsigned, kMaxCodewordsPerDigitGroup> number{};  // least significant digit first
  const std::size_t length = digits.size() / 3 + 1;
  number[0] = 1;
  for (const char digit : digits) {
    auto carry = static_cast<unsigned>(digit - '0');
    for (std::size_t i = 0; i < length; ++i) {
      const unsigned value = number[i] * 10 + carry;
      number[i] = value % kBase;
      carry = value / kBase;
    }
  }
  for (std::size_t i = length; i > 0; --i) {
    codewords.push_back(static_cast<int>(number[i - 1]));
  }
}

void AppendDigitSegment(std::vector<int>& codewords, std::string_view digits) {
  codewords.push_back(kLatchToNumeric);
  while (!digits.empty()) {
    const std::size_t length = std::min(digits.size(), kDigitsPerGroup);
    AppendDigitGroup(codewords, digits.substr(0, length));
    digits.remove_prefix(length);
  }
}

void AppendTextSegment(std::vector<int>& codewords, std::string_view text) {
  if (!codewords.empty()) {
    codewords.push_back(kLatchToText);
  }
  AppendText(codewords, text);
}

}  // namespace

std::vector<int> Compact(std::string_view text, std::span<const Segment> segments) {
  std::vector<int> codewords;
  for (const Segment& segment : segments) {
    const std::string_view part = text.substr(segment.start, segment.end - segment.start);
    switch (segment.kind) {
      case SegmentKind::kDigits:
        AppendDigitSegment(codewords, part);
        break;
      case SegmentKind::kBytes:
        AppendByteSegment(codewords, part);
        break;
      case SegmentKind::kText:
        AppendTextSegment(codewords, part);
        break;
    }
  }
  return codewords;
}

}  // namespace barcode::pdf417
