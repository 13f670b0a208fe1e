#include "qr/qr_options.h"

#include <gtest/gtest.h>

namespace barcode {
namespace {

TEST(QrOptions, LevelKeywords) {
  EXPECT_EQ(FindKeyword(kQrLevelKeywords, "L"), QrLevel::kL);
  EXPECT_EQ(FindKeyword(kQrLevelKeywords, "M"), QrLevel::kM);
  EXPECT_EQ(FindKeyword(kQrLevelKeywords, "Q"), QrLevel::kQ);
  EXPECT_EQ(FindKeyword(kQrLevelKeywords, "H"), QrLevel::kH);
  EXPECT_EQ(FindKeyword(kQrLevelKeywords, "l"), std::nullopt);
}

TEST(QrOptions, ModeKeywords) {
  EXPECT_EQ(FindKeyword(kQrModeKeywords, "NUMERIC"), QrMode::kNumeric);
  for (const char* const word : {"AUTO", "BYTE", "ALPHANUMERIC", "KANJI"}) {
    EXPECT_EQ(FindKeyword(kQrModeKeywords, word), QrMode::kByte) << word;
  }
  EXPECT_EQ(FindKeyword(kQrModeKeywords, "N"), std::nullopt);
}

}  // namespace
}  // namespace barcode
