#include "pdf417/segments.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace barcode::pdf417 {
namespace {

char LetterOf(SegmentKind kind) {
  switch (kind) {
    case SegmentKind::kText:
      return 'T';
    case SegmentKind::kBytes:
      return 'B';
    case SegmentKind::kDigits:
      return 'N';
  }
  return '?';
}

// Kind and length of every segment: "T5 N13".
std::string Outline(std::string_view text) {
  std::string outline;
  std::size_t end = 0;
  for (const Segment& segment : DivideIntoSegments(text)) {
    EXPECT_EQ(segment.start, end);
    end = segment.end;
    if (!outline.empty()) {
      outline += ' ';
    }
    outline += LetterOf(segment.kind);
    outline += std::to_string(segment.end - segment.start);
  }
  EXPECT_EQ(end, text.size());
  return outline;
}

struct Case {
  const char* text;
  const char* outline;
};

TEST(PDF417Segments, DigitRuns) {
  for (const auto& [text, outline] : {
           Case{"1234567890123", "N13"},
           Case{"123456789012", "T12"},
           Case{"A1234567890123B", "T1 N13 T1"},
           Case{"A123456789012B", "T14"},
           Case{"1234567890123\xFF"
                "1234567890123",
                "N13 B1 N13"},
           Case{"123456789012\xFF\xFF", "T12 B2"},
       }) {
    EXPECT_EQ(Outline(text), outline) << text;
  }
}

TEST(PDF417Segments, TextAndBytes) {
  for (const auto& [text, outline] : {
           Case{" ~\r\t\nAz09", "T9"},
           Case{"ABCDE\x1F\x7F", "T5 B2"},
           Case{"\x80\xFF\v\f", "B4"},
           Case{"ABCDE\xFF\xFF"
                "ABCDE",
                "T5 B2 T5"},
       }) {
    EXPECT_EQ(Outline(text), outline) << text;
  }
  EXPECT_EQ(Outline(std::string_view("\0\0", 2)), "B2");
  EXPECT_EQ(Outline(""), "");
}

TEST(PDF417Segments, SingleByteBetweenTexts) {
  for (const auto& [text, outline] : {
           Case{"AB\xFF"
                "C",
                "T4"},
           Case{"A\xFF"
                "BC",
                "T4"},
           Case{"A\xFF"
                "B",
                "B3"},  // two characters of text are too few
           Case{"AB\xFF"
                "C\xFE"
                "D",
                "T6"},  // the joined text counts as a whole
           Case{"AB\xFF\xFE"
                "CD",
                "B6"},                  // two bytes are not shifted to
           Case{"ABCDE\xFF", "T5 B1"},  // nothing behind it
           Case{"\xFF"
                "ABCDE",
                "B1 T5"},  // nothing before it
           Case{"ABCDE\xFF"
                "1234567890123",
                "T5 B1 N13"},  // digits are no text
       }) {
    EXPECT_EQ(Outline(text), outline) << text;
  }
}

TEST(PDF417Segments, ShortTextBesideBytes) {
  for (const auto& [text, outline] : {
           Case{"ABCD\xFF\xFF", "B6"},
           Case{"ABCDE\xFF\xFF", "T5 B2"},
           Case{"\xFF\xFF"
                "ABCD",
                "B6"},
           Case{"\xFF\xFF"
                "ABCD\xFF\xFF"
                "EF\xFF\xFF",
                "B12"},
           Case{"\xFF\xFF"
                "ABCD1234567890123",
                "B6 N13"},
           Case{"1234567890123ABCD1234567890123", "N13 T4 N13"},
           Case{"1234567890123ABCD\xFF\xFF", "N13 B6"},
       }) {
    EXPECT_EQ(Outline(text), outline) << text;
  }
}

TEST(PDF417Segments, NoEqualNeighboursWhateverTheText) {
  std::mt19937 random(417);
  const std::string_view alphabet = "A1111111111111111\xFF\xFE";
  for (int i = 0; i < 20000; ++i) {
    std::string text(random() % 60, ' ');
    for (char& c : text) {
      c = alphabet[random() % alphabet.size()];
    }
    const auto segments = DivideIntoSegments(text);
    for (std::size_t k = 0; k < segments.size(); ++k) {
      const Segment& segment = segments[k];
      ASSERT_LT(segment.start, segment.end);
      ASSERT_EQ(segment.start, k == 0 ? 0 : segments[k - 1].end);
      ASSERT_TRUE(k == 0 || segments[k - 1].kind != segment.kind) << text;
      const bool besideBytes = (k > 0 && segments[k - 1].kind == SegmentKind::kBytes) ||
                               (k + 1 < segments.size() && segments[k + 1].kind == SegmentKind::kBytes);
      ASSERT_FALSE(segment.kind == SegmentKind::kText && besideBytes && segment.end - segment.start < 5)
          << text;
    }
  }
}

}  // namespace
}  // namespace barcode::pdf417
