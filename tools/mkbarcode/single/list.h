#pragma once

#include <string>

namespace barcode::tool {

// What --list prints: of each type its name, title and aliases, and what readers make of it.
std::string ListOfLabels();

}  // namespace barcode::tool
