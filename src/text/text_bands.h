#pragma once

#include "base/numeric.h"

namespace barcode {

// Sizes of the human-readable text as fractions of the symbol's height, in three bands: below 50 pixels, 50
// to 200, above 200.
struct SizeBands {
  float small;
  float medium;
  float large;

  constexpr float At(unsigned height) const {
    if (height < 50) {
      return small;
    }
    return height <= 200 ? medium : large;
  }
};

inline constexpr SizeBands kTextHeightBands{0.25F, 0.2F, 0.15F};
inline constexpr SizeBands kTextGapBands{0.03F, 0.05F, 0.07F};
// The stacked layouts keep less room between bars and text.
inline constexpr SizeBands kStackedTextGapBands{0.02F, 0.03F, 0.04F};

inline constexpr int kMinTextSize = 8;

// Height of one line of text in whole pixels, before any minimum; any scale is allowed.
constexpr int ScaledTextHeight(unsigned height, float fontScale) {
  return TruncToInt(static_cast<float>(height) * kTextHeightBands.At(height) * fontScale);
}

// Font size in pixels of the human-readable text.
constexpr int TextSize(unsigned height, float fontScale) {
  const int size = ScaledTextHeight(height, fontScale);
  return size > kMinTextSize ? size : kMinTextSize;
}

// Gap between bars and text in whole pixels, before any minimum.
constexpr int ScaledTextGap(unsigned height, const SizeBands& bands, float gapScale) {
  return TruncToInt(static_cast<float>(height) * bands.At(height) * gapScale);
}

}  // namespace barcode
