#pragma once

#include <string>
#include <string_view>

#include "base/run_vector.h"
#include "core/barcode_base_1d.h"
#include "linear/two_of_five.h"

namespace barcode {

// NEC 2 of 5: digits as three bars each. No check digit.
class NEC2of5 : public PlainLinear<NEC2of5> {
 public:
  static constexpr std::string_view kTag = "[NEC2of5] ";

  using PlainLinear::PlainLinear;

  // Throws std::runtime_error on empty text and on anything but digits.
  RunVector Encode(const std::string& text) const {
    return EncodeTwoOfFive(text, WideModules(m_wideRatio), "NEC 2 of 5 barcode requires numeric digits only");
  }

  // The text as given.
  std::string DisplayText(const std::string& text) const { return text; }

 private:
  float m_wideRatio = 1.0F;
};

}  // namespace barcode
