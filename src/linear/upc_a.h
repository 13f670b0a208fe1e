#pragma once

#include <string>
#include <string_view>

#include "base/run_vector.h"
#include "linear/guard_bar_symbology.h"

namespace barcode {

// UPC-A (ISO/IEC 15420).
class UpcA : public GuardBarSymbology {
 public:
  explicit UpcA(std::string_view format) : GuardBarSymbology(format, "[UpcA] ", kUpcAStyle) {}

  // The twelve digits of a text of eleven, or of twelve with a right check digit.
  std::string CompleteCode(const std::string& text) const override;

  // Guards and twelve digits of the completed text, 59 runs of 95 modules.
  RunVector Encode(const std::string& text) const override;
};

}  // namespace barcode
