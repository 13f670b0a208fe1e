#include "gs1/databar_14_diagnostics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

namespace barcode {
namespace {

using testing::ElementsAre;

TEST(DataBar14Diagnostics, DescribesOneRow) {
  EXPECT_THAT(
      DescribeDataBar14(EncodeDataBar14("2001234567890", DataBar14Type::kOmnidirectional)),
      ElementsAre(
          "DEBUG DataBar14: m_rowCount=1", "DEBUG DataBar14: m_symbolType=0",
          "DEBUG DataBar14: row 0: height=-1, pattern[0:20]=11113311512741112212, pattern.length=46"));
}

TEST(DataBar14Diagnostics, DescribesStackedRows) {
  EXPECT_THAT(
      DescribeDataBar14(EncodeDataBar14("2001234567890", DataBar14Type::kStacked)),
      ElementsAre("DEBUG encode: row 0 bin[0:20]=01010001110100000100",
                  "DEBUG encode: row 1 bin[0:20]=00001110101011011010",
                  "DEBUG encode: row 2 bin[0:20]=10110000010010100101", "DEBUG DataBar14: m_rowCount=3",
                  "DEBUG DataBar14: m_symbolType=1",
                  "DEBUG DataBar14: row 0: height=5, pattern[0:20]=01111331151274111221, pattern.length=26",
                  "DEBUG DataBar14: row 1: height=1, pattern[0:20]=04311111212112111111, pattern.length=36",
                  "DEBUG DataBar14: row 2: height=7, pattern[0:20]=11251211121128332121, pattern.length=25"));
}

TEST(DataBar14Diagnostics, DescribesTheFormNumber) {
  const auto lines = DescribeDataBar14(EncodeDataBar14("1", DataBar14Type::kStackedOmnidirectional));
  ASSERT_EQ(lines.size(), 12U);
  EXPECT_EQ(lines[5], "DEBUG DataBar14: m_rowCount=5");
  EXPECT_EQ(lines[6], "DEBUG DataBar14: m_symbolType=2");
}

TEST(DataBar14Diagnostics, DescribesTheDraw) {
  const DataBarBox box{3, 5, 200, 130};
  const StackedRoom room{.textSize = 22, .textGap = 4, .rows = 104};
  EXPECT_THAT(DescribeStackedDraw14(box, room, std::array{40.0F, 8.0F, 56.5F}),
              ElementsAre("DEBUG Draw: availableHeight=104, height=130",
                          "DEBUG Draw: textHeight=22, verticalOffset=4",
                          "DEBUG Draw: row 0: thisRowHeight=40, currentY=5",
                          "DEBUG Draw: row 1: thisRowHeight=8, currentY=45",
                          "DEBUG Draw: row 2: thisRowHeight=56.5, currentY=53",
                          "DEBUG Draw: final currentY=109.5, barcode actual height=104.5",
                          "DEBUG Draw: About to call RenderText with x=3, y=5, width=200, height=130"));
}

}  // namespace
}  // namespace barcode
