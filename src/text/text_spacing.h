#pragma once

#include <cstddef>
#include <cstdint>

namespace barcode {

// Where the characters of an evenly spaced line stand: the horizontal centre of the first and the distance
// from one to the next, in pixels.
struct EvenSpacing {
  std::int64_t first = 0;
  std::int64_t pitch = 0;

  std::int64_t Centre(std::size_t index) const { return first + static_cast<std::int64_t>(index) * pitch; }

  // A line of `length` characters (at least 1) of a font size, spread across barsWidth pixels from x. The
  // margin on either side depends on the width and is multiplied by marginScale.
  static EvenSpacing Across(int x, int barsWidth, std::size_t length, int fontSize, float marginScale);

  bool operator==(const EvenSpacing&) const = default;
};

}  // namespace barcode
