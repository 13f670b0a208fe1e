#include "mkbarcode/library/drawn_width.h"

#include <gtest/gtest.h>

namespace barcode::tool {
namespace {

TEST(DrawnWidth, IsThatOfTheSizeReport) {
  EXPECT_EQ(PrintedWidth("指定サイズ: width=100, height=50\n実際の描画サイズ: width=69.9702\nmore\n"),
            69.9702);
  EXPECT_EQ(PrintedWidth("指定サイズ: width=100, height=50\n"), std::nullopt);
  EXPECT_EQ(PrintedWidth(""), std::nullopt);
}

TEST(DrawnWidth, IsWhereTheRightmostBarOfADocumentEnds) {
  const std::string background =
      "<rect x=\"0.00\" y=\"0.00\" width=\"500.00\" height=\"9.00\" fill=\"white\"/>\n";
  EXPECT_EQ(WidthOfDocument(background), 0);
  EXPECT_EQ(WidthOfDocument(background + "<rect x=\"7.50\" y=\"0.00\" width=\"2.25\" height=\"9.00\"/>\n" +
                            "<rect x=\"1.00\" y=\"0.00\" width=\"3.00\" height=\"9.00\"/>\n"),
            9.75);
  EXPECT_EQ(WidthOfDocument(""), 0);
}

}  // namespace
}  // namespace barcode::tool
