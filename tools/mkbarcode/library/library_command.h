#pragma once

#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "mkbarcode/cli/description.h"
#include "mkbarcode/library/draw.h"

namespace CLI {
class App;
}

// mkbarcode library TYPE TEXT: what a host of libbarcode.so gets, byte for byte.
namespace barcode::tool {

// Print a text: --help, --version, --list.
struct PrintCommand {
  std::string text;
};

// Draw one symbol into a file ("-": standard output).
struct DrawCommand {
  DrawRequest request;
  std::string inputFile;  // where the text comes from; empty: it is in the request
  bool keepNewline = false;
  std::string outputFile;
  bool verbose = false;
};

using LibraryCommand = std::variant<PrintCommand, DrawCommand>;

// What the arguments (without the command's name) ask for. Throws UsageError.
LibraryCommand ParseLibraryCommand(const std::vector<std::string>& arguments);

CommandDescription DescribeLibraryCommand();

// The exit status. Throws UsageError and RunError.
int RunLibraryCommand(const std::vector<std::string>& arguments);

}  // namespace barcode::tool
