// What happens when SDL fails underneath a draw.
#include <gtest/gtest.h>

#include <string>

#include "faults/interposed.h"
#include "linear/code39.h"
#include "support/capture.h"

namespace barcode {
namespace {

using test::Captured;
using test::CaptureInternal;
using test::Failing;
using test::Fault;

constexpr const char* kFallbackUri =
    "data:image/png;base64,"
    "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVQI12P4//8/AAX+Av7czFnnAAAAAElFTkSuQmCC";

class CanvasFaults : public ::testing::Test {
 protected:
  Code39 code{"png"};

  // Draws while a function fails; the result is checked against `drawn`.
  Captured Draw(Fault fault, bool drawn) {
    return CaptureInternal([&] {
      const Failing failing(fault);
      EXPECT_EQ(code.Draw("A", 0, 0, 100, 50), drawn);
    });
  }
};

TEST_F(CanvasFaults, NoSurface) {
  const Captured captured = Draw(Fault::CreateSurface, false);
  EXPECT_EQ(captured.err, "サーフェス作成に失敗: injected\n");
  EXPECT_EQ(captured.out, "");
  EXPECT_EQ(code.GetImageBase64(), kFallbackUri);
}

TEST_F(CanvasFaults, NoRenderer) {
  const Captured captured = Draw(Fault::CreateRenderer, false);
  EXPECT_EQ(captured.err, "レンダラー作成に失敗: injected\n");
  EXPECT_TRUE(code.GetImageData().empty());
}

TEST_F(CanvasFaults, AFailedCanvasReplacesTheEarlierOne) {
  ASSERT_TRUE(code.Draw("A", 0, 0, 100, 50));
  Draw(Fault::CreateSurface, false);
  EXPECT_TRUE(code.GetImageData().empty());
  EXPECT_TRUE(code.Draw("A", 0, 0, 100, 50));
  EXPECT_FALSE(code.GetImageData().empty());
}

TEST_F(CanvasFaults, NoStreamForThePng) {
  ASSERT_TRUE(code.Draw("A", 0, 0, 100, 50));
  const auto captured = CaptureInternal([&] {
    const Failing failing(Fault::RwFromMem);
    EXPECT_TRUE(code.GetImageData().empty());
  });
  EXPECT_NE(captured.out.find("バッファサイズ確保: 1044000 バイト\nERROR: RWops作成失敗: injected\n"),
            std::string::npos);
  EXPECT_EQ(captured.err, "");
}

TEST_F(CanvasFaults, ThePngEncoderFails) {
  ASSERT_TRUE(code.Draw("A", 0, 0, 100, 50));
  const auto captured = CaptureInternal([&] {
    const Failing failing(Fault::SavePng);
    EXPECT_EQ(code.GetImageBase64(), kFallbackUri);
  });
  EXPECT_NE(captured.out.find(
                "書き込み結果: 失敗\n書き込みサイズ: 0 バイト\nERROR: PNG保存に失敗しました: injected\n"),
            std::string::npos);
}

TEST_F(CanvasFaults, NoMemoryForThePng) {
  ASSERT_TRUE(code.Draw("A", 0, 0, 100, 50));
  std::string uri;
  const auto captured = CaptureInternal([&] {
    const Failing failing(Fault::LargeAllocation);
    uri = code.GetImageBase64();
  });
  EXPECT_EQ(uri, "Error: std::bad_alloc");
  EXPECT_EQ(captured.out,
            "SaveSurfaceToMemory: サーフェスサイズ 100x50\n"
            "SaveSurfaceToMemory: フォーマット SDL_PIXELFORMAT_ABGR8888\n"
            "SaveSurfaceToMemory: ピッチ 400\n");
  EXPECT_FALSE(code.GetImageData().empty());
}

// The document breaks off in its middle; what the host reads is the one before.
TEST_F(CanvasFaults, NoMemoryForTheSvgDocument) {
  code.SetOutputFormat("svg");
  ASSERT_TRUE(code.Draw("A", 0, 0, 100, 50));
  const std::string document = code.GetSvgDocument();
  const std::string text(3000, 'A');
  const Captured captured = CaptureInternal([&] {
    const Failing failing(Fault::LargeAllocation);
    EXPECT_FALSE(code.Draw(text, 0, 0, 100, 50));
  });
  EXPECT_EQ(captured.err, "[Code39] std::bad_alloc\n");
  EXPECT_EQ(captured.out, "");
  EXPECT_EQ(code.GetSvgDocument(), document);
  EXPECT_TRUE(code.Draw(text, 0, 0, 100, 50));
  EXPECT_GT(code.GetSvgDocument().size(), 1'000'000U);
}

TEST_F(CanvasFaults, NoFontOfTheSizeAsked) {
  const Captured captured = Draw(Fault::OpenFont, true);
  EXPECT_EQ(captured.err,
            "OpenEmbeddedRobotoFont: TTF_OpenFontRW failed: injected\n"
            "TTF_OpenFont error: injected\n");
}

TEST_F(CanvasFaults, NoStreamForTheFont) {
  const Captured captured = Draw(Fault::RwFromConstMem, true);
  EXPECT_EQ(captured.err,
            "OpenEmbeddedRobotoFont: SDL_RWFromConstMem failed: injected\n"
            "TTF_OpenFont error: injected\n");
}

TEST_F(CanvasFaults, EveryGlyphThatCannotBeRenderedIsReportedAndSkipped) {
  const Captured captured = Draw(Fault::RenderText, true);
  EXPECT_EQ(captured.err,
            "TTF_RenderUTF8_Blended error: injected\n"
            "TTF_RenderUTF8_Blended error: injected\n"
            "TTF_RenderUTF8_Blended error: injected\n");
}

TEST_F(CanvasFaults, EveryGlyphWithoutTextureIsReportedAndSkipped) {
  const Captured captured = Draw(Fault::CreateTexture, true);
  EXPECT_EQ(captured.err,
            "SDL_CreateTextureFromSurface error: injected\n"
            "SDL_CreateTextureFromSurface error: injected\n"
            "SDL_CreateTextureFromSurface error: injected\n");
}

TEST_F(CanvasFaults, ALineOfOnePieceIsReportedOnce) {
  code.SetTextEvenSpacing(false);
  EXPECT_EQ(Draw(Fault::RenderText, true).err, "TTF_RenderUTF8_Blended error: injected\n");
}

}  // namespace
}  // namespace barcode
