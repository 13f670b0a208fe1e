#include "gs1/payment_form.h"

#include <cstddef>
#include <stdexcept>

#include "core/ascii.h"
#include "core/gs1_check_digit.h"
#include "gs1/gs1_128_encoder.h"

namespace barcode {
namespace {

constexpr std::size_t kDigits = 44;

}  // namespace

std::string NormalizePaymentCode(std::string_view text) {
  if (text.starts_with(kFnc1Marker)) text.remove_prefix(kFnc1Marker.size());
  if (!AllDigits(text)) throw std::invalid_argument("Non-digit character found");
  if (text.size() != kDigits - 1 && text.size() != kDigits) {
    throw std::invalid_argument("Code length must be 43 or 44 digits");
  }
  std::string digits(text.substr(0, kDigits - 1));
  digits += Gs1CheckDigit(digits);
  if (text.size() == kDigits && digits != text) throw std::invalid_argument("Check digit mismatch");
  return digits;
}

std::array<std::string, 2> PaymentFormLines(std::string_view digits) {
  std::array<std::string, 2> lines;
  lines[0].append("(").append(digits, 0, 2).append(")").append(digits, 2, 6);
  lines[0].append("-").append(digits, 8, 22);
  lines[1].append(digits, 30, 6).append("-").append(digits, 36, 1);
  lines[1].append("-").append(digits, 37, 6).append("-").append(digits, 43, 1);
  return lines;
}

}  // namespace barcode
