#pragma once

#include <initializer_list>
#include <new>
#include <string>
#include <string_view>
#include <type_traits>

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

// A line of texts to standard error, in one write; the line break is added. Takes no memory, and cuts what is
// longer than any line of the library's own words.
void PrintErrorWithoutMemory(std::initializer_list<std::string_view> texts);

// A piece as it stands in a line for which there is no memory: numbers are left out.
template <class Piece>
std::string_view TextOf(const Piece& piece) {
  if constexpr (std::is_convertible_v<const Piece&, std::string_view>) {
    return piece;
  } else {
    return {};
  }
}

// A line of pieces to standard error, in one write; the line break is added. Does not fail when memory is
// exhausted: that is what most lines are about then.
template <class... Pieces>
void ErrorLine(const Pieces&... pieces) {
  std::string line;
  try {
    line = Line(pieces..., '\n');
  } catch (const std::bad_alloc&) {
    PrintErrorWithoutMemory({TextOf(pieces)...});
    return;
  }
  PrintError(line);
}

// Hands everything printed by this thread to the operating system.
void FlushOutput();

}  // namespace barcode
