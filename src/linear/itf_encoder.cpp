#include "linear/itf_encoder.h"

#include <cstddef>
#include <cstdint>

#include "linear/two_of_five_encoder.h"

namespace barcode {
namespace {

std::uint32_t DigitMask(char digit) {
  return kTwoOfFiveMasks[static_cast<std::size_t>(digit - '0')];
}

}  // namespace

RunVector EncodeItf(std::string_view text) {
  RequireDigits(text, "ITF barcode requires numeric digits only");
  const std::string digits = ItfDisplayText(text);
  RunVector pattern = {1, 1, 1, 1};
  pattern.reserve(kTwoOfFiveElements * digits.size() + 7);
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    const std::uint32_t bars = DigitMask(digits[i]);
    const std::uint32_t spaces = DigitMask(digits[i + 1]);
    for (std::uint32_t element = kTwoOfFiveFirstElement; element != 0; element >>= 1U) {
      pattern.push_back((bars & element) != 0 ? kWideModules : 1);
      pattern.push_back((spaces & element) != 0 ? kWideModules : 1);
    }
  }
  pattern.insert(pattern.end(), {kWideModules, 1, 1});
  return pattern;
}

std::string ItfDisplayText(std::string_view text) {
  std::string digits(text);
  return digits.size() % 2 == 0 ? digits : '0' + digits;
}

}  // namespace barcode
