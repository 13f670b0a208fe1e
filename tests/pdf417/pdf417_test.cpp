#include "pdf417/pdf417.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>

#include "core/sdl_ptr.h"
#include "support/capture.h"

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

TEST(PDF417, RefusedTextLeavesNoDocument) {
  PDF417 symbol("svg");
  (void)test::CaptureInternal([&] { EXPECT_FALSE(symbol.DrawMatrix("", 0, 0, 100, 50)); });
  EXPECT_EQ(symbol.GetSvgDocument(), "");
}

}  // namespace
}  // namespace barcode
