#pragma once

#include <string>
#include <string_view>

#include "base/run_vector.h"
#include "linear/guard_bar_symbology.h"

namespace barcode {

// EAN-13 (ISO/IEC 15420).
class Jan13 : public GuardBarSymbology {
 public:
  explicit Jan13(std::string_view format) : GuardBarSymbology(format, "[Jan13] ", kJan13Style) {}

  // The thirteen digits of a text of twelve, or of thirteen with a right check digit.
  std::string CompleteCode(const std::string& text) const override;

  // Guards and twelve digits of the completed text, 59 runs of 95 modules; the leading digit is the parity of
  // the left half.
  RunVector Encode(const std::string& text) const override;
};

}  // namespace barcode
