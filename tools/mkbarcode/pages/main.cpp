// Writes what is installed beside the program into folders below a directory: completions for three shells
// and the manual page.
#include <exception>
#include <filesystem>
#include <iostream>

#include "mkbarcode/cli/commands.h"
#include "mkbarcode/cli/pages.h"
#include "mkbarcode/cli/version.h"
#include "mkbarcode/io.h"

namespace barcode::tool {
namespace {

void Write(const std::filesystem::path& file, const std::string& text) {
  MakeDirectory(file.parent_path().string());
  WriteAll(file.string(), text);
}

void WritePages(const std::filesystem::path& directory) {
  const Commands commands = AllCommands();
  std::string version = VersionText();
  version.pop_back();
  Write(directory / "bash-completion/completions/mkbarcode", BashCompletion(commands));
  Write(directory / "zsh/site-functions/_mkbarcode", ZshCompletion(commands));
  Write(directory / "fish/vendor_completions.d/mkbarcode.fish", FishCompletion(commands));
  Write(directory / "man/man1/mkbarcode.1", ManualPage(commands, version));
}

}  // namespace
}  // namespace barcode::tool

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "Usage: mkbarcode_pages DIR\n";
    return 2;
  }
  try {
    barcode::tool::WritePages(argv[1]);
  } catch (const std::exception& error) {
    std::cerr << error.what() << "\n";
    return 1;
  }
  return 0;
}
