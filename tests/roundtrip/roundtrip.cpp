#include "roundtrip/roundtrip.h"

#include "support/svg.h"

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

namespace {

// Modules up to the end of the last bar: in a box of one pixel each module is drawn one pixel wide.
int ModulesOf(const BarcodeObject& object, const std::string& text) {
  const auto rects = SvgElements(object.SvgOf(text, 1, 1), "rect");
  barcode_set_output_format(object, "png");
  return rects.empty()
             ? 0
             : std::stoi(Attribute(rects.back(), "x")) + std::stoi(Attribute(rects.back(), "width"));
}

}  // namespace

std::optional<GreyImage> DrawnToFit(int type, const std::string& text, int moduleSize,
                                    const std::function<void(BarcodeHandle)>& prepare) {
  BarcodeObject object(type);
  barcode_set_show_text(object, 0);
  prepare(object);
  if (barcode_draw_1d(object, text.c_str(), ModulesOf(object, text) * moduleSize, 60) != 1) {
    return std::nullopt;
  }
  return WithQuietZone(object.Picture(), kQuietModules * moduleSize);
}

}  // namespace barcode::test
