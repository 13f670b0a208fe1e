#include "mkbarcode/program_runner.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "mkbarcode/quoting.h"

namespace barcode::tool {

ScratchDirectory::ScratchDirectory() {
  std::string pattern = (std::filesystem::temp_directory_path() / "mkbarcode_test_XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) {
    throw std::runtime_error("no scratch directory");
  }
  m_path = pattern;
}

ScratchDirectory::~ScratchDirectory() {
  std::error_code ignored;
  std::filesystem::remove_all(m_path, ignored);
}

std::vector<std::string> ScratchDirectory::Names() const {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(m_path)) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string ReadFile(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) {
    throw std::runtime_error("cannot read " + file);
  }
  return {std::istreambuf_iterator<char>(stream), {}};
}

void WriteFile(const std::string& file, const std::string& bytes) {
  std::ofstream(file, std::ios::binary) << bytes;
}

Outcome RunShell(const std::string& command) {
  const ScratchDirectory scratch;
  const std::string output = scratch.File("output");
  const std::string errors = scratch.File("errors");
  // The command runs in a subshell, so that its own redirections take effect inside the catching ones.
  const std::string line =
      Concat({"(", command, "\n) >", ShellQuoted(output), " 2>", ShellQuoted(errors), " </dev/null"});
  const int status = std::system(line.c_str());
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadFile(output), ReadFile(errors)};
}

Outcome RunProgram(const std::vector<std::string>& arguments) {
  std::string command = Program();
  for (const std::string& argument : arguments) {
    command += Concat({" ", ShellQuoted(argument)});
  }
  return RunShell(command);
}

std::string Program() {
  return ShellQuoted(MKBARCODE_PROGRAM);
}

}  // namespace barcode::tool
