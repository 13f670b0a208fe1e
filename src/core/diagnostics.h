#pragma once

#include <string>
#include <string_view>

#include "base/line.h"

namespace barcode {

// The library's lines on standard output and standard error. What an exported call prints is flushed before
// the call returns; error lines are one write each and never overtake output that was printed before them.

// Text to standard output, as it stands.
void Print(std::string_view text);

// A line of pieces (see AppendPieces) to standard output; the line break is added.
template <class... Pieces>
void PrintLine(const Pieces&... pieces) {
  Print(Line(pieces..., '\n'));
}

// Text to standard error, in one write.
void PrintError(std::string_view text);

// A line of pieces to standard error, in one write; the line break is added.
template <class... Pieces>
void ErrorLine(const Pieces&... pieces) {
  PrintError(Line(pieces..., '\n'));
}

// Hands everything printed by this thread to the operating system.
void FlushOutput();

}  // namespace barcode
