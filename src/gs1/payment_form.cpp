#include "gs1/payment_form.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>

#include "base/ascii.h"
#include "base/gs1_check_digit.h"
#include "gs1/gs1_markers.h"
#include "text/text_bands.h"

namespace barcode {
namespace {

constexpr std::size_t kDigits = 44;

// Steps over sizes at which the sample is certainly too wide: its width grows in proportion to the font size,
// but for the rounding of each character by less than a pixel. The sizes that are left, the smallest always
// among them, are those that a walk in steps of two would meet.
int StepOverTooWide(int size, std::uint32_t width, int measuredSize, int measuredWidth) {
  constexpr std::int64_t kRounding = kPaymentSampleLine.size();
  if (measuredWidth <= kRounding) {
    return size;
  }
  const std::int64_t smallest = kMinTextSize + size % 2;
  const std::int64_t fitting = (width + kRounding) * measuredSize / (measuredWidth - kRounding);
  const std::int64_t steps = (size - std::max(fitting, smallest) + 1) / 2;
  return steps > 0 ? static_cast<int>(size - 2 * steps) : size;
}

}  // namespace

std::string NormalizePaymentCode(std::string_view text) {
  if (text.starts_with(kFnc1Marker)) {
    text.remove_prefix(kFnc1Marker.size());
  }
  if (!AllDigits(text)) {
    throw std::runtime_error("Non-digit character found");
  }
  if (text.size() != kDigits - 1 && text.size() != kDigits) {
    throw std::runtime_error("Code length must be 43 or 44 digits");
  }
  std::string digits(text.substr(0, kDigits - 1));
  digits += Gs1CheckDigit(digits);
  if (text.size() == kDigits && digits != text) {
    throw std::runtime_error("Check digit mismatch");
  }
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

PaymentTextSize FitPaymentText(std::uint32_t width, int startSize, const MeasureSample& measure) {
  constexpr int kLargeSize = 256;  // above it a size is not tried before it is known to be near
  int size = startSize;
  if (size > kLargeSize) {
    if (const auto extent = measure(kLargeSize)) {
      size = StepOverTooWide(size, width, kLargeSize, extent->width);
    }
  }
  for (;;) {
    const auto extent = measure(size);
    if (!extent) {
      return {size, size};
    }
    if (extent->width <= static_cast<std::int64_t>(width)) {
      return {size, extent->height};
    }
    if (size - 2 < kMinTextSize) {
      return {kMinTextSize, extent->height};
    }
    size = StepOverTooWide(size - 2, width, size, extent->width);
  }
}

}  // namespace barcode
