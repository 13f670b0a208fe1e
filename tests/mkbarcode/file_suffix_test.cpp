#include "mkbarcode/file_suffix.h"

#include <gtest/gtest.h>

namespace barcode::tool {
namespace {

TEST(FileSuffix, IsFoundInAnyCase) {
  EXPECT_TRUE(HasSuffix("rows.csv", ".CSV"));
  EXPECT_TRUE(HasSuffix("ROWS.CsV", ".CSV"));
  EXPECT_TRUE(HasSuffix(".csv", ".CSV"));
  EXPECT_FALSE(HasSuffix("rows.csv.gz", ".CSV"));
  EXPECT_FALSE(HasSuffix("rowscsv", ".CSV"));
  EXPECT_FALSE(HasSuffix("csv", ".CSV"));
  EXPECT_FALSE(HasSuffix("", ".CSV"));
}

}  // namespace
}  // namespace barcode::tool
