#include "support/image.h"

#include <png.h>

#include <algorithm>
#include <cstring>

namespace barcode::test {
namespace {

std::uint8_t Luminance(const Pixel& pixel) {
  return static_cast<std::uint8_t>((pixel.r * 306 + pixel.g * 601 + pixel.b * 117) >> 10);
}

}  // namespace

Image DecodePng(std::span<const std::uint8_t> png) {
  png_image header{};
  header.version = PNG_IMAGE_VERSION;
  if (png_image_begin_read_from_memory(&header, png.data(), png.size()) == 0) {
    return {};
  }
  header.format = PNG_FORMAT_RGBA;
  std::vector<std::uint8_t> bytes(PNG_IMAGE_SIZE(header));
  if (png_image_finish_read(&header, nullptr, bytes.data(), 0, nullptr) == 0) {
    return {};
  }
  Image image{static_cast<int>(header.width), static_cast<int>(header.height), {}};
  image.pixels.resize(bytes.size() / sizeof(Pixel));
  std::memcpy(image.pixels.data(), bytes.data(), bytes.size());
  return image;
}

GreyImage WithQuietZone(const Image& image, int quietZone, int scale) {
  GreyImage grey{image.width * scale + 2 * quietZone, image.height * scale + 2 * quietZone, {}};
  const auto pitch = static_cast<std::size_t>(grey.width);
  grey.pixels.assign(pitch * static_cast<std::size_t>(grey.height), 255);
  for (int y = 0; y < image.height * scale; ++y) {
    for (int x = 0; x < image.width * scale; ++x) {
      grey.pixels[static_cast<std::size_t>(y + quietZone) * pitch + static_cast<std::size_t>(x + quietZone)] =
          Luminance(image.At(x / scale, y / scale));
    }
  }
  return grey;
}

std::vector<int> RunsOfRow(const Image& image, int y) {
  std::vector<int> runs(1);
  bool dark = true;
  for (int x = 0; x < image.width; ++x) {
    const bool isDark = Luminance(image.At(x, y)) < 128;
    if (isDark != dark) {
      runs.push_back(0);
      dark = isDark;
    }
    ++runs.back();
  }
  return runs;
}

std::vector<int> InkedColumns(const Image& image, int top) {
  std::vector<int> columns;
  for (int x = 0; x < image.width; ++x) {
    bool isInked = false;
    for (int y = top; y < image.height; ++y) {
      isInked = isInked || image.At(x, y) != kWhitePixel;
    }
    if (isInked) {
      columns.push_back(x);
    }
  }
  return columns;
}

std::vector<int> InkedRows(const Image& image, int top) {
  std::vector<int> rows;
  for (int y = top; y < image.height; ++y) {
    bool isInked = false;
    for (int x = 0; x < image.width; ++x) {
      isInked = isInked || image.At(x, y) != kWhitePixel;
    }
    if (isInked) {
      rows.push_back(y);
    }
  }
  return rows;
}

bool IsBlank(const Image& image) {
  return !image.pixels.empty() &&
         std::ranges::all_of(image.pixels, [](const Pixel& pixel) { return pixel == kWhitePixel; });
}

}  // namespace barcode::test
