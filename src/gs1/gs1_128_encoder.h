#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/run_vector.h"
#include "gs1/gs1_markers.h"
#include "linear/code128_encoder.h"

namespace barcode {

// Two markers may stand anywhere in a GS1-128 text (gs1_markers.h): "{FNC1}" encodes the FNC1 character,
// "{AI}" encodes nothing. After either, an application identifier begins in the human-readable text. All else
// is data.

// How the code sets are chosen.
enum class Gs1_128Rule : std::uint8_t {
  // This library's own: set C from three leading digits and from four others on; a byte that the sets do not
  // hold where it stands is left out. Never fails.
  kLeadingDigits,
  // The sets that take the fewest values. Throws std::runtime_error for an empty text and for bytes that no
  // set holds.
  kFewestValues,
};

// The module pattern.
RunVector EncodeGs1_128(std::string_view text, Gs1_128Rule rule = Gs1_128Rule::kLeadingDigits);

// Its symbol values: start value, data, check value and stop value.
Code128Values Gs1_128Values(std::string_view text, Gs1_128Rule rule = Gs1_128Rule::kLeadingDigits);

// The text for people: markers removed, each application identifier after a marker in parentheses.
std::string Gs1_128DisplayText(std::string_view text);

}  // namespace barcode
