#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace barcode::tool {

// A decoded picture, four bytes (red, green, blue, alpha) a pixel, row by row.
struct Picture {
  std::size_t width = 0;
  std::size_t height = 0;
  std::vector<std::uint8_t> pixels = {};

  bool operator==(const Picture&) const = default;
};

// Throws RunError when the bytes are no PNG file.
Picture DecodePng(std::string_view bytes);

// A part of a picture, which has to lie within it.
struct PictureArea {
  std::size_t left = 0;
  std::size_t top = 0;
  std::size_t width = 0;
  std::size_t height = 0;
};
Picture Cropped(const Picture& picture, const PictureArea& area);

}  // namespace barcode::tool
