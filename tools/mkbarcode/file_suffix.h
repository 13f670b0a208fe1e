#pragma once

#include <algorithm>
#include <string_view>

#include "base/ascii.h"

namespace barcode::tool {

// Whether the name of a file ends with a suffix that is given in upper case (".CSV"), whatever the case in
// the name.
constexpr bool HasSuffix(std::string_view file, std::string_view upperSuffix) {
  return file.size() >= upperSuffix.size() &&
         std::equal(upperSuffix.rbegin(), upperSuffix.rend(), file.rbegin(),
                    [](char wanted, char given) { return wanted == ToUpper(given); });
}

}  // namespace barcode::tool
