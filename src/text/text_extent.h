#pragma once

namespace barcode {

// Size in pixels of a text of one line.
struct TextExtent {
  int width = 0;
  int height = 0;
};

}  // namespace barcode
