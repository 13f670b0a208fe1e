// The digits of the extended layout on the canvas: where the layout puts them, in the embedded font.
#include "linear/guard_bar_symbology.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "core/sdl_ptr.h"
#include "core/text_painter.h"
#include "linear/jan13.h"
#include "linear/jan8.h"
#include "linear/upc_a.h"
#include "linear/upc_e.h"
#include "support/capture.h"
#include "support/image.h"

namespace barcode {
namespace {

using test::CaptureInternal;
using test::DecodePng;
using test::Image;
using test::Pixel;

constexpr Box kBox = {.width = 300, .height = 100};
constexpr int kWidth = 300;
constexpr int kHeight = 100;
constexpr int kTextSize = 20;
constexpr Colour kRed = {200, 0, 0, 255};

struct Sample {
  const char* text;
  std::string code;
  RunVector pattern;
  const GuardBarStyle* style;
  std::unique_ptr<GuardBarSymbology> object;
  int textTop;    // of the raster
  int guardsEnd;  // below the guard bars
};

std::vector<Sample> Samples() {
  std::vector<Sample> samples;
  samples.push_back({"490123456789", "4901234567894", EncodeJan13("4901234567894"), &kJan13Style,
                     std::make_unique<Jan13>("png"), 75, 80});
  samples.push_back(
      {"4901234", "49012347", EncodeJan8("49012347"), &kJan8Style, std::make_unique<Jan8>("png"), 78, 80});
  samples.push_back({"03600029145", "036000291452", EncodeUpcA("036000291452"), &kUpcAStyle,
                     std::make_unique<UpcA>("png"), 75, 84});
  samples.push_back(
      {"654321", "06543217", EncodeUpcE("06543217"), &kUpcEStyle, std::make_unique<UpcE>("png"), 75, 84});
  return samples;
}

Image Drawn(GuardBarSymbology& object, const char* text) {
  Image image;
  (void)CaptureInternal([&] {
    EXPECT_TRUE(object.Draw(text, kBox.x, kBox.y, kBox.width, kBox.height));
    image = DecodePng(object.GetImageData());
  });
  return image;
}

// The digits alone, drawn on a white surface by the text painter, each once.
SurfacePtr DigitsAlone(const Sample& sample, const LinearOptions& options) {
  SurfacePtr surface(SDL_CreateRGBSurfaceWithFormat(0, kWidth, kHeight, 32, SDL_PIXELFORMAT_ABGR8888));
  const RendererPtr canvas(SDL_CreateSoftwareRenderer(surface.get()));
  SDL_SetRenderDrawColor(canvas.get(), 255, 255, 255, 255);
  SDL_RenderClear(canvas.get());
  TextPainter painter(*canvas, kRed, "TTF_OpenFont error: ");
  const TextMeasure measure = [&](const std::string& text, int size) { return painter.Measure(text, size); };
  const Drawing drawing = LayoutGuardBarSymbol(*sample.style, sample.pattern, sample.code, kBox, options,
                                               PixelGrid::kWhole, measure);
  std::string digits;
  for (const TextRun& run : drawing.texts) {
    EXPECT_EQ(run.size, kTextSize);
    EXPECT_EQ(run.box, TextBox{.top = static_cast<double>(sample.textTop)});
    digits += run.text;
    painter.Draw(run);
  }
  EXPECT_EQ(digits, sample.code);
  SDL_RenderPresent(canvas.get());
  return surface;
}

Pixel At(const SDL_Surface& surface, int x, int y) {
  const auto* const pixel = static_cast<const std::uint8_t*>(surface.pixels) +
                            static_cast<std::ptrdiff_t>(y) * surface.pitch +
                            static_cast<std::ptrdiff_t>(x) * 4;
  return {pixel[0], pixel[1], pixel[2], pixel[3]};
}

TEST(GuardBarSymbology, DigitsStandWhereTheLayoutPutsThem) {
  for (const bool even : {true, false}) {
    for (Sample& sample : Samples()) {
      sample.object->SetTextEvenSpacing(even);
      sample.object->SetForegroundColor(kRed.r, kRed.g, kRed.b, kRed.a);
      const Image image = Drawn(*sample.object, sample.text);
      const SurfacePtr digits = DigitsAlone(sample, {.text = {.evenSpacing = even}});
      int ink = 0;
      for (int y = sample.guardsEnd; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
          ASSERT_EQ(image.At(x, y), At(*digits, x, y)) << sample.code << " at " << x << ", " << y;
          ink += image.At(x, y) == test::kWhitePixel ? 0 : 1;
        }
      }
      EXPECT_GT(ink, 100) << sample.code;
    }
  }
}

TEST(GuardBarSymbology, ARenderedDigitIsAsWideAsItMeasures) {
  const SurfacePtr surface(SDL_CreateRGBSurfaceWithFormat(0, 10, 10, 32, SDL_PIXELFORMAT_ABGR8888));
  const RendererPtr canvas(SDL_CreateSoftwareRenderer(surface.get()));
  ASSERT_TRUE(InitTextRendering());
  TextPainter painter(*canvas, kBlack, "TTF_OpenFont error: ");
  for (int size = 8; size < 120; ++size) {
    const std::optional<TextExtent> measured = painter.Measure("0", size);
    ASSERT_TRUE(measured);
    const FontPtr font = OpenEmbeddedRobotoFont(size);
    TTF_SetFontHinting(font.get(), TTF_HINTING_MONO);
    const SurfacePtr digit(TTF_RenderUTF8_Blended(font.get(), "0", {0, 0, 0, 255}));
    ASSERT_NE(digit, nullptr);
    EXPECT_EQ(digit->w, measured->width) << size;
    EXPECT_EQ(digit->h, measured->height) << size;
  }
}

// Draws to canvases and boxes elsewhere than at the origin, which the exported functions never ask for.
TEST(GuardBarSymbology, TheOriginOfTheBoxMovesBarsAndDigits) {
  Jan13 object("svg");
  ASSERT_TRUE(object.DrawSvg("490123456789", 10, 20, kBox.width, kBox.height));
  const std::string& document = object.GetSvgDocument();
  EXPECT_NE(document.find("<rect x=\"29.20\" y=\"20.00\" width=\"2.00\" height=\"80.50\""),
            std::string::npos);
  EXPECT_NE(document.find("<text x=\"12.88\" y=\"98.00\""), std::string::npos);
}

}  // namespace
}  // namespace barcode
