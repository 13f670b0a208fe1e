#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace barcode::test {

struct Pixel {
  std::uint8_t r = 0;
  std::uint8_t g = 0;
  std::uint8_t b = 0;
  std::uint8_t a = 0;

  bool operator==(const Pixel&) const = default;
};

inline constexpr Pixel kBlackPixel{0, 0, 0, 255};
inline constexpr Pixel kWhitePixel{255, 255, 255, 255};

// A decoded picture, row by row.
struct Image {
  int width = 0;
  int height = 0;
  std::vector<Pixel> pixels;

  const Pixel& At(int x, int y) const {
    return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                  static_cast<std::size_t>(x)];
  }
  bool operator==(const Image&) const = default;
};

// Decodes a PNG file with libpng; an empty image when it is not one.
Image DecodePng(std::span<const std::uint8_t> png);

// Eight-bit luminance, row by row: what readers take.
struct GreyImage {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> pixels;
};

// The picture inside a white border of `quietZone` pixels, each pixel enlarged `scale` times, as luminance.
GreyImage WithQuietZone(const Image& image, int quietZone, int scale = 1);

// Lengths of the runs of equal colour along a row, from the left edge; the first entry is dark (0 when the
// row begins light). Dark: luminance below one half.
std::vector<int> RunsOfRow(const Image& image, int y);

// The columns, and the rows, that hold anything but white from row `top` down.
std::vector<int> InkedColumns(const Image& image, int top);
std::vector<int> InkedRows(const Image& image, int top);

// True for a picture that has pixels, all of them white.
bool IsBlank(const Image& image);

}  // namespace barcode::test
