#include "core/symbology.h"

namespace barcode {

bool IBarcodeSymbology::DrawSvg(const std::string& /*text*/, int /*x*/, int /*y*/, std::uint32_t /*width*/,
                                std::uint32_t /*height*/) {
  return false;
}

}  // namespace barcode
