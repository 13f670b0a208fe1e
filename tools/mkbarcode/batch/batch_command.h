#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "label/request.h"
#include "mkbarcode/cli/description.h"

namespace barcode::tool {

// What `mkbarcode batch` was asked for.
struct BatchOptions {
  std::string jobs;
  std::string output;
  std::optional<std::string> inputFormat;
  std::optional<std::string> name;
  std::string errors;  // "" is standard error
  std::optional<unsigned> threads;
  bool ignoreUnknown = false;
  bool numberDuplicates = false;
  bool resume = false;
  bool quiet = false;
  label::Request defaults;
};

CommandDescription DescribeBatchCommand();

// Runs the command with what stands behind its name. Throws UsageError and RunError.
int RunBatch(const std::vector<std::string>& arguments);

}  // namespace barcode::tool
