#include "pdf417/pdf417.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>

#include "core/sdl_ptr.h"
#include "support/capture.h"

namespace barcode {
namespace {

using ::testing::StartsWith;

TEST(PDF417, OptionsReachTheEncoder) {
  PDF417 symbol("svg");
  symbol.SetCodeColumns(4);
  symbol.SetCodeRows(5);
  symbol.SetErrorLevel(6);
  symbol.SetAspectRatio(7.5);
  symbol.SetYHeight(8);
  symbol.SetStringEncoding("shift_jis");
  const test::Captured captured =
      test::CaptureInternal([&] { EXPECT_TRUE(symbol.DrawMatrix("A", 0, 0, 100, 50)); });
  EXPECT_THAT(captured.out,
              StartsWith("C++ props: Encoding=shift_jis, SizeKind=AUTO, CodeColumns=4, CodeRows=5, "
                         "UseAutoErrorLevel=True, ErrorLevel(now)=6, AspectRatio=7.5, YHeight=8\n"));
}

TEST(PDF417, DrawsOnTheCanvasOfTheCaller) {
  constexpr std::uint32_t kUntouched = 0x11223344;
  constexpr std::uint32_t kWhitePixel = 0xFFFFFFFF;
  constexpr std::uint32_t kBlackPixel = 0xFF000000;
  const SurfacePtr surface(SDL_CreateRGBSurfaceWithFormat(0, 300, 60, 32, SDL_PIXELFORMAT_ABGR8888));
  SDL_FillRect(surface.get(), nullptr, kUntouched);
  const RendererPtr canvas(SDL_CreateSoftwareRenderer(surface.get()));
  PDF417 symbol("png");
  symbol.SetProvidedCanvas(canvas.get());
  (void)test::CaptureInternal([&] { EXPECT_TRUE(symbol.DrawMatrix("A", 10, 5, 180, 42)); });
  const auto pixel = [&](std::size_t x, std::size_t y) {
    const auto* const pixels = static_cast<const std::uint32_t*>(surface->pixels);
    return pixels[y * 300 + x];
  };
  // 86 modules of 2 pixels, ten rows of 4; the rest of the box is background.
  EXPECT_EQ(pixel(10, 5), kBlackPixel);
  EXPECT_EQ(pixel(10 + 171, 5 + 39), kBlackPixel);
  EXPECT_EQ(pixel(10 + 172, 5), kWhitePixel);
  EXPECT_EQ(pixel(10, 5 + 40), kWhitePixel);
  EXPECT_EQ(pixel(10 + 179, 5 + 41), kWhitePixel);
  EXPECT_EQ(pixel(9, 5), kUntouched);
  EXPECT_EQ(pixel(10, 4), kUntouched);
  EXPECT_EQ(pixel(10 + 180, 5), kUntouched);
  EXPECT_EQ(pixel(10, 5 + 42), kUntouched);
}

TEST(PDF417, RefusedTextIsReportedAndLeavesNoDocument) {
  PDF417 symbol("svg");
  const test::Captured captured =
      test::CaptureInternal([&] { EXPECT_FALSE(symbol.DrawMatrix("", 0, 0, 100, 50)); });
  EXPECT_EQ(captured.out,
            "C++ props: Encoding=utf-8, SizeKind=AUTO, CodeColumns=0, CodeRows=0, UseAutoErrorLevel=True, "
            "ErrorLevel(now)=2, AspectRatio=0.5, YHeight=3\n"
            "Text cannot be null.\n");
  EXPECT_EQ(captured.err, "[PDF417] Text cannot be null.\n");
  EXPECT_EQ(symbol.GetSvgDocument(), "");
}

}  // namespace
}  // namespace barcode
