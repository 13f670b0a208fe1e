#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace barcode {

// GS1 element strings by the rules of the GS1 General Specifications.

struct Gs1Element {
  std::string ai;  // its digits
  std::string data;

  bool operator==(const Gs1Element&) const = default;
};

// What a text is no element string for: one English sentence that names the application identifier and what
// is wrong.
class Gs1SyntaxError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The elements of a text, verified: identifiers, lengths, characters, check digits, dates. The text is
// written with parentheses, "(01)04912345678904(10)LOT42", or without, "010491234567890410LOT42", where
// "{FNC1}" or the byte 0x1D ends a field of variable length that another follows, as does "{AI}", which says
// that an identifier begins there; "{FNC1}" may stand in front and at the end too. Throws Gs1SyntaxError.
std::vector<Gs1Element> ParseGs1Elements(std::string_view text);

// For people: "(01)04912345678904(10)LOT42".
std::string Gs1ElementsForPeople(const std::vector<Gs1Element>& elements);

// For the encoders: kGs1Separator (gs1_markers.h) between elements where the standard wants FNC1, none in
// front and none at the end.
std::string Gs1ElementsForEncoder(const std::vector<Gs1Element>& elements);

// One sentence for each identifier that the standard wants together with another one that is missing.
std::vector<std::string> Gs1MissingPartners(const std::vector<Gs1Element>& elements);

}  // namespace barcode
