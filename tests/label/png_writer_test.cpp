#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "label/coverage.h"
#include "label/drawings.h"
#include "label/text_outline.h"
#include "label/writers.h"
#include "linear/code39_encoder.h"
#include "qr/qr_encoder.h"
#include "support/image.h"

namespace barcode::label {
namespace {

using barcode::test::Image;
using barcode::test::Pixel;

std::uint32_t NumberAt(std::string_view bytes, std::size_t at) {
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    number = number << 8U | static_cast<std::uint8_t>(bytes.at(at + i));
  }
  return number;
}

struct Chunk {
  std::string name;
  std::string data;

  bool operator==(const Chunk&) const = default;
};

std::vector<Chunk> ChunksOf(const std::string& png) {
  std::vector<Chunk> chunks;
  for (std::size_t at = 8; at + 12 <= png.size();) {
    const std::size_t length = NumberAt(png, at);
    chunks.push_back({png.substr(at + 4, 4), png.substr(at + 8, length)});
    at += 12 + length;
  }
  return chunks;
}

// The names of the chunks, those of the pixels once.
std::string NamesOf(const std::string& png) {
  std::string names;
  for (const Chunk& chunk : ChunksOf(png)) {
    if (chunk.name != "IDAT" || !names.ends_with("IDAT ")) {
      names += chunk.name + ' ';
    }
  }
  return names;
}

std::string DataOf(const std::string& png, std::string_view name) {
  for (const Chunk& chunk : ChunksOf(png)) {
    if (chunk.name == name) {
      return chunk.data;
    }
  }
  return "none";
}

int BitsOf(const std::string& png) {
  return DataOf(png, "IHDR").at(8);
}

// 0: grey, 3: palette.
int ColourTypeOf(const std::string& png) {
  return DataOf(png, "IHDR").at(9);
}

Image Decoded(const std::string& png) {
  return barcode::test::DecodePng({reinterpret_cast<const std::uint8_t*>(png.data()), png.size()});
}

// How much of each dot is covered, as plainly as it can be told.
std::vector<std::uint8_t> LevelsOf(const Drawing& drawing) {
  const auto width = static_cast<std::size_t>(drawing.width);
  std::vector<std::uint8_t> levels(width * static_cast<std::size_t>(drawing.height));
  for (const DotRect& rect : drawing.dark) {
    for (int y = rect.y; y < rect.y + rect.height; ++y) {
      for (int x = rect.x; x < rect.x + rect.width; ++x) {
        levels.at(static_cast<std::size_t>(y) * width + static_cast<std::size_t>(x)) = kFullCoverage;
      }
    }
  }
  for (const PlacedText& text : drawing.texts) {
    const OutlinePlace place{text.glyphs.front().x, text.glyphs.front().y, text.size / kUnitsPerEm};
    for (const PlacedGlyph& glyph : text.glyphs) {
      Outline outline;
      AppendGlyphOutline(text, glyph, outline);
      const std::vector<std::uint8_t> covered =
          CoverageOf(outline, place, {0, 0, drawing.width, drawing.height});
      for (std::size_t i = 0; i < levels.size(); ++i) {
        levels[i] = std::max(levels[i], covered[i]);
      }
    }
  }
  return levels;
}

Image BlackOnWhite(const Drawing& drawing) {
  Image image{drawing.width, drawing.height, {}};
  for (const std::uint8_t level : LevelsOf(drawing)) {
    const auto grey = static_cast<std::uint8_t>(255 - level * 17);
    image.pixels.push_back({grey, grey, grey, 255});
  }
  return image;
}

Drawing OneBar() {
  Drawing drawing;
  drawing.width = 3;
  drawing.height = 2;
  drawing.dark = {{1, 0, 1, 2}};
  return drawing;
}

Drawing BarWithText() {
  Drawing drawing = OneBar();
  drawing.width = 30;
  drawing.height = 20;
  drawing.texts = {test::TextAt("A8", 15, 5.3, 15.6)};
  return drawing;
}

TEST(LabelPng, BlackOnWhiteIsOneBitOfGrey) {
  const std::string png = WritePng(OneBar());
  EXPECT_EQ(NamesOf(png), "IHDR IDAT IEND ");
  EXPECT_EQ(DataOf(png, "IHDR"), std::string("\0\0\0\3\0\0\0\2\1\0\0\0\0", 13));
  EXPECT_EQ(Decoded(png), BlackOnWhite(OneBar()));
}

TEST(LabelPng, WhiteOnBlackIsGreyToo) {
  Drawing drawing = OneBar();
  drawing.foreground = kWhite;
  drawing.background = kBlack;
  const std::string png = WritePng(drawing);
  EXPECT_EQ(ColourTypeOf(png), 0);
  EXPECT_EQ(Decoded(png).At(0, 0), barcode::test::kBlackPixel);
  EXPECT_EQ(Decoded(png).At(1, 0), barcode::test::kWhitePixel);
}

TEST(LabelPng, TwoColoursAreAPaletteOfOneBit) {
  Drawing drawing = OneBar();
  drawing.foreground = {200, 0, 10, 255};
  drawing.background = {250, 251, 252, 255};
  const std::string png = WritePng(drawing);
  EXPECT_EQ(NamesOf(png), "IHDR PLTE IDAT IEND ");
  EXPECT_EQ(BitsOf(png), 1);
  EXPECT_EQ(ColourTypeOf(png), 3);
  EXPECT_EQ(DataOf(png, "PLTE"), "\xFA\xFB\xFC\xC8" + std::string("\0\n", 2));
  EXPECT_EQ(Decoded(png).At(1, 1), (Pixel{200, 0, 10, 255}));
  EXPECT_EQ(Decoded(png).At(2, 1), (Pixel{250, 251, 252, 255}));
}

TEST(LabelPng, TransparentBackground) {
  Drawing drawing = OneBar();
  drawing.background = {1, 2, 3, 0};
  const std::string png = WritePng(drawing);
  EXPECT_EQ(NamesOf(png), "IHDR PLTE tRNS IDAT IEND ");
  EXPECT_EQ(DataOf(png, "tRNS"), std::string("\0", 1));
  EXPECT_EQ(Decoded(png).At(0, 0).a, 0);
  EXPECT_EQ(Decoded(png).At(1, 0), barcode::test::kBlackPixel);
}

TEST(LabelPng, TranslucentForegroundIsBlended) {
  Drawing drawing = OneBar();
  drawing.foreground = {200, 100, 0, 51};  // a fifth
  drawing.background = {100, 100, 250, 255};
  const std::string opaque = WritePng(drawing);
  EXPECT_EQ(NamesOf(opaque), "IHDR PLTE IDAT IEND ");
  EXPECT_EQ(Decoded(opaque).At(1, 0), (Pixel{120, 100, 200, 255}));
  // A fifth over three fifths: 0.2 + 0.8 * 0.6 = 0.68.
  drawing.background.a = 153;
  const std::string translucent = WritePng(drawing);
  EXPECT_EQ(NamesOf(translucent), "IHDR PLTE tRNS IDAT IEND ");
  EXPECT_EQ(Decoded(translucent).At(0, 0), (Pixel{100, 100, 250, 153}));
  EXPECT_EQ(Decoded(translucent).At(1, 0), (Pixel{129, 100, 176, 173}));
}

TEST(LabelPng, TextHasSixteenShades) {
  Drawing drawing = BarWithText();
  const std::string grey = WritePng(drawing);
  EXPECT_EQ(NamesOf(grey), "IHDR IDAT IEND ");
  EXPECT_EQ(BitsOf(grey), 4);
  EXPECT_EQ(ColourTypeOf(grey), 0);
  EXPECT_EQ(Decoded(grey), BlackOnWhite(drawing));

  drawing.foreground = {0, 0, 150, 255};
  drawing.background = {255, 255, 0, 0};
  const std::string colours = WritePng(drawing);
  EXPECT_EQ(BitsOf(colours), 4);
  EXPECT_EQ(DataOf(colours, "PLTE").size(), 48U);
  // The foreground is opaque and the last one.
  EXPECT_EQ(DataOf(colours, "tRNS"),
            std::string("\x00\x11\x22\x33\x44\x55\x66\x77\x88\x99\xAA\xBB\xCC\xDD\xEE", 15));
  const Image image = Decoded(colours);
  const std::vector<std::uint8_t> levels = LevelsOf(drawing);
  for (std::size_t i = 0; i < levels.size(); ++i) {
    EXPECT_EQ(image.pixels[i].a, levels[i] * 17);
    if (levels[i] > 0) {
      EXPECT_EQ(image.pixels[i].b, 150);
    }
  }
}

TEST(LabelPng, TextWithoutInkNeedsNoShades) {
  Drawing drawing = OneBar();
  drawing.texts = {test::TextAt("  ", 15, 0, 1)};
  EXPECT_EQ(BitsOf(WritePng(drawing)), 1);
}

TEST(LabelPng, TextAtEverySizeAndTurn) {
  for (const Rotation rotation :
       {Rotation::kNone, Rotation::kQuarter, Rotation::kHalf, Rotation::kThreeQuarters}) {
    for (const double size : {6.0, 11.0, 23.5, 90.0}) {
      Drawing drawing = test::LinearDrawing(EncodeCode39("A1"), 3, 40);
      test::AddLine(drawing, "Aj@1\u3042\u00E9", size);
      drawing = test::Turned(drawing, rotation);
      EXPECT_EQ(Decoded(WritePng(drawing)), BlackOnWhite(drawing)) << size;
    }
  }
}

TEST(LabelPng, TextIsCutAtTheEdgesOfThePicture) {
  Drawing drawing = BarWithText();
  for (const auto& [x, y] :
       {std::pair{-6.0, 10.0}, {26.0, 10.0}, {10.0, 3.0}, {10.0, 25.0}, {-90.0, 500.0}}) {
    drawing.texts = {test::TextAt("W", 15, x, y)};
    EXPECT_EQ(Decoded(WritePng(drawing)), BlackOnWhite(drawing)) << x << ' ' << y;
  }
}

TEST(LabelPng, RandomBars) {
  std::mt19937 random(2);
  for (int i = 0; i < 300; ++i) {
    const Drawing drawing = test::RandomDrawing(random);
    ASSERT_EQ(Decoded(WritePng(drawing)), BlackOnWhite(drawing)) << i;
  }
}

TEST(LabelPng, PhysicalSize) {
  Drawing drawing = OneBar();
  drawing.dpi = 600;  // 23622.05 per metre
  const std::string png = WritePng(drawing);
  EXPECT_EQ(NamesOf(png), "IHDR pHYs IDAT IEND ");
  EXPECT_EQ(DataOf(png, "pHYs"), std::string("\0\0\x5C\x46\0\0\x5C\x46\x01", 9));
}

TEST(LabelPng, ThePictureIsTheSameEveryTime) {
  EXPECT_EQ(WritePng(BarWithText()), WritePng(BarWithText()));
}

TEST(LabelPng, LongestPictures) {
  for (const auto& [width, height] : {std::pair{100'000'000, 1}, {1, 2'000'000}}) {
    Drawing drawing;
    drawing.width = width;
    drawing.height = height;
    drawing.dark = {{width - 1, height - 1, 1, 1}};
    const std::string png = WritePng(drawing);
    EXPECT_EQ(NumberAt(png, 16), static_cast<std::uint32_t>(width));
    EXPECT_EQ(NumberAt(png, 20), static_cast<std::uint32_t>(height));
    EXPECT_LT(png.size(), 20'000U);
    EXPECT_TRUE(NamesOf(png).ends_with("IEND "));
  }
}

// What repeats costs little: so many bytes for pictures whose distinct rows are few.
TEST(LabelPng, RowsThatRepeatAreSmall) {
  const RunVector pattern = EncodeCode39("ABC-1234");
  const std::size_t low = WritePng(test::LinearDrawing(pattern, 2, 10)).size();
  const std::size_t high = WritePng(test::LinearDrawing(pattern, 2, 1000)).size();
  EXPECT_LT(low, 150U);
  EXPECT_LT(high, low + 200);
  const QrSymbol symbol = EncodeQr(std::string(200, 'x'), {});
  EXPECT_LT(WritePng(test::MatrixDrawing(symbol.matrix, 8)).size(), 1'000U);
}

}  // namespace
}  // namespace barcode::label
