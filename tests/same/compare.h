#pragma once

#include <string>

namespace barcode::same {

// Prints the first differences of two records, or that they are the same, which is the result.
bool CompareRecords(const std::string& basePath, const std::string& newPath);

}  // namespace barcode::same
