#pragma once

#include <array>
#include <string>
#include <string_view>

namespace barcode {

// The payment slip of convenience stores: a GS1-128 symbol of 44 digits (AI 91 and the slip's data) with two
// lines of text.

// The 44 digits of a slip from 43 digits, or 44 of which the last is their check digit; a leading "{FNC1}" is
// allowed. Throws std::invalid_argument.
std::string NormalizePaymentCode(std::string_view text);

// The two lines under the bars, from the 44 digits.
std::array<std::string, 2> PaymentFormLines(std::string_view digits);

}  // namespace barcode
