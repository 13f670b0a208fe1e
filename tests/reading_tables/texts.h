#pragma once

#include <string>
#include <string_view>

#include "label_proof/content.h"

namespace barcode::test {

// A random text of a pattern: characters for themselves, "[0-9A-F]" for one of a set, "[0-9]{8}" for eight,
// "[0-9]{1,8}" for one to eight. The number in the braces follows the bracket at once; other braces are
// characters. Throws std::runtime_error for a pattern that is none.
std::string TextOf(std::string_view pattern, RandomText& random);

// The text with what the symbol has to hold by its standard, as readers report it.
Content ContentOf(Symbology symbology, const std::string& text);

}  // namespace barcode::test
