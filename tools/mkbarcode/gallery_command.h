#pragma once

#include <string>
#include <vector>

#include "mkbarcode/cli/description.h"

// mkbarcode gallery DIR: samples of everything, with pages that show them.
namespace barcode::tool {

CommandDescription DescribeGalleryCommand();

// The exit status. Throws UsageError and RunError.
int RunGalleryCommand(const std::vector<std::string>& arguments);

}  // namespace barcode::tool
