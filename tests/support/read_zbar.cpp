#include <zbar.h>

#include "support/readers.h"

namespace barcode::test {

std::optional<Reading> ReadWithZbar(const GreyImage& image, const std::string& symbology) {
  zbar::ImageScanner scanner;
  scanner.set_config(zbar::ZBAR_NONE, zbar::ZBAR_CFG_ENABLE, symbology.empty() ? 1 : 0);
  if (!symbology.empty()) {
    scanner.set_config(symbology + ".enable");
  }
  zbar::Image grey(static_cast<unsigned>(image.width), static_cast<unsigned>(image.height), "Y800",
                   image.pixels.data(), image.pixels.size());
  if (scanner.scan(grey) <= 0) {
    return std::nullopt;
  }
  const auto symbol = grey.symbol_begin();
  return Reading{symbol->get_type_name(), symbol->get_data()};
}

}  // namespace barcode::test
