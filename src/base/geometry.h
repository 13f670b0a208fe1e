#pragma once

#include <cstdint>

namespace barcode {

// The box of a draw in pixels: its top-left corner and its size.
struct Box {
  int x = 0;
  int y = 0;
  std::uint32_t width = 0;
  std::uint32_t height = 0;

  bool operator==(const Box&) const = default;
};

// A filled rectangle in pixels.
struct RectF {
  float x = 0;
  float y = 0;
  float width = 0;
  float height = 0;

  bool operator==(const RectF&) const = default;
};

}  // namespace barcode
