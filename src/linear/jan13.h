#pragma once

#include <string_view>

#include "linear/guard_bar_symbology.h"

namespace barcode {

// EAN-13 (ISO/IEC 15420).
class Jan13 : public GuardBarSymbology {
 public:
  explicit Jan13(std::string_view format)
      : GuardBarSymbology(format, {"[Jan13] ", kJan13Style, CompleteJan13, EncodeJan13}) {}
};

}  // namespace barcode
