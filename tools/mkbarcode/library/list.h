#pragma once

#include <string>

namespace barcode::tool {

// What library --list prints: a line for each type that this build of the library offers.
std::string ListText();

}  // namespace barcode::tool
