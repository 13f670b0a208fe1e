#pragma once

#include <string>
#include <string_view>

#include "base/run_vector.h"

namespace barcode {

// Code 39 (ISO/IEC 16388): upper-case letters, digits and seven symbols, framed by "*". No check character.
// 16 n + 31 modules for n characters; lower case counts as upper case. Throws std::runtime_error on empty
// text and on characters outside the set.
RunVector EncodeCode39(std::string_view text);

// The text as given, framed by "*" when start and stop are shown.
std::string Code39DisplayText(std::string_view text, bool showStartStop);

}  // namespace barcode
