#pragma once

#include <string_view>

namespace barcode::fuzz {

// Ends the process with a line on the error stream that it had at the start, unless the promise is kept: for
// the fuzzer, and for the replay of its inputs, that is a crash.
void Require(bool kept, std::string_view promise);

// From here on nothing is written for what goes to the buffered streams stdout and stderr; the lines of
// Require and the reports of the sanitizers still are.
void SilenceStreams();

}  // namespace barcode::fuzz
