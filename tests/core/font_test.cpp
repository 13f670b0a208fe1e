#include "core/font.h"

#include <gtest/gtest.h>

#include <cstring>

#include "support/capture.h"
#include "text/embedded_font.h"

namespace barcode {
namespace {

using test::CaptureInternal;

TEST(Font, EmbeddedFileIsATrueTypeFont) {
  const auto bytes = EmbeddedRobotoFont();
  ASSERT_GT(bytes.size(), 100'000U);
  EXPECT_EQ(std::memcmp(bytes.data(), "\0\1\0\0", 4), 0);
}

TEST(Font, SharedFontIsOpenedOnce) {
  ASSERT_TRUE(InitTextRendering());
  EXPECT_TRUE(IsTextRenderingReady());
  // The font library counts how often it was initialised: once for all that follow.
  EXPECT_TRUE(InitTextRendering());
  EXPECT_EQ(TTF_WasInit(), 1);
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

TEST(Font, FontsOfCommonSizesStayOpen) {
  ASSERT_TRUE(InitTextRendering());
  const FontLibraryLock lock;
  const auto first = SizedRobotoFont(20);
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(SizedRobotoFont(20), first);
  EXPECT_EQ(TTF_GetFontHinting(first.get()), TTF_HINTING_MONO);
  // Large fonts are opened anew, and other sizes push the first one out; whoever holds a font keeps it.
  EXPECT_NE(SizedRobotoFont(500), SizedRobotoFont(500));
  for (int size = 30; size < 60; ++size) {
    ASSERT_NE(SizedRobotoFont(size), nullptr);
  }
  EXPECT_NE(SizedRobotoFont(20), first);
  int width = 0;
  EXPECT_EQ(TTF_SizeUTF8(first.get(), "0", &width, nullptr), 0);
}

TEST(Font, AFontIsTheSizeItWasAskedFor) {
  ASSERT_TRUE(InitTextRendering());
  const FontLibraryLock lock;
  const auto widthAt = [](int size) {
    int width = 0;
    TTF_SizeUTF8(SizedRobotoFont(size).get(), "0000000000", &width, nullptr);
    return width;
  };
  const int small = widthAt(16);
  const int large = widthAt(48);
  EXPECT_EQ(widthAt(16), small);
  EXPECT_NEAR(large, 3 * small, 0.5 * small);
}

}  // namespace
}  // namespace barcode
