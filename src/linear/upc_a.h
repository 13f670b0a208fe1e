#pragma once

#include <string_view>

#include "linear/guard_bar_symbology.h"

namespace barcode {

// UPC-A (ISO/IEC 15420).
class UpcA : public GuardBarSymbology {
 public:
  explicit UpcA(std::string_view format)
      : GuardBarSymbology(format, {"[UpcA] ", kUpcAStyle, CompleteUpcA, EncodeUpcA}) {}
};

}  // namespace barcode
