#include "mkbarcode/cli/version.h"

#include "barcode.h"

namespace barcode::tool {

std::string VersionText() {
  return "mkbarcode " BARCODE_VERSION_STRING "\n";
}

}  // namespace barcode::tool
