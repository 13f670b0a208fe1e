#pragma once

#include <string>

#include "mkbarcode/cli/description.h"

namespace barcode::tool {

// What --help prints of a command.
std::string HelpPage(const CommandDescription& command);

// An option as it is written: "-o, --output FILE", "--[no-]show-text", "--report[=FILE]".
std::string WrittenForm(const OptionDescription& option);

// Broken at spaces into lines of so many bytes where words allow it.
std::string Wrapped(const std::string& text, std::size_t width);

}  // namespace barcode::tool
