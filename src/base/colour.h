#pragma once

#include <cstdint>

namespace barcode {

// Red, green, blue, alpha; 255 is opaque.
struct Colour {
  std::uint8_t r = 0;
  std::uint8_t g = 0;
  std::uint8_t b = 0;
  std::uint8_t a = 255;

  bool operator==(const Colour&) const = default;
};

inline constexpr Colour kBlack{0, 0, 0, 255};
inline constexpr Colour kWhite{255, 255, 255, 255};

}  // namespace barcode
