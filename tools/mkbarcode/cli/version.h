#pragma once

#include <string>

namespace barcode::tool {

// What --version prints.
std::string VersionText();

}  // namespace barcode::tool
