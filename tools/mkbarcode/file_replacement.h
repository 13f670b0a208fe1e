#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace barcode::tool {

// Puts bytes under a name, all of them or none. They are written to a new file beside it, which takes the
// name when it is complete; until then, and for ever when that fails, what stood under the name is left as it
// was. A signal that ends the program in the meantime leaves no new file behind.
//
// The new file has the permissions of the one that it replaces. A symbolic link stays one: the file that it
// leads to is replaced. What is no regular file (a pipe, a device) is written in place, and so is an open
// file that has only a descriptor for a name (/dev/stdout).
//
// Throws RunError.
void ReplaceFile(const std::string& file, std::string_view bytes);

// The same for bytes that come piece by piece. There is one at a time.
class FileReplacement {
 public:
  explicit FileReplacement(const std::string& file);
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;
  // Without Commit() the name stands for what it stood for before.
  ~FileReplacement();

  void Write(std::string_view bytes);
  void Commit();

 private:
  class Target;

  std::unique_ptr<Target> m_target;
};

}  // namespace barcode::tool
