#pragma once

#include <string>
#include <string_view>

#include "base/run_vector.h"
#include "core/barcode_base_1d.h"

namespace barcode {

// Interleaved 2 of 5 (ISO/IEC 16390): pairs of digits, the first in the bars, the second in the spaces. No
// check digit.
class ITF : public PlainLinear<ITF> {
 public:
  static constexpr std::string_view kTag = "[ITF] ";

  using PlainLinear::PlainLinear;

  // An odd number of digits gets a zero in front. Throws std::runtime_error on empty text and on anything but
  // digits.
  RunVector Encode(const std::string& text) const;

  // The digits that are encoded, the zero in front included.
  std::string DisplayText(const std::string& text) const;

 private:
  float m_wideRatio = 1.0F;
};

}  // namespace barcode
