#include "gs1/databar_14_diagnostics.h"

#include <gtest/gtest.h>

#include <array>
#include <stdexcept>
#include <string>
#include <string_view>

namespace barcode {
namespace {

std::string LinesOf(std::string_view text, DataBar14Type type) {
  EncoderLines lines;
  EncodeDataBar14(text, type, lines);
  return lines.Text();
}

TEST(DataBar14Diagnostics, DescribesOneRow) {
  EXPECT_EQ(LinesOf("2001234567890", DataBar14Type::kOmnidirectional),
            "DEBUG DataBar14: m_rowCount=1\n"
            "DEBUG DataBar14: m_symbolType=0\n"
            "DEBUG DataBar14: row 0: height=-1, pattern[0:20]=11113311512741112212, pattern.length=46\n");
}

TEST(DataBar14Diagnostics, DescribesStackedRows) {
  EXPECT_EQ(LinesOf("2001234567890", DataBar14Type::kStacked),
            "DEBUG encode: row 0 bin[0:20]=01010001110100000100\n"
            "DEBUG encode: row 1 bin[0:20]=00001110101011011010\n"
            "DEBUG encode: row 2 bin[0:20]=10110000010010100101\n"
            "DEBUG DataBar14: m_rowCount=3\n"
            "DEBUG DataBar14: m_symbolType=1\n"
            "DEBUG DataBar14: row 0: height=5, pattern[0:20]=01111331151274111221, pattern.length=26\n"
            "DEBUG DataBar14: row 1: height=1, pattern[0:20]=04311111212112111111, pattern.length=36\n"
            "DEBUG DataBar14: row 2: height=7, pattern[0:20]=11251211121128332121, pattern.length=25\n");
}

TEST(DataBar14Diagnostics, DescribesTheFiveRowsOfTheOtherStackedForm) {
  EXPECT_EQ(LinesOf("2001234567890", DataBar14Type::kStackedOmnidirectional),
            "DEBUG encode: row 0 bin[0:20]=01010001110100000100\n"
            "DEBUG encode: row 1 bin[0:20]=00001110001011111010\n"
            "DEBUG encode: row 2 bin[0:20]=00000101010101010101\n"
            "DEBUG encode: row 3 bin[0:20]=00001111101101011010\n"
            "DEBUG encode: row 4 bin[0:20]=10110000010010100101\n"
            "DEBUG DataBar14: m_rowCount=5\n"
            "DEBUG DataBar14: m_symbolType=2\n"
            "DEBUG DataBar14: row 0: height=-1, pattern[0:20]=01111331151274111221, pattern.length=26\n"
            "DEBUG DataBar14: row 1: height=1, pattern[0:20]=04331151181112112212, pattern.length=22\n"
            "DEBUG DataBar14: row 2: height=1, pattern[0:20]=05111111111111111111, pattern.length=44\n"
            "DEBUG DataBar14: row 3: height=1, pattern[0:20]=04512111211211111114, pattern.length=28\n"
            "DEBUG DataBar14: row 4: height=-1, pattern[0:20]=11251211121128332121, pattern.length=25\n");
}

TEST(DataBar14Diagnostics, SaysNothingOfRefusedText) {
  EncoderLines lines;
  EXPECT_THROW(EncodeDataBar14("12A", DataBar14Type::kStacked, lines), std::invalid_argument);
  EXPECT_TRUE(lines.Empty());
}

TEST(DataBar14Diagnostics, DescribesTheDraw) {
  const Box box{3, 5, 200, 130};
  const StackedRoom room{.textSize = 22, .textGap = 4, .rows = 104};
  EncoderLines lines;
  DescribeStackedDraw14(box, room, std::array{40.0F, 8.0F, 56.5F}, lines);
  EXPECT_EQ(lines.Text(),
            "DEBUG Draw: availableHeight=104, height=130\n"
            "DEBUG Draw: textHeight=22, verticalOffset=4\n"
            "DEBUG Draw: row 0: thisRowHeight=40, currentY=5\n"
            "DEBUG Draw: row 1: thisRowHeight=8, currentY=45\n"
            "DEBUG Draw: row 2: thisRowHeight=56.5, currentY=53\n"
            "DEBUG Draw: final currentY=109.5, barcode actual height=104.5\n"
            "DEBUG Draw: About to call RenderText with x=3, y=5, width=200, height=130\n");
}

}  // namespace
}  // namespace barcode
