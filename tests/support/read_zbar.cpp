#include <zbar.h>

#include <sstream>

#include "support/readers.h"

namespace barcode::test {

std::optional<Reading> ReadWithZbar(const GreyImage& image, const std::string& symbology) {
  zbar::ImageScanner scanner;
  scanner.set_config(zbar::ZBAR_NONE, zbar::ZBAR_CFG_ENABLE, symbology.empty() ? 1 : 0);
  std::istringstream names(symbology);
  for (std::string name; names >> name;) {
    scanner.set_config(name + ".enable");
  }
  scanner.set_config(zbar::ZBAR_QRCODE, zbar::ZBAR_CFG_BINARY, 1);
  zbar::Image grey(static_cast<unsigned>(image.width), static_cast<unsigned>(image.height), "Y800",
                   image.pixels.data(), image.pixels.size());
  if (scanner.scan(grey) <= 0) {
    return std::nullopt;
  }
  const auto symbol = grey.symbol_begin();
  return Reading{symbol->get_type_name(), symbol->get_data()};
}

}  // namespace barcode::test
