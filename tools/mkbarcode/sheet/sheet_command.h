#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "label/request.h"
#include "label/sheet_writer.h"
#include "mkbarcode/cli/description.h"

namespace CLI {
class App;
}

namespace barcode::tool {

// What `mkbarcode sheet` was asked for.
struct SheetCommand {
  std::string jobs;
  std::string output;
  std::optional<std::string> inputFormat;
  label::SheetOptions sheet;
  std::string errors;  // "" is standard error
  bool ignoreUnknown = false;
  bool quiet = false;
  label::Request defaults;
};

// Its parser. The values land in `command`, which is to outlive it.
std::unique_ptr<CLI::App> BuildSheetApp(SheetCommand& command);

CommandDescription DescribeSheetCommand();

// Runs the command with what stands behind its name; the exit status. Throws UsageError and RunError.
int RunSheet(const std::vector<std::string>& arguments);

}  // namespace barcode::tool
