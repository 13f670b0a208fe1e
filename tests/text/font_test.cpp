#include "text/font.h"

#include <gtest/gtest.h>

#include <cstring>

#include "support/capture.h"

namespace barcode {
namespace {

using test::CaptureInternal;

TEST(Font, EmbeddedFileIsATrueTypeFont) {
  const auto bytes = EmbeddedRobotoFont();
  ASSERT_GT(bytes.size(), 100'000U);
  EXPECT_EQ(std::memcmp(bytes.data(), "\0\1\0\0", 4), 0);
}

TEST(Font, SharedFontIsOpenedOnce) {
  EXPECT_TRUE(InitTextRendering());
  EXPECT_TRUE(IsTextRenderingReady());
  EXPECT_TRUE(InitTextRendering());
}

TEST(Font, OpensAtTheSizeAsked) {
  ASSERT_TRUE(InitTextRendering());
  const FontPtr small = OpenEmbeddedRobotoFont(10);
  const FontPtr large = OpenEmbeddedRobotoFont(40);
  ASSERT_TRUE(small != nullptr && large != nullptr);
  EXPECT_STREQ(TTF_FontFaceFamilyName(small.get()), "Roboto Condensed");
  int smallWidth = 0;
  int largeWidth = 0;
  ASSERT_EQ(TTF_SizeUTF8(small.get(), "00000000", &smallWidth, nullptr), 0);
  ASSERT_EQ(TTF_SizeUTF8(large.get(), "00000000", &largeWidth, nullptr), 0);
  EXPECT_NEAR(largeWidth, 4 * smallWidth, smallWidth);
}

TEST(Font, ASizeBeyondTheFontLibraryFailsWithALine) {
  ASSERT_TRUE(InitTextRendering());
  for (const int size : {100'000, 2'147'483'647}) {
    FontPtr font;
    const auto captured = CaptureInternal([&] { font = OpenEmbeddedRobotoFont(size); });
    EXPECT_EQ(font, nullptr);
    EXPECT_EQ(captured.err.find("OpenEmbeddedRobotoFont: TTF_OpenFontRW failed: "), 0U) << captured.err;
  }
}

}  // namespace
}  // namespace barcode
