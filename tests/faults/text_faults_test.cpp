// What happens without the font library. Each test runs in a process of its own: the shared font, once open,
// stays.
#include <gtest/gtest.h>

#include "core/font.h"
#include "faults/interposed.h"
#include "gs1/gs1_128.h"
#include "linear/code39.h"
#include "support/capture.h"
#include "support/image.h"
#include "support/svg.h"

namespace barcode {
namespace {

using test::CaptureInternal;
using test::Failing;
using test::Fault;

// Draws a symbol of 200 x 100 with an object that was made while the font library failed.
void ExpectBarsWithoutText(Fault fault, const std::string& lines) {
  ASSERT_FALSE(IsTextRenderingReady()) << "run each of these tests in a process of its own, as ctest does";
  std::unique_ptr<Code39> code;
  const auto construction = CaptureInternal([&] {
    const Failing failing(fault);
    code = std::make_unique<Code39>("png");
  });
  EXPECT_EQ(construction.err, lines);
  const auto drawing = CaptureInternal([&] { EXPECT_TRUE(code->Draw("AB", 0, 0, 200, 100)); });
  EXPECT_EQ(drawing.err, "");
  const test::Image image = test::DecodePng(code->GetImageData());
  EXPECT_EQ(image.At(0, 74), test::kBlackPixel);  // bars of 100 - 20 - 5 pixels: the text's room is kept
  EXPECT_TRUE(test::InkedRows(image, 75).empty());

  // The next construction tries again.
  const auto retry = CaptureInternal([&] { code = std::make_unique<Code39>("png"); });
  EXPECT_EQ(retry.err, "");
  EXPECT_TRUE(code->Draw("AB", 0, 0, 200, 100));
  EXPECT_FALSE(test::InkedRows(test::DecodePng(code->GetImageData()), 75).empty());
}

TEST(TextFaults, NoFontLibrary) {
  ExpectBarsWithoutText(Fault::TtfInit, "SDL_ttfの初期化に失敗: injected\n");
}

TEST(TextFaults, NoSharedFont) {
  ExpectBarsWithoutText(Fault::OpenFont,
                        "OpenEmbeddedRobotoFont: TTF_OpenFontRW failed: injected\n"
                        "フォントの読み込みに失敗: injected\n");
}

TEST(TextFaults, NoStreamForTheSharedFont) {
  ExpectBarsWithoutText(Fault::RwFromConstMem,
                        "OpenEmbeddedRobotoFont: SDL_RWFromConstMem failed: injected\n"
                        "フォントの読み込みに失敗: injected\n");
}

TEST(TextFaults, AnOpenSharedFontIsNotOpenedAgain) {
  ASSERT_TRUE(InitTextRendering());
  const auto captured = CaptureInternal([] {
    const Failing noLibrary(Fault::TtfInit);
    EXPECT_TRUE(InitTextRendering());
    const Code39 code("png");
  });
  EXPECT_EQ(captured.err, "");
  const auto fonts = CaptureInternal([] {
    const Failing noFont(Fault::OpenFont);
    EXPECT_TRUE(InitTextRendering());
    const Code39 code("png");
  });
  EXPECT_EQ(fonts.err, "");
}

class PaymentFormFaults : public ::testing::Test {
 protected:
  const std::string digits = "91912345000000000012345678901234567890123455";
  GS1_128 form{"png"};

  std::string DrawWith(Fault fault) {
    return CaptureInternal([&] {
             const Failing failing(fault);
             EXPECT_TRUE(form.DrawConvenience(digits, 600, 100));
           })
        .err;
  }
};

TEST_F(PaymentFormFaults, NoFontToDrawWith) {
  const std::string open = "OpenEmbeddedRobotoFont: TTF_OpenFontRW failed: injected\n";
  // To measure the sample, to measure a line, to draw.
  EXPECT_EQ(DrawWith(Fault::OpenFont), open + open + open + "OpenEmbeddedRobotoFont error: injected\n");
  const test::Image image = test::DecodePng(form.GetImageData());
  EXPECT_EQ(image.At(0, 59), test::kBlackPixel);  // two lines of size 20 are left out, their room is kept
  EXPECT_TRUE(test::InkedRows(image, 60).empty());
}

TEST_F(PaymentFormFaults, LinesThatCannotBeRenderedAreLeftOut) {
  form.SetTextEvenSpacing(false);
  EXPECT_EQ(DrawWith(Fault::RenderText),
            "TTF_RenderUTF8_Blended error: injected\nTTF_RenderUTF8_Blended error: injected\n");
  EXPECT_EQ(DrawWith(Fault::CreateTexture),
            "SDL_CreateTextureFromSurface error: injected\nSDL_CreateTextureFromSurface error: injected\n");
  EXPECT_TRUE(test::InkedRows(test::DecodePng(form.GetImageData()), 52).empty());
}

TEST_F(PaymentFormFaults, NoCanvas) {
  const auto captured = CaptureInternal([&] {
    const Failing failing(Fault::CreateRenderer);
    EXPECT_FALSE(form.DrawConvenience(digits, 600, 100));
  });
  EXPECT_EQ(captured.err, "レンダラー作成に失敗: injected\n");
}

}  // namespace
}  // namespace barcode
