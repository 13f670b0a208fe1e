#pragma once

#include <string>
#include <string_view>

#include "core/run_vector.h"

namespace barcode {

// The module pattern of an NW-7 symbol. Letters may be lower case; a text without start and stop characters
// is framed with "C". Throws std::invalid_argument.
RunVector EncodeNw7(std::string_view text);

// The human-readable text: the caller's, without the start and stop characters that it begins and ends with
// when they are not to be shown.
std::string_view Nw7DisplayText(std::string_view text, bool showStartStop);

}  // namespace barcode
