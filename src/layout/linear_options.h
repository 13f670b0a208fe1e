#pragma once

#include <cstdint>

namespace barcode {

// Options of the human-readable text. The scales may be any number, NaN and infinity included.
struct TextOptions {
  bool show = true;
  float fontScale = 1.0F;
  float marginScale = 1.0F;
  float gap = 1.0F;
  bool evenSpacing = true;
};

// Options of every linear layout.
struct LinearOptions {
  TextOptions text;
  bool fitWidth = false;           // fractional module widths
  std::int32_t pxAdjustBlack = 0;  // pixels added to every bar
  std::int32_t pxAdjustWhite = 0;  // pixels added to every space
};

}  // namespace barcode
