// What happens without the font library. Each test runs in a process of its own: the shared font, once open,
// stays.
#include <gtest/gtest.h>

#include "faults/interposed.h"
#include "linear/code39.h"
#include "support/capture.h"
#include "support/image.h"
#include "support/svg.h"
#include "text/font.h"

namespace barcode {
namespace {

using test::CaptureInternal;
using test::Failing;
using test::Fault;
using test::kWhitePixel;

bool HasInkBelow(const test::Image& image, int top) {
  for (int y = top; y < image.height; ++y) {
    for (int x = 0; x < image.width; ++x) {
      if (image.At(x, y) != kWhitePixel) {
        return true;
      }
    }
  }
  return false;
}

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
  EXPECT_FALSE(HasInkBelow(image, 75));

  // The next construction tries again.
  const auto retry = CaptureInternal([&] { code = std::make_unique<Code39>("png"); });
  EXPECT_EQ(retry.err, "");
  EXPECT_TRUE(code->Draw("AB", 0, 0, 200, 100));
  EXPECT_TRUE(HasInkBelow(test::DecodePng(code->GetImageData()), 75));
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

}  // namespace
}  // namespace barcode
