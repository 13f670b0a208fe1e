#include "reading_tables/zbar_at_a_till.h"

#include <zbar.h>

namespace barcode::test {

class ZbarAtATill::Scanner {
 public:
  zbar::ImageScanner scanner;
};

ZbarAtATill::ZbarAtATill() : m_scanner(std::make_unique<Scanner>()) {
  m_scanner->scanner.set_config(zbar::ZBAR_NONE, zbar::ZBAR_CFG_ENABLE, 1);
}

ZbarAtATill::~ZbarAtATill() = default;

std::optional<Reading> ZbarAtATill::Read(const GreyImage& image) {
  zbar::Image grey(static_cast<unsigned>(image.width), static_cast<unsigned>(image.height), "Y800",
                   image.pixels.data(), image.pixels.size());
  if (m_scanner->scanner.scan(grey) <= 0) {
    return std::nullopt;
  }
  const auto symbol = grey.symbol_begin();
  return Reading{symbol->get_type_name(), symbol->get_data()};
}

}  // namespace barcode::test
