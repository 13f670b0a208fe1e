#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace barcode {

// A GS1 element string: application identifiers (AIs), each followed by its data.
struct Gs1ElementString {
  std::string text;  // FNC1 as kGs1Separator (gs1_markers.h); none in front, none at the end
  std::vector<std::size_t> markedAis;  // where the input marks that an AI begins, ascending positions in text
};

// Takes the markers "{AI}" out of the input, again and again until none is left, and turns each "{FNC1}" into
// one separator. Linear in the input.
Gs1ElementString ReadElementString(std::string_view input);

// The element string for people: each AI in parentheses, "(01)09501101530003(10)ABC". A marked AI reaches to
// the next marker or separator; elsewhere the AIs follow from the GS1 lengths. What cannot be parsed stays as
// it is.
std::string HumanReadable(const Gs1ElementString& elements);

}  // namespace barcode
