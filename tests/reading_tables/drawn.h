#pragma once

#include <optional>
#include <string>

#include "label_proof/content.h"
#include "support/image.h"

namespace barcode::test {

// The symbology of "mkbarcode library code39 TEXT ..." or "mkbarcode code39 TEXT ...". Throws
// std::runtime_error for any other command.
Symbology SymbologyOf(const std::string& command);

// The picture of such a command with that text, as a reader gets it: drawn through the functions of one of
// the libraries as the tool would, PNG decoded, in a white margin of so many pixels. Throws
// std::runtime_error for an option that is not known here; nothing when the text is refused.
std::optional<GreyImage> Drawn(const std::string& command, const std::string& text, int margin);

}  // namespace barcode::test
