#pragma once

#include "gs1/gs1_syntax.h"

namespace barcode {

// The data of an element by the rule of its AI: lengths, characters, check digits, dates and codes. Throws
// Gs1SyntaxError, also where there is no such AI.
void CheckGs1Element(const Gs1Element& element);

}  // namespace barcode
