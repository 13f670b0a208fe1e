#pragma once

#include <string>
#include <vector>

#include "label/request.h"
#include "label/types.h"

namespace barcode::tool {

// The type of a name or an alias. otherWords: what else may have been meant. Throws UsageError, with a
// suggestion.
const label::TypeInfo& RequireType(const std::string& name, std::vector<std::string> otherWords = {});

// That the type which rows have by default is one, where they have one. Throws UsageError.
void CheckDefaultType(const label::Request& defaults);

}  // namespace barcode::tool
