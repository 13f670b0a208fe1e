#pragma once

#include <string>
#include <string_view>

#include "base/run_vector.h"
#include "core/barcode_base_1d.h"

namespace barcode {

// Code 39 (ISO/IEC 16388): upper-case letters, digits and seven symbols, framed by "*". No check character.
class Code39 : public PlainLinear<Code39> {
 public:
  static constexpr std::string_view kTag = "[Code39] ";

  using PlainLinear::PlainLinear;

  // The "*" frame in the human-readable text; the bars always have it.
  void SetShowStartStop(bool show) { m_showStartStop = show; }

  // 16 n + 31 modules for n characters; lower case counts as upper case. Throws std::runtime_error on empty
  // text and on characters outside the set.
  RunVector Encode(const std::string& text) const;

  // The text as given, framed by "*" when start and stop are shown.
  std::string DisplayText(const std::string& text) const;

 private:
  bool m_showStartStop = true;
};

}  // namespace barcode
