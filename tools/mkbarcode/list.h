#pragma once

#include <string>

namespace barcode::tool {

// What --list prints: a line for each type that this build of the library offers.
std::string ListText();

// What --version prints.
std::string VersionText();

}  // namespace barcode::tool
