#pragma once

#include <string>
#include <vector>

#include "mkbarcode/cli/description.h"

// mkbarcode batch JOBS -o OUTPUT: a label for each row.
namespace barcode::tool {

CommandDescription DescribeBatch();

// The exit status. Throws UsageError and RunError.
int RunBatch(const std::vector<std::string>& arguments);

}  // namespace barcode::tool
