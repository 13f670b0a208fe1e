#include "datamatrix/datamatrix.h"

#include <SDL.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>

#include "support/capture.h"

namespace barcode {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr std::uint32_t kBlack32 = 0xFF000000;  // ABGR
constexpr std::uint32_t kWhite32 = 0xFFFFFFFF;
constexpr std::uint32_t kGrey32 = 0xFF808080;

TEST(DataMatrixClass, TellsARefusedText) {
  DataMatrix code("svg");
  const auto captured = test::CaptureInternal([&] { EXPECT_FALSE(code.DrawMatrix("", 0, 0, 100, 100)); });
  EXPECT_EQ(captured.out, "");
  EXPECT_EQ(captured.err,
            "[DataMatrix] Failed to encode data. Data may be empty or contain invalid characters.\n");
}

TEST(DataMatrixClass, DrawsIntoTheCallersRenderer) {
  const SurfacePtr surface(SDL_CreateRGBSurfaceWithFormat(0, 100, 100, 32, SDL_PIXELFORMAT_ABGR8888));
  const RendererPtr renderer(SDL_CreateSoftwareRenderer(surface.get()));
  SDL_FillRect(surface.get(), nullptr, kGrey32);
  DataMatrix code("png");
  code.SetProvidedCanvas(renderer.get());
  const auto captured =
      test::CaptureInternal([&] { EXPECT_TRUE(code.DrawMatrix("123456", 20, 30, 60, 50)); });
  EXPECT_THAT(captured.out,
              StartsWith("[ステップ1] 描画コンテキストを準備します...\n"
                         "  ターゲット: 提供されたウィンドウレンダラー (m_canvas) を使用します。\n"
                         "  パターンサイズ: 10列 x 10行\n"));
  const auto at = [&](int x, int y) {
    const auto* const row =
        static_cast<const std::uint8_t*>(surface->pixels) + std::ptrdiff_t{y} * surface->pitch;
    return reinterpret_cast<const std::uint32_t*>(row)[x];
  };
  EXPECT_EQ(at(19, 30), kGrey32);
  EXPECT_EQ(at(20, 29), kGrey32);
  EXPECT_EQ(at(20, 30), kBlack32);
  EXPECT_EQ(at(25, 30), kWhite32);
  EXPECT_EQ(at(69, 79), kBlack32);
  EXPECT_EQ(at(70, 79), kWhite32);  // the rest of the rectangle
  EXPECT_EQ(at(79, 79), kWhite32);
  EXPECT_EQ(at(80, 79), kGrey32);
  EXPECT_EQ(at(79, 80), kGrey32);
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
