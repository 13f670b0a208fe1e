#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "core/barcode_base_1d.h"
#include "layout/stacked_layout.h"

namespace barcode {

// A GS1 DataBar symbol ready to be drawn.
struct DataBarDrawing {
  BarLayout layout;
  std::string displayText;
  int textWidth = 0;  // the text is centred or spread across so many pixels
};

// The draw of the GS1 DataBar forms that have a geometry of their own.
class DataBarBase : public BarcodeBase1D {
 protected:
  using BarcodeBase1D::BarcodeBase1D;

  // Lays the symbol out; nothing when there is nothing to draw, which fails without a message. Throws on bad
  // text.
  using MakeDrawing = std::function<std::optional<DataBarDrawing>()>;

  bool DrawRaster(std::string_view tag, int x, int y, std::uint32_t width, std::uint32_t height,
                  const MakeDrawing& makeDrawing);
  bool DrawVector(std::string_view tag, int x, int y, std::uint32_t width, std::uint32_t height,
                  const MakeDrawing& makeDrawing);
};

}  // namespace barcode
