#include "core/png_writer.h"

#include <gtest/gtest.h>

#include "core/sdl_ptr.h"
#include "support/capture.h"
#include "support/image.h"

namespace barcode {
namespace {

using test::CaptureInternal;

SurfacePtr MakeSurface(int width, int height) {
  return SurfacePtr(SDL_CreateRGBSurfaceWithFormat(0, width, height, 32, SDL_PIXELFORMAT_ABGR8888));
}

TEST(PngWriter, NoSurface) {
  std::vector<std::uint8_t> png = {1};
  const auto captured = CaptureInternal([&] { png = SaveSurfaceToMemory(nullptr); });
  EXPECT_TRUE(png.empty());
  EXPECT_EQ(captured.out, "ERROR: サーフェスがnullです\n");
  EXPECT_EQ(captured.err, "");
}

TEST(PngWriter, ReportsEveryStep) {
  const SurfacePtr surface = MakeSurface(3, 2);
  std::vector<std::uint8_t> png;
  const auto captured = CaptureInternal([&] { png = SaveSurfaceToMemory(surface.get()); });
  const std::string size = std::to_string(png.size());
  EXPECT_EQ(captured.out,
            "SaveSurfaceToMemory: サーフェスサイズ 3x2\n"
            "SaveSurfaceToMemory: フォーマット SDL_PIXELFORMAT_ABGR8888\n"
            "SaveSurfaceToMemory: ピッチ 12\n"
            "バッファサイズ確保: 1024024 バイト\n"
            "書き込み結果: 成功\n"
            "書き込みサイズ: " +
                size +
                " バイト\n"
                "最終バッファサイズ: " +
                size +
                " バイト\n"
                "バッファ先頭: 89 50 4e 47 0d 0a 1a 0a 00 00 00 0d 49 48 44 52\n");
  const test::Image image = test::DecodePng(png);
  EXPECT_EQ(image.width, 3);
  EXPECT_EQ(image.height, 2);
}

TEST(PngWriter, AnEmptySurfaceCannotBeEncoded) {
  const SurfacePtr surface = MakeSurface(0, 5);
  std::vector<std::uint8_t> png = {1};
  const auto captured = CaptureInternal([&] { png = SaveSurfaceToMemory(surface.get()); });
  EXPECT_TRUE(png.empty());
  EXPECT_NE(captured.out.find("書き込み結果: 失敗\n書き込みサイズ: "), std::string::npos);
  EXPECT_NE(captured.out.find("ERROR: PNG保存に失敗しました: Error writing the PNG file.\n"),
            std::string::npos);
}

}  // namespace
}  // namespace barcode
