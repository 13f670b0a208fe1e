// The digits of the extended layout on the canvas: where the layout puts them, in the embedded font.
#include "linear/guard_bar_symbology.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
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

constexpr int kWidth = 300;
constexpr int kHeight = 100;

struct Sample {
  const char* text;
  const char* code;
  const GuardBarStyle* style;
  std::unique_ptr<GuardBarSymbology> object;
  int textTop;    // of the raster
  int guardsEnd;  // below the guard bars
};

std::vector<Sample> Samples() {
  std::vector<Sample> samples;
  samples.push_back({"490123456789", "4901234567894", &kJan13Style, std::make_unique<Jan13>("png"), 75, 80});
  samples.push_back({"4901234", "49012347", &kJan8Style, std::make_unique<Jan8>("png"), 78, 80});
  samples.push_back({"03600029145", "036000291452", &kUpcAStyle, std::make_unique<UpcA>("png"), 75, 84});
  samples.push_back({"654321", "06543217", &kUpcEStyle, std::make_unique<UpcE>("png"), 75, 84});
  return samples;
}

Image Drawn(GuardBarSymbology& object, const char* text) {
  Image image;
  (void)CaptureInternal([&] {
    EXPECT_TRUE(object.Draw(text, 0, 0, kWidth, kHeight));
    image = DecodePng(object.GetImageData());
  });
  return image;
}

// The digits alone, drawn on a white surface by the text painter.
SurfacePtr DigitsAlone(const Sample& sample, const GuardBarBox& box, const Colour& colour) {
  SurfacePtr surface(SDL_CreateRGBSurfaceWithFormat(0, kWidth, kHeight, 32, SDL_PIXELFORMAT_ABGR8888));
  const RendererPtr canvas(SDL_CreateSoftwareRenderer(surface.get()));
  SDL_SetRenderDrawColor(canvas.get(), 255, 255, 255, 255);
  SDL_RenderClear(canvas.get());
  TextPainter painter(*canvas, 20, colour);
  int cell = 0;
  int height = 0;
  EXPECT_TRUE(painter.Measure("0", cell, height));
  const GuardBars bars =
      LayoutGuardBars(*sample.style, sample.object->Encode(sample.code), box, PixelGrid::kRaster);
  const TextBox line{.top = sample.textTop, .bottom = std::numeric_limits<std::int64_t>::max()};
  for (const AnchoredText& text :
       LayoutGuardText(*sample.style, bars, sample.code, box, cell, PixelGrid::kRaster)) {
    const auto x = static_cast<std::int64_t>(text.x);
    text.anchor == TextAnchor::kStart ? painter.DrawAt(text.text, x, line)
                                      : painter.DrawAround(text.text, x, line);
  }
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
      const GuardBarBox box{.width = kWidth, .height = kHeight, .barHeight = 75, .textEvenSpacing = even};
      sample.object->SetTextEvenSpacing(even);
      sample.object->SetForegroundColor(200, 0, 0, 255);
      const Image image = Drawn(*sample.object, sample.text);
      const SurfacePtr digits = DigitsAlone(sample, box, {200, 0, 0, 255});
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
  for (int size = 8; size < 120; ++size) {
    const TextPainter painter(*canvas, size, kBlack);
    int width = 0;
    int height = 0;
    ASSERT_TRUE(painter.Measure("0", width, height));
    const FontPtr font = OpenEmbeddedRobotoFont(size);
    TTF_SetFontHinting(font.get(), TTF_HINTING_MONO);
    const SurfacePtr digit(TTF_RenderUTF8_Blended(font.get(), "0", {0, 0, 0, 255}));
    ASSERT_NE(digit, nullptr);
    EXPECT_EQ(digit->w, width) << size;
  }
}

// Draws to canvases and boxes elsewhere than at the origin, which the exported functions never ask for.
TEST(GuardBarSymbology, TheOriginOfTheBoxMovesBarsAndDigits) {
  Jan13 object("svg");
  ASSERT_TRUE(object.DrawSvg("490123456789", 10, 20, kWidth, kHeight));
  const std::string& document = object.GetSvgDocument();
  EXPECT_NE(document.find("<rect x=\"29.20\" y=\"20.00\" width=\"2.00\" height=\"80.50\""),
            std::string::npos);
  EXPECT_NE(document.find("<text x=\"12.88\" y=\"98.00\""), std::string::npos);
}

}  // namespace
}  // namespace barcode
