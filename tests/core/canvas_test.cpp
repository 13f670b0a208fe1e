#include "core/canvas.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <utility>
#include <vector>

#include "support/capture.h"
#include "support/image.h"

namespace barcode {
namespace {

using test::CaptureInternal;
using test::Image;
using test::Pixel;
using ::testing::Each;
using ::testing::StartsWith;

constexpr Colour kBackground{10, 20, 30, 40};
constexpr Pixel kBackgroundPixel{10, 20, 30, 40};

Image Picture(Canvas& canvas) {
  Image image;
  (void)CaptureInternal([&] { image = test::DecodePng(canvas.Encode()); });
  return image;
}

void FillRectangle(Canvas& canvas, const SDL_Rect& rect, const Colour& colour) {
  SDL_SetRenderDrawColor(canvas.Renderer(), colour.r, colour.g, colour.b, colour.a);
  SDL_RenderFillRect(canvas.Renderer(), &rect);
}

TEST(Canvas, HasNoPictureAtFirst) {
  const Canvas canvas;
  EXPECT_EQ(canvas.Surface(), nullptr);
  EXPECT_EQ(canvas.Renderer(), nullptr);
}

TEST(Canvas, PrepareMakesASurfaceOfTheBackground) {
  Canvas canvas;
  ASSERT_TRUE(canvas.Prepare(7, 5, kBackground));
  ASSERT_NE(canvas.Surface(), nullptr);
  ASSERT_NE(canvas.Renderer(), nullptr);
  EXPECT_EQ(canvas.Surface()->w, 7);
  EXPECT_EQ(canvas.Surface()->h, 5);
  const Image image = Picture(canvas);
  EXPECT_EQ(image.width, 7);
  EXPECT_EQ(image.height, 5);
  EXPECT_THAT(image.pixels, Each(kBackgroundPixel));
}

TEST(Canvas, APictureOfOtherSizeReplacesTheEarlierOne) {
  Canvas canvas;
  ASSERT_TRUE(canvas.Prepare(7, 5, kBackground));
  FillRectangle(canvas, {0, 0, 7, 5}, kBlack);
  ASSERT_TRUE(canvas.Prepare(3, 9, kWhite));
  const Image image = Picture(canvas);
  EXPECT_EQ(image.width, 3);
  EXPECT_EQ(image.height, 9);
  EXPECT_THAT(image.pixels, Each(test::kWhitePixel));
}

TEST(Canvas, WhatIsDrawnIsStoredNotBlended) {
  Canvas canvas;
  ASSERT_TRUE(canvas.Prepare(4, 4, kWhite));
  FillRectangle(canvas, {1, 1, 2, 2}, {200, 0, 0, 100});
  const Image image = Picture(canvas);
  EXPECT_EQ(image.At(0, 0), test::kWhitePixel);
  EXPECT_EQ(image.At(1, 1), (Pixel{200, 0, 0, 100}));
  EXPECT_EQ(image.At(2, 2), (Pixel{200, 0, 0, 100}));
  EXPECT_EQ(image.At(3, 3), test::kWhitePixel);
}

TEST(Canvas, PresentExecutesWhatIsQueued) {
  Canvas canvas;
  ASSERT_TRUE(canvas.Prepare(4, 4, kWhite));
  FillRectangle(canvas, {0, 0, 4, 4}, kBlack);
  canvas.Present();
  EXPECT_EQ(*static_cast<const std::uint32_t*>(canvas.Surface()->pixels), 0xFF000000U);
}

// What was queued before may not come out on top of it.
TEST(Canvas, FillCoversWhatWasDrawnBefore) {
  Canvas canvas;
  ASSERT_TRUE(canvas.Prepare(4, 4, kWhite));
  FillRectangle(canvas, {0, 0, 4, 4}, kBlack);
  canvas.Fill(kBackground);
  EXPECT_THAT(Picture(canvas).pixels, Each(kBackgroundPixel));
  FillRectangle(canvas, {0, 0, 1, 1}, kBlack);
  EXPECT_EQ(Picture(canvas).At(0, 0), test::kBlackPixel);
}

TEST(Canvas, APictureMayBeEncodedAgain) {
  Canvas canvas;
  ASSERT_TRUE(canvas.Prepare(4, 4, kBackground));
  const Image first = Picture(canvas);
  EXPECT_EQ(Picture(canvas), first);
}

TEST(Canvas, ReleaseEndsThePicture) {
  Canvas canvas;
  ASSERT_TRUE(canvas.Prepare(4, 4, kWhite));
  canvas.Release();
  EXPECT_EQ(canvas.Surface(), nullptr);
  EXPECT_EQ(canvas.Renderer(), nullptr);
  canvas.Release();
  ASSERT_TRUE(canvas.Prepare(4, 4, kWhite));
  EXPECT_EQ(Picture(canvas).width, 4);
}

TEST(Canvas, WithoutAPictureThereIsNothingToDo) {
  Canvas canvas;
  std::vector<std::uint8_t> png = {1};
  const auto captured = CaptureInternal([&] {
    canvas.Fill(kWhite);
    canvas.Present();
    png = canvas.Encode();
  });
  EXPECT_TRUE(png.empty());
  EXPECT_EQ(captured.out, "ERROR: サーフェスがnullです\n");
  EXPECT_EQ(captured.err, "");
}

TEST(Canvas, ASizeThatNoSurfaceHasLeavesNoPicture) {
  Canvas canvas;
  constexpr std::uint32_t kNegative = 0xFFFFFFFF;
  for (const auto& [width, height] : {std::pair{kNegative, 10U}, std::pair{10U, kNegative},
                                      std::pair{23171U, 23170U}, std::pair{0x7FFFFFFFU, 0x7FFFFFFFU}}) {
    ASSERT_TRUE(canvas.Prepare(4, 4, kWhite));
    const auto captured =
        CaptureInternal([&, w = width, h = height] { EXPECT_FALSE(canvas.Prepare(w, h, kWhite)); });
    EXPECT_THAT(captured.err, StartsWith("サーフェス作成に失敗: "));
    EXPECT_GT(captured.err.size(), sizeof "サーフェス作成に失敗: ");
    EXPECT_EQ(captured.out, "");
    EXPECT_EQ(canvas.Surface(), nullptr);
    EXPECT_EQ(canvas.Renderer(), nullptr);
  }
}

}  // namespace
}  // namespace barcode
