#include "pdf417/pdf417.h"

#include <gtest/gtest.h>

namespace barcode {
namespace {

TEST(PDF417, RowsAndColumnsAreExchangedForTheEncoder) {
  EXPECT_EQ(PDF417::EncoderSizeKind(PDF417::SizeKind::kAuto), PDF417SizeKind::kAuto);
  EXPECT_EQ(PDF417::EncoderSizeKind(PDF417::SizeKind::kRows), PDF417SizeKind::kColumns);
  EXPECT_EQ(PDF417::EncoderSizeKind(PDF417::SizeKind::kColumns), PDF417SizeKind::kRows);
  EXPECT_EQ(PDF417::EncoderSizeKind(PDF417::SizeKind::kColumnsAndRows), PDF417SizeKind::kColumnsAndRows);
}

TEST(PDF417, OptionsReachTheEncoder) {
  PDF417 symbol("png");
  symbol.SetCodeColumns(4);
  symbol.SetCodeRows(5);
  symbol.SetErrorLevel(6);
  symbol.SetAspectRatio(7.5);
  symbol.SetYHeight(8);
  symbol.SetStringEncoding("shift_jis");
  const PDF417Options options = symbol.EncoderOptions();
  EXPECT_EQ(options.sizeKind, PDF417SizeKind::kAuto);
  EXPECT_TRUE(options.useAutoErrorLevel);
  EXPECT_EQ(options.codeColumns, 4);
  EXPECT_EQ(options.codeRows, 5);
  EXPECT_EQ(options.errorLevel, 6);
  EXPECT_EQ(options.aspectRatio, 7.5);
  EXPECT_EQ(options.yHeight, 8);
  EXPECT_EQ(options.stringEncoding, "shift_jis");
}

}  // namespace
}  // namespace barcode
