#pragma once

#include <string>
#include <string_view>

#include "base/run_vector.h"
#include "linear/ean_upc.h"
#include "linear/guard_bar_symbology.h"

namespace barcode {

// The UPC-A message, eleven digits, that seven digits of a UPC-E code (number system and data) abbreviate by
// zero suppression (ISO/IEC 15420). The digits are unchecked.
std::string ExpandUpcE(std::string_view digits);

// The runs of a sequence that begins with a bar; throws std::runtime_error for any other.
RunVector UpcERuns(const ModuleSequence& modules);

// UPC-E (ISO/IEC 15420), the zero-suppressed form of UPC-A. Where the parities of check digit 0 and of number
// systems above 0 leave the standard, Encode says so.
class UpcE : public GuardBarSymbology {
 public:
  explicit UpcE(std::string_view format) : GuardBarSymbology(format, "[UpcE] ", kUpcEStyle) {}

  // The eight digits of a UPC-E code: six are put behind number system 0, six and seven get the check digit
  // of the UPC-A message that they abbreviate, eight are taken as they are, whatever their last digit.
  std::string CompleteCode(const std::string& text) const override;

  // The symbol of a code of eight digits, 33 runs of 51 modules.
  // The check digit alone selects the parities; the number system takes no part. The table is that of EAN-13
  // leading digits, kept for check digit 0 too: six even digits, where the standard has three odd ones.
  RunVector Encode(const std::string& text) const override;
};

}  // namespace barcode
