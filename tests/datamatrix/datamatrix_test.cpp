#include "datamatrix/datamatrix.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "support/capture.h"

namespace barcode {
namespace {

using ::testing::HasSubstr;

TEST(DataMatrixClass, TellsARefusedText) {
  DataMatrix code("svg");
  const auto captured = test::CaptureInternal([&] { EXPECT_FALSE(code.DrawMatrix("", 0, 0, 100, 100)); });
  EXPECT_EQ(captured.out, "");
  EXPECT_EQ(captured.err,
            "[DataMatrix] Failed to encode data. Data may be empty or contain invalid characters.\n");
}

TEST(DataMatrixClass, SquareDrawsWithoutConversion) {
  DataMatrix converted("png");
  DataMatrix plain("png");
  const std::string shiftJis = "\x82\xA0";  // three bytes in UTF-8
  const auto draw = test::CaptureInternal([&] { EXPECT_TRUE(converted.DrawSquare(shiftJis, 0, 0, 100)); });
  const auto drawPlain =
      test::CaptureInternal([&] { EXPECT_TRUE(plain.DrawMatrixSquare(shiftJis, 0, 0, 100)); });
  EXPECT_THAT(draw.out, HasSubstr("14列 x 14行"));       // six codewords
  EXPECT_THAT(drawPlain.out, HasSubstr("12列 x 12行"));  // four
}

}  // namespace
}  // namespace barcode
