#include "core/barcode_base_2d.h"

#include <gtest/gtest.h>

#include "support/capture.h"

namespace barcode {
namespace {

using test::Captured;
using test::CaptureInternal;

// One dark module; reports what it was asked to draw.
class Dot : public BarcodeBase2D {
 public:
  using BarcodeBase2D::BarcodeBase2D;

  bool DrawMatrix(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) override {
    drawnText = text;
    auto target = PrepareTarget(x, y, width, height, silent ? Progress::kSilent : Progress::kPrinted);
    if (!target) {
      return false;
    }
    box = {target->x, target->y, static_cast<int>(target->width), static_cast<int>(target->height)};
    ModuleMatrix matrix(1, 1);
    matrix.Set(0, 0, true);
    FillTarget(*target);
    PaintModules(*target, matrix, {2, 3}, 0);
    FinishTarget(*target);
    return true;
  }

  bool silent = false;
  std::string drawnText;
  SDL_Rect box{};
};

std::uint32_t PixelAt(const SDL_Surface& surface, int x, int y) {
  const auto* row = static_cast<const std::uint8_t*>(surface.pixels) + std::ptrdiff_t{y} * surface.pitch;
  return reinterpret_cast<const std::uint32_t*>(row)[x];
}

constexpr std::uint32_t kOpaqueBlack = 0xFF000000;
constexpr std::uint32_t kOpaqueWhite = 0xFFFFFFFF;
constexpr std::uint32_t kUntouched = 0xFF112233;

TEST(BarcodeBase2D, DrawConvertsTheTextAndDrawMatrixDoesNot) {
  Dot dot("png");
  const std::string sjis = "\x82\xA0";
  const std::string utf8 = "\xE3\x81\x82";
  CaptureInternal([&] {
    EXPECT_TRUE(dot.Draw(sjis, 0, 0, 4, 4));
    EXPECT_EQ(dot.drawnText, utf8);
    EXPECT_TRUE(dot.DrawSquare(sjis, 0, 0, 4));
    EXPECT_EQ(dot.drawnText, utf8);
    EXPECT_TRUE(dot.DrawMatrixSquare(sjis, 0, 0, 4));
    EXPECT_EQ(dot.drawnText, sjis);
    dot.SetStringEncoding("Shift-JIS");
    EXPECT_TRUE(dot.Draw(utf8, 0, 0, 4, 4));
    EXPECT_EQ(dot.drawnText, sjis);
  });
}

TEST(BarcodeBase2D, WithoutADrawOfItsOwnNothingIsDrawn) {
  BarcodeBase2D base("png");
  EXPECT_FALSE(base.Draw("A", 0, 0, 4, 4));
  EXPECT_FALSE(base.DrawMatrix("A", 0, 0, 4, 4));
  EXPECT_FALSE(base.DrawMatrixSquare("A", 0, 0, 4));
  EXPECT_FALSE(base.DrawSquare("A", 0, 0, 4));
  EXPECT_FALSE(base.DrawSvg("A", 0, 0, 4, 4));
}

TEST(BarcodeBase2D, ADrawReportsItsTarget) {
  Dot dot("png");
  const Captured captured = CaptureInternal([&] { EXPECT_TRUE(dot.Draw("A", 5, 6, 7, 8)); });
  EXPECT_EQ(captured.out,
            "[ステップ1] 描画コンテキストを準備します...\n"
            "  ターゲット: 画像ファイル用サーフェス (m_surface) の準備を開始します...\n"
            "  BarcodeBase::Draw 呼び出し完了。\n"
            "  サーフェス (サイズ 7x8) を使用します。\n");
  EXPECT_EQ(captured.err, "");
  // The symbol stands at the corner of its own surface, whatever the x and y.
  EXPECT_EQ(dot.box.x, 0);
  EXPECT_EQ(dot.box.y, 0);
  EXPECT_EQ(dot.box.w, 7);
  EXPECT_EQ(dot.box.h, 8);
}

TEST(BarcodeBase2D, WithoutFormatThereIsNoTarget) {
  Dot dot("");
  const Captured captured = CaptureInternal([&] { EXPECT_FALSE(dot.Draw("A", 0, 0, 7, 8)); });
  EXPECT_EQ(captured.out,
            "[ステップ1] 描画コンテキストを準備します...\n"
            "エラー: 描画コンテキストが指定されていません (m_canvas も m_format も無効)。\n");
}

TEST(BarcodeBase2D, ASilentDrawPrintsNothing) {
  Dot dot("png");
  dot.silent = true;
  Dot failing("");
  failing.silent = true;
  Dot unknown("gif");
  unknown.silent = true;
  const Captured captured = CaptureInternal([&] {
    EXPECT_TRUE(dot.Draw("A", 0, 0, 7, 8));
    EXPECT_FALSE(failing.Draw("A", 0, 0, 7, 8));
    EXPECT_FALSE(unknown.Draw("A", 0, 0, 7, 8));
  });
  EXPECT_EQ(captured.out, "");
  EXPECT_EQ(captured.err, "");
}

TEST(BarcodeBase2D, ARendererOfTheCallerIsDrawnToAtThePlaceAskedFor) {
  const SurfacePtr surface(SDL_CreateRGBSurfaceWithFormat(0, 20, 20, 32, SDL_PIXELFORMAT_ABGR8888));
  const RendererPtr renderer(SDL_CreateSoftwareRenderer(surface.get()));
  ASSERT_NE(renderer, nullptr);
  SDL_FillRect(surface.get(), nullptr, kUntouched);

  Dot dot("");  // no format is needed then
  dot.SetProvidedCanvas(renderer.get());
  const Captured captured = CaptureInternal([&] { EXPECT_TRUE(dot.Draw("A", 5, 6, 7, 8)); });
  EXPECT_EQ(captured.out,
            "[ステップ1] 描画コンテキストを準備します...\n"
            "  ターゲット: 提供されたウィンドウレンダラー (m_canvas) を使用します。\n");
  EXPECT_EQ(PixelAt(*surface, 5, 6), kOpaqueBlack);
  EXPECT_EQ(PixelAt(*surface, 6, 8), kOpaqueBlack);
  EXPECT_EQ(PixelAt(*surface, 7, 8), kOpaqueWhite);
  EXPECT_EQ(PixelAt(*surface, 6, 9), kOpaqueWhite);
  EXPECT_EQ(PixelAt(*surface, 11, 13), kOpaqueWhite);
  EXPECT_EQ(PixelAt(*surface, 12, 13), kUntouched);
  EXPECT_EQ(PixelAt(*surface, 4, 6), kUntouched);

  dot.SetProvidedCanvas(nullptr);
  CaptureInternal([&] { EXPECT_FALSE(dot.Draw("A", 5, 6, 7, 8)); });
}

}  // namespace
}  // namespace barcode
