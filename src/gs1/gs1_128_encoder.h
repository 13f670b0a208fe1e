#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "linear/code128_encoder.h"

namespace barcode {

// Two markers may stand anywhere in a GS1-128 text: "{FNC1}" encodes the FNC1 character, "{AI}" encodes
// nothing. After either, an application identifier begins in the human-readable text. All else is data; a
// byte that no code set holds is left out.
inline constexpr std::string_view kFnc1Marker = "{FNC1}";
inline constexpr std::string_view kAiMarker = "{AI}";

// Length of the marker at a position, 0 when none stands there.
std::size_t MarkerLength(std::string_view text, std::size_t pos);

// Start value, data, check value and stop value of a GS1-128 text. Never fails.
Code128Values Gs1_128Values(std::string_view text);

// The text for people: markers removed, each application identifier after a marker in parentheses.
std::string Gs1_128DisplayText(std::string_view text);

}  // namespace barcode
