#include "linear/code128.h"

#include <algorithm>
#include <array>

namespace barcode {
namespace {

constexpr std::array<std::string_view, 4> kModeKeywords = {"A", "B", "C", "AUTO"};

}  // namespace

void Code128::SetCodeMode(std::string_view keyword) {
  const auto* const mode = std::find(kModeKeywords.begin(), kModeKeywords.end(), keyword);
  if (mode != kModeKeywords.end()) {
    m_codeMode = static_cast<std::int32_t>(mode - kModeKeywords.begin());
  }
}

RunVector Code128::Encode(const std::string& text) const {
  const Code128Values values = EncodeValues(text, m_codeMode);
  return ValuesToPattern(values, m_codeMode == kCode128ModeAuto ? "Invalid code value" : "Invalid code val");
}

}  // namespace barcode
