#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/run_vector.h"
#include "core/barcode_base_1d.h"
#include "linear/code128_values.h"

namespace barcode {

// Code 128 (ISO/IEC 15417) with a fixed code set or, by default, the code sets that take the fewest values.
class Code128 : public PlainLinear<Code128> {
 public:
  static constexpr std::string_view kTag = "[Code128] ";

  using PlainLinear::PlainLinear;

  // 0 to 2: code set A, B or C; 3: automatic. Any other number makes Encode fail.
  void SetCodeMode(std::int32_t mode) { m_codeMode = mode; }

  // By the keyword "A", "B", "C" or "AUTO"; any other one changes nothing.
  void SetCodeMode(std::string_view keyword);

  // 11 (n - 1) + 13 modules for n values, start, check and stop value included. Throws a standard exception
  // on empty text and on bytes that the mode cannot encode.
  virtual RunVector Encode(const std::string& text) const;

  // The text as given.
  std::string DisplayText(const std::string& text) const { return text; }

 private:
  std::int32_t m_codeMode = kCode128ModeAuto;
};

}  // namespace barcode
