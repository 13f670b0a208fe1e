#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "base/run_vector.h"
#include "core/barcode_base_1d.h"

namespace barcode {

// Code 93 (AIM USS Code 93) with its two check characters. Letters may be lower case; the four shift
// characters are typed as "<", ">", "?" and "!".
class Code93 : public PlainLinear<Code93> {
 public:
  static constexpr std::string_view kTag = "[Code93] ";

  using PlainLinear::PlainLinear;

  // 9 (n + 3) + 10 modules for n characters. Throws std::runtime_error on empty text and on characters
  // outside the set.
  virtual RunVector Encode(const std::string& text) const;

  // Value of the check character for upper-case text: weights run 1 to maxWeight, again and again, from the
  // right. Throws as Encode does.
  static std::size_t CheckIndex(std::string_view text, std::size_t maxWeight);

  // The text as given.
  std::string DisplayText(const std::string& text) const { return text; }
};

}  // namespace barcode
