#pragma once

#include <string>
#include <string_view>

#include "base/run_vector.h"

namespace barcode {

// NW-7, also known as Codabar (EN 798): digits and "-$:/.+" between start and stop characters A to D. No
// check character. Letters may be lower case; a text without start and stop characters is framed with "C".
// Throws std::runtime_error on empty text, on a one-sided frame and on characters outside the set.
RunVector EncodeNw7(std::string_view text);

// Whether a character is a start or stop character, in upper or lower case.
bool IsNw7StartStop(char character);

// What is encoded: the text in upper case with its start and stop characters. Throws std::runtime_error on a
// one-sided frame. The text is not empty.
std::string Nw7FramedText(std::string_view text);

// The text as given, without the start and stop characters that it begins and ends with when they are not
// shown.
std::string Nw7DisplayText(std::string_view text, bool showStartStop);

}  // namespace barcode
