#pragma once

#include <string>
#include <string_view>

#include "base/run_vector.h"

namespace barcode {

// NW-7, also known as Codabar (EN 798): digits and "-$:/.+" between start and stop characters A to D. No
// check character. Letters may be lower case; a text without start and stop characters is framed with "C".
// Throws std::runtime_error on empty text, on a one-sided frame and on characters outside the set.
RunVector EncodeNw7(std::string_view text);

// The text as given, without the start and stop characters that it begins and ends with when they are not
// shown.
std::string Nw7DisplayText(std::string_view text, bool showStartStop);

}  // namespace barcode
