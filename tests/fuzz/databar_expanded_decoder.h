#pragma once

#include <string>
#include <string_view>

namespace barcode::fuzz {

// The element string in the bits of a GS1 DataBar Expanded symbol (ISO/IEC 24724), as a reader decodes them;
// FNC1 is the byte 0x1D. Throws std::runtime_error for what breaks a rule. Shares no code with the encoder.
std::string DecodeExpandedBits(std::string_view bits);

}  // namespace barcode::fuzz
