#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "mkbarcode/descriptor.h"

namespace barcode::tool {

// A file in the directory that nobody sees and that goes with its descriptor. Negative, with the reason in
// errno, when none can be made.
int OpenNameless(const std::string& directory);

// A file that takes its name when it is complete. Until then it has none, as far as the file system knows
// such files; else a temporary one, which goes with the object, and with the process when a signal ends it
// (RemoveTemporaryFiles).
class NewFile {
 public:
  // Number() is negative, with the reason in errno, when none could be made. directory: its descriptor, open
  // as long as this.
  explicit NewFile(int directory);
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  ~NewFile();

  int Number() const { return m_file->Number(); }

  // In the same directory, in place of what has that name. False with the reason in errno.
  bool TakeName(const char* name);

 private:
  int OpenNamed();
  bool Link(const char* name) const;

  int m_directory;
  std::optional<Descriptor> m_file;  // always there
  std::size_t m_slot;                // of the temporary name; kNoSlot when there is none
};

// For a signal handler that ends the process.
void RemoveTemporaryFiles();

}  // namespace barcode::tool
