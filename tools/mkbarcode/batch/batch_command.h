#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "label/request.h"

namespace CLI {
class App;
}

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

// The options, on a parser that is made for them; they land in `options`, which is to outlive it.
void AddBatchOptions(CLI::App& app, BatchOptions& options);

// Runs the command with what stands behind its name. Throws UsageError and RunError.
int RunBatch(const std::vector<std::string>& arguments);

}  // namespace barcode::tool
