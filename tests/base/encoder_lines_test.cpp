#include "base/encoder_lines.h"

#include <gtest/gtest.h>

namespace barcode {
namespace {

TEST(EncoderLines, AreEmptyAtFirst) {
  const EncoderLines lines;
  EXPECT_TRUE(lines.Empty());
  EXPECT_EQ(lines.Text(), "");
}

TEST(EncoderLines, EachLineGetsItsBreakInOrder) {
  EncoderLines lines;
  lines.Add("first");
  EXPECT_EQ(lines.Text(), "first\n");
  lines.Add("columns=", 4, ", ratio=", 0.5);
  EXPECT_EQ(lines.Text(), "first\ncolumns=4, ratio=0.5\n");
  EXPECT_FALSE(lines.Empty());
}

TEST(EncoderLines, ALineWithoutPiecesIsALine) {
  EncoderLines lines;
  lines.Add();
  EXPECT_FALSE(lines.Empty());
  EXPECT_EQ(lines.Text(), "\n");
}

}  // namespace
}  // namespace barcode
