#pragma once

#include <string>
#include <variant>
#include <vector>

#include "mkbarcode/draw.h"

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

// Draw samples of everything into a directory.
struct GalleryCommand {
  std::string directory;
  bool verbose = false;
};

using Command = std::variant<PrintCommand, DrawCommand, GalleryCommand>;

// What the arguments (without the program's name) ask for. Throws UsageError.
Command ParseCommandLine(const std::vector<std::string>& arguments);

}  // namespace barcode::tool
