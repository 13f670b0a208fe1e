#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "mkbarcode/batch/new_file.h"
#include "mkbarcode/descriptor.h"

namespace barcode::tool {

// The file of an archive, which takes its name when all of it is written.
class ArchiveFile {
 public:
  // Throws RunError when the file could not be made or replaced.
  explicit ArchiveFile(const std::string& file);

  // Of the archive's own, for what goes along with it.
  const std::string& Directory() const { return m_directory; }

  std::uint64_t Size() const { return m_size; }

  // Throw RunError.
  void Write(std::string_view bytes);
  void Finish();

 private:
  std::string m_file;       // without links
  std::string m_directory;  // of it
  std::string m_name;       // in it
  Descriptor m_folder;
  NewFile m_newFile;
  std::uint64_t m_size = 0;
};

// The directory in which the archive of this name comes to stand.
std::string DirectoryOfArchive(const std::string& file);

// That a part of the name is longer than file systems take. Throws LabelError.
void CheckMemberName(const std::string& name);

}  // namespace barcode::tool
