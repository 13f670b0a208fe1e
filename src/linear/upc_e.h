#pragma once

#include <string_view>

#include "linear/guard_bar_symbology.h"

namespace barcode {

// UPC-E (ISO/IEC 15420), the zero-suppressed form of UPC-A.
class UpcE : public GuardBarSymbology {
 public:
  explicit UpcE(std::string_view format)
      : GuardBarSymbology(format, {"[UpcE] ", kUpcEStyle, CompleteUpcE,
                                   [](std::string_view code) { return EncodeUpcE(code); }}) {}
};

}  // namespace barcode
