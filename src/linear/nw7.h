#pragma once

#include <string>
#include <string_view>

#include "base/run_vector.h"
#include "core/barcode_base_1d.h"

namespace barcode {

// NW-7, also known as Codabar (EN 798): digits and "-$:/.+" between start and stop characters A to D. No
// check character.
class NW7 : public PlainLinear<NW7> {
 public:
  static constexpr std::string_view kTag = "[NW7] ";

  using PlainLinear::PlainLinear;

  // Typed start and stop characters in the human-readable text; the bars always have them.
  void SetShowStartStop(bool show) { m_showStartStop = show; }

  // Letters may be lower case; a text without start and stop characters is framed with "C". Throws
  // std::runtime_error on empty text, on a one-sided frame and on characters outside the set.
  RunVector Encode(const std::string& text) const;

  // The text as given, without the start and stop characters that it begins and ends with when they are not
  // shown.
  std::string DisplayText(const std::string& text) const;

 private:
  bool m_showStartStop = true;
};

}  // namespace barcode
