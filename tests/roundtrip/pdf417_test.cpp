#include <gtest/gtest.h>

#include <string>

#include "roundtrip/roundtrip.h"
#include "support/capture.h"
#include "support/mixed_text.h"

namespace barcode::test {
namespace {

constexpr int kModuleSize = 3;
constexpr int kRowHeight = 3 * kModuleSize;

struct Grid {
  int columns = 0;
  int rows = 0;
};

// The grid of the last draw, from the lines that it printed.
Grid GridOf(const std::string& out) {
  const std::string row = "[C++] row=";
  const std::string columns = " codeColumns=";
  Grid grid;
  for (std::size_t at = out.find(row); at != std::string::npos; at = out.find(row, at + 1)) {
    ++grid.rows;
    grid.columns = std::stoi(out.substr(out.find(columns, at) + columns.size()));
  }
  return grid;
}

// Draws with three pixels a module and three modules a row, whatever the grid, and reads it.
std::optional<Reading> ReadDrawn(const std::string& text, const char* encoding, double ratio) {
  const BarcodeObject code(BARCODE_PDF417);
  barcode_set_string_encoding(code, encoding);
  barcode_set_aspect_ratio(code, ratio);
  std::optional<Reading> reading;
  (void)Capture([&] {
    const Captured first = Capture([&] { barcode_draw_2d_rect(code, text.c_str(), 100, 50); });
    const Grid grid = GridOf(first.out);
    const int width = (17 * grid.columns + 69) * kModuleSize;
    const int height = grid.rows * kRowHeight;
    // A box that happens to be square would get another width.
    if (barcode_draw_2d_rect(code, text.c_str(), width == height ? width + 1 : width, height) == 1) {
      reading = ReadWithZxing(WithQuietZone(code.Picture(), kQuietModules * kModuleSize), "PDF417");
    }
  });
  return reading;
}

Reading Pdf417(const std::string& text) {
  return {"PDF417", text};
}

constexpr double kRatios[] = {0.2, 0.5, 1.0, 2.0};

TEST(Pdf417RoundTrip, AnyBytes) {
  RandomText random(417);
  for (int i = 0; i < 400; ++i) {
    // Text that is no UTF-8 is taken to be Shift-JIS already and is encoded as it is.
    const std::string text = MixedText(random, 6, 1) + '\xFF';
    ASSERT_EQ(ReadDrawn(text, "shift-jis", kRatios[i % 4]), Pdf417(text)) << "text " << i;
  }
}

TEST(Pdf417RoundTrip, Utf8) {
  RandomText random(15438);
  for (int i = 0; i < 400; ++i) {
    std::string text;
    for (int pieces = random.Number(1, 6); pieces > 0; --pieces) {
      switch (random.Number(0, 3)) {
        case 0:
          text += random.Digits(1, 60);
          break;
        case 1:
          text += random.Bytes(1, 30, ' ', '~');
          break;
        case 2:
          text += random.Of("abcxyz ABC,.;\r\n\t-*!", 1, 20);
          break;
        default:
          for (int characters = random.Number(1, 12); characters > 0; --characters) {
            text += Utf8Character(random);
          }
          break;
      }
    }
    ASSERT_EQ(ReadDrawn(text, "utf-8", kRatios[i % 4]), Pdf417(text)) << "text " << i;
  }
}

TEST(Pdf417RoundTrip, ConvertedText) {
  const std::string utf8 = "\xE6\x97\xA5\xE6\x9C\xAC ABC 0123456789012";
  const std::string shiftJis = "\x93\xFA\x96\x7B ABC 0123456789012";
  EXPECT_EQ(ReadDrawn(utf8, "Shift-JIS", 0.5), Pdf417(shiftJis));
  EXPECT_EQ(ReadDrawn(shiftJis, "utf-8", 0.5), Pdf417(utf8));
}

TEST(Pdf417RoundTrip, LongTexts) {
  RandomText random(928);
  for (const std::string& text : {std::string(1850, 'A'), random.Digits(2700, 2700),
                                  random.Of("Ab;1", 1000, 1000), random.Bytes(1000, 1000, 128, 255)}) {
    for (const double ratio : {0.5, 1.0}) {
      EXPECT_EQ(ReadDrawn(text, "shift-jis", ratio), Pdf417(text)) << text.size() << " bytes";
    }
  }
}

TEST(Pdf417RoundTrip, SquareBoxesAndFractionsOfPixels) {
  for (const int size : {100, 150, 300}) {
    for (const int fitWidth : {0, 1}) {
      const auto symbol = DrawnSymbol(BARCODE_PDF417, 4, [&](BarcodeHandle handle) {
        int drawn = 0;
        (void)Capture([&] {
          barcode_set_fit_width(handle, fitWidth);
          drawn = barcode_draw_2d(handle, "PDF417 in a square box", size);
        });
        return drawn;
      });
      ASSERT_TRUE(symbol);
      EXPECT_EQ(ReadWithZxing(*symbol), Pdf417("PDF417 in a square box")) << size << ", " << fitWidth;
    }
  }
}

}  // namespace
}  // namespace barcode::test
