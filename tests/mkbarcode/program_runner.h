#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace barcode::tool {

// A new directory that goes with the object.
class ScratchDirectory {
 public:
  ScratchDirectory();
  ScratchDirectory(const ScratchDirectory&) = delete;
  ScratchDirectory& operator=(const ScratchDirectory&) = delete;
  ~ScratchDirectory();

  std::string File(const std::string& name) const { return (m_path / name).string(); }
  std::string Path() const { return m_path.string(); }

  // Of everything that is in it, in alphabetical order.
  std::vector<std::string> Names() const;

 private:
  std::filesystem::path m_path;
};

std::string ReadFile(const std::string& file);
void WriteFile(const std::string& file, const std::string& bytes);

struct Outcome {
  int status = -1;
  std::string output;
  std::string errors;
};

// Runs a shell command; its two output streams are caught unless the command redirects them.
Outcome RunShell(const std::string& command);

// Runs the built program with arguments as they are, each one word.
Outcome RunProgram(const std::vector<std::string>& arguments);

// The program's path as a word for RunShell.
std::string Program();

}  // namespace barcode::tool
