#pragma once

#include <string>
#include <string_view>

#include "base/run_vector.h"
#include "linear/guard_bar_symbology.h"

namespace barcode {

// EAN-8 (ISO/IEC 15420).
class Jan8 : public GuardBarSymbology {
 public:
  explicit Jan8(std::string_view format) : GuardBarSymbology(format, "[Jan8] ", kJan8Style) {}

  // The eight digits of a text of seven, or of eight with a right check digit.
  std::string CompleteCode(const std::string& text) const override;

  // Guards and eight digits of the completed text, 43 runs of 67 modules.
  RunVector Encode(const std::string& text) const override;
};

}  // namespace barcode
