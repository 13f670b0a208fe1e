#pragma once

#include <string_view>

namespace barcode {

// The library's lines on standard output and standard error. What an exported call prints is flushed before
// the call returns; error lines are one write each and never overtake output that was printed before them.

// Text to standard output, as it stands.
void Print(std::string_view text);

// A line to standard output; the line break is added.
void PrintLine(std::string_view line);

// A line to standard error, in one write; the line break is added.
void ErrorLine(std::string_view line);

// "prefix" + "message" as one line to standard error.
void ErrorLine(std::string_view prefix, std::string_view message);

// Hands everything printed by this thread to the operating system.
void FlushOutput();

}  // namespace barcode
