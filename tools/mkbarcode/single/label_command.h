#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "label/request.h"
#include "mkbarcode/cli/description.h"

namespace CLI {
class App;
}

// mkbarcode TYPE TEXT -o FILE: one label.
namespace barcode::tool {

struct LabelCommand {
  label::Request request;
  std::string inputFile;  // where the text comes from; empty: it is in the request
  bool keepNewline = false;
  std::string outputFile;                 // "-": standard output
  std::optional<std::string> reportFile;  // kNoValue: standard error, "-": standard output
  bool list = false;
  bool version = false;
  bool help = false;
};

// The parser, which writes into the command; that is to outlive it.
std::unique_ptr<CLI::App> BuildLabelApp(LabelCommand& command);

// What the arguments ask for: a label, complete but for a text that is to be read from a file; or list,
// version or help alone. Throws UsageError.
LabelCommand ParseLabelCommand(const std::vector<std::string>& arguments);

CommandDescription DescribeLabelCommand();

// The exit status. Throws UsageError and RunError.
int RunLabelCommand(const std::vector<std::string>& arguments);

}  // namespace barcode::tool
