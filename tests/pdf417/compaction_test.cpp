#include "pdf417/compaction.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace barcode::pdf417 {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

std::vector<int> CompactText(std::string_view text) {
  return Compact(text, DivideIntoSegments(text));
}

TEST(PDF417Compaction, BytesInGroupsOfSix) {
  // ISO/IEC 15438: the bytes "alcool" are 924 163 238 432 766 244, "alcoolique" 901 and the last four as they
  // are.
  const auto bytes = [](std::string_view text) {
    return Compact(text, std::vector<Segment>{{SegmentKind::kBytes, 0, text.size()}});
  };
  EXPECT_THAT(bytes("alcool"), ElementsAre(924, 163, 238, 432, 766, 244));
  EXPECT_THAT(bytes("alcoolique"), ElementsAre(901, 163, 238, 432, 766, 244, 105, 113, 117, 101));
  EXPECT_THAT(bytes("\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"),
              ElementsAre(924, 429, 11, 71, 222, 855, 429, 11, 71, 222, 855));
  EXPECT_THAT(bytes("\x80"), ElementsAre(901, 128));
}

TEST(PDF417Compaction, DigitsInGroupsOf44) {
  // ISO/IEC 15438: 000213298174000 is 1, 624, 434, 632, 282, 200.
  EXPECT_THAT(CompactText("000213298174000"), ElementsAre(902, 1, 624, 434, 632, 282, 200));
  EXPECT_EQ(CompactText(std::string(44, '9')).size(), 1U + 15);
  EXPECT_EQ(CompactText(std::string(45, '9')).size(), 1U + 15 + 1);
  EXPECT_EQ(CompactText(std::string(47, '9')).size(), 1U + 15 + 2);
  // A group begins anew: one digit in the second group is the 1 in front and the digit.
  EXPECT_EQ(CompactText(std::string(44, '0') + "7").back(), 17);
}

TEST(PDF417Compaction, Latches) {
  // Text that opens the symbol needs none.
  EXPECT_THAT(CompactText("AB"), ElementsAre(1));
  // Text after digits and after bytes begins in upper case again.
  EXPECT_THAT(CompactText("0000000000000AB"), ElementsAre(902, 15, 217, 379, 11, 100, 900, 1));
  EXPECT_THAT(CompactText("\xFF\xFE"
                          "ABCDE"),
              ElementsAre(901, 255, 254, 900, 1, 63, 149));
  EXPECT_THAT(CompactText("ABCDE\xFF\xFE"), ElementsAre(1, 63, 149, 901, 255, 254));
  // A single byte with text on one side only is a segment of its own.
  EXPECT_THAT(CompactText("ABCDE\xFF"), ElementsAre(1, 63, 149, 901, 255));
  EXPECT_THAT(CompactText("ABCDE\xFF"
                          "FG"),
              ElementsAre(1, 63, 149, 913, 255, 156));
}

}  // namespace
}  // namespace barcode::pdf417
