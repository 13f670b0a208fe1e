#include "datamatrix/options.h"

#include <gtest/gtest.h>

#include <string>

namespace barcode::datamatrix {
namespace {

TEST(DataMatrixOptions, SizeKeywordsAreRowsByColumns) {
  for (std::size_t place = 0; place < kSymbolSizes.size(); ++place) {
    const SymbolSize& size = kSymbolSizes[place];
    EXPECT_EQ(FindKeyword(kSizeKeywords, std::to_string(size.rows) + "x" + std::to_string(size.columns)),
              place);
  }
  EXPECT_EQ(FindKeyword(kSizeKeywords, "AUTO"), std::nullopt);
  EXPECT_EQ(FindKeyword(kSizeKeywords, "11x11"), std::nullopt);
}

TEST(DataMatrixOptions, SchemeKeywords) {
  EXPECT_EQ(FindKeyword(kSchemeKeywords, "ASCII"), Scheme::kAscii);
  EXPECT_EQ(FindKeyword(kSchemeKeywords, "C40"), Scheme::kC40);
  EXPECT_EQ(FindKeyword(kSchemeKeywords, "TEXT"), Scheme::kText);
  EXPECT_EQ(FindKeyword(kSchemeKeywords, "X12"), Scheme::kX12);
  EXPECT_EQ(FindKeyword(kSchemeKeywords, "EDIFACT"), Scheme::kEdifact);
  EXPECT_EQ(FindKeyword(kSchemeKeywords, "BASE256"), Scheme::kBase256);
  EXPECT_EQ(FindKeyword(kSchemeKeywords, "AUTO"), std::nullopt);
  EXPECT_EQ(FindKeyword(kSchemeKeywords, "BASE64"), std::nullopt);
}

}  // namespace
}  // namespace barcode::datamatrix
