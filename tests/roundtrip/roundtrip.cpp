#include "roundtrip/roundtrip.h"

namespace barcode::test {

std::optional<GreyImage> DrawnSymbol(int type, int moduleSize,
                                     const std::function<int(BarcodeHandle)>& draw) {
  const BarcodeObject object(type);
  if (draw(object) != 1) {
    return std::nullopt;
  }
  return WithQuietZone(object.Picture(), kQuietModules * moduleSize);
}

std::optional<GreyImage> DrawnLinear(int type, const std::string& text, int modules, int moduleSize) {
  return DrawnSymbol(type, moduleSize, [&](BarcodeHandle handle) {
    barcode_set_show_text(handle, 0);
    return barcode_draw_1d(handle, text.c_str(), modules * moduleSize, 60);
  });
}

}  // namespace barcode::test
