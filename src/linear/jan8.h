#pragma once

#include <string_view>

#include "linear/guard_bar_symbology.h"

namespace barcode {

// EAN-8 (ISO/IEC 15420).
class Jan8 : public GuardBarSymbology {
 public:
  explicit Jan8(std::string_view format)
      : GuardBarSymbology(format, {"[Jan8] ", kJan8Style, CompleteJan8, EncodeJan8}) {}
};

}  // namespace barcode
