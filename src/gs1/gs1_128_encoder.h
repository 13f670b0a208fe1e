#pragma once

#include <string>
#include <string_view>

#include "base/run_vector.h"
#include "gs1/gs1_markers.h"
#include "linear/code128_encoder.h"

namespace barcode {

// Two markers may stand anywhere in a GS1-128 text (gs1_markers.h): "{FNC1}" encodes the FNC1 character,
// "{AI}" encodes nothing. After either, an application identifier begins in the human-readable text. All else
// is data; a byte that no code set holds is left out.

// The module pattern. Never fails.
RunVector EncodeGs1_128(std::string_view text);

// Its symbol values: start value, data, check value and stop value.
Code128Values Gs1_128Values(std::string_view text);

// The text for people: markers removed, each application identifier after a marker in parentheses.
std::string Gs1_128DisplayText(std::string_view text);

}  // namespace barcode
