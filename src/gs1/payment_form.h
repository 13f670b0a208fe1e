#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "text/text_extent.h"

namespace barcode {

// The payment slip of convenience stores: a GS1-128 symbol of 44 digits (AI 91 and the slip's data) with two
// lines of text.

// The 44 digits of a slip from 43 digits, or 44 of which the last is their check digit; a leading "{FNC1}" is
// allowed. Throws std::runtime_error.
std::string NormalizePaymentCode(std::string_view text);

// The two lines under the bars, from the 44 digits.
std::array<std::string, 2> PaymentFormLines(std::string_view digits);

// The line that the font size is chosen by, of the form and length of the first line.
inline constexpr std::string_view kPaymentSampleLine = "(91)912345-0000000000000000000000";

struct PaymentTextSize {
  int fontSize = 0;
  int lineHeight = 0;  // of the sample line as it was measured last
};

// Size of the sample line at a font size; nothing when it cannot be measured.
using MeasureSample = std::function<std::optional<TextExtent>(int fontSize)>;

// The first font size from startSize down, in steps of two, at which the sample line is at most width pixels
// wide, but at least 8. A line that cannot be measured counts as fitting, and as high as its font size.
PaymentTextSize FitPaymentText(std::uint32_t width, int startSize, const MeasureSample& measure);

}  // namespace barcode
