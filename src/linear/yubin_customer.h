#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/barcode_base_1d.h"
#include "layout/linear_layout.h"

namespace barcode {

// The symbol as bar types: '1' long, '2' upper semi-long, '3' lower semi-long, '4' timing.
struct FourStateSymbol {
  std::string bars;    // start, twenty codes, check character, stop: 67 bars
  int checkValue = 0;  // 0 to 18
};

// The bars of a symbol with long bars of `height` pixels whose top left corner is at (x, y).
std::vector<RectF> LayoutFourStateBars(std::string_view bars, float x, float y, float height,
                                       std::int32_t pxAdjustBlack);

// Width of the image around those bars in whole pixels.
int FourStateImageWidth(float height);

// The customer barcode of the Japanese postal service: four-state bars of fixed number, whose size follows
// from their height. No human-readable text.
class YubinCustomer : public BarcodeBase1D {
 public:
  using BarcodeBase1D::BarcodeBase1D;

  // Encodes any text. Letters count as upper case, characters that the symbology lacks are dropped, free
  // positions are filled with CC4, and what follows the twentieth position is ignored.
  static FourStateSymbol Encode(std::string_view text);

  // False for an empty text and for a height below 1, without a message. The width is ignored, as kept for
  // hosts that pass one.
  bool Draw(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) override;
  bool DrawSvg(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) override;

  // The draw itself: long bars of `height` pixels.
  bool DrawPostal(const std::string& text, int x, int y, std::uint32_t height);

 private:
  std::vector<RectF> Bars(const FourStateSymbol& symbol, int x, int y, std::uint32_t height) const;
};

}  // namespace barcode
