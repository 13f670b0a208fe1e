#include "mkbarcode/batch/archive_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <filesystem>
#include <system_error>

#include "base/line.h"
#include "label/error.h"
#include "label/excerpt.h"
#include "mkbarcode/batch/output.h"
#include "mkbarcode/descriptor.h"
#include "mkbarcode/errors.h"

namespace barcode::tool {
namespace {

namespace fs = std::filesystem;

// A link stays one: what it leads to is replaced.
std::string WithoutLinks(const std::string& file) {
  std::error_code error;
  const fs::path target = fs::canonical(file, error);
  return error ? file : target.string();
}

int OpenFolder(const std::string& directory, const std::string& file) {
  struct stat status {};
  if (stat(file.c_str(), &status) == 0 && !S_ISREG(status.st_mode)) {
    throw RunError(Line("cannot write ", file, ": it is no regular file"));
  }
  const int folder = open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder < 0) {
    FailWithErrno("cannot write " + file);
  }
  return folder;
}

}  // namespace

ArchiveFile::ArchiveFile(const std::string& file)
    : m_file(WithoutLinks(file)),
      m_directory(DirectoryOfArchive(m_file)),
      m_name(fs::path(m_file).filename()),
      m_folder(OpenFolder(m_directory, m_file)),
      m_newFile(m_folder.Number()) {
  if (m_newFile.Number() < 0) {
    FailWithErrno(Line("cannot write ", m_file, ": cannot make a file in ", m_directory));
  }
}

void ArchiveFile::Write(std::string_view bytes) {
  if (!WriteDescriptor(m_newFile.Number(), bytes)) {
    FailWithErrno("cannot write " + m_file);
  }
  m_size += bytes.size();
}

void ArchiveFile::Finish() {
  struct stat earlier {};
  constexpr mode_t kPermissions = 0777;
  const bool isReplaced = fstatat(m_folder.Number(), m_name.c_str(), &earlier, 0) == 0;
  const bool isWhole = (fsync(m_newFile.Number()) == 0 || errno == EINVAL) &&
                       (!isReplaced || fchmod(m_newFile.Number(), earlier.st_mode & kPermissions) == 0);
  if (!isWhole || !m_newFile.TakeName(m_name.c_str())) {
    FailWithErrno("cannot write " + m_file);
  }
}

std::string DirectoryOfArchive(const std::string& file) {
  const fs::path path(WithoutLinks(file));
  return path.has_parent_path() ? path.parent_path().string() : std::string(".");
}

void CheckMemberName(const std::string& name) {
  std::string_view rest = name;
  while (true) {
    const std::size_t length = std::min(rest.find('/'), rest.size());
    if (length > NAME_MAX || name.size() >= PATH_MAX) {
      throw label::LabelError(
          label::ErrorCode::kBadValue, "name",
          Line("The name \"", label::ExcerptForMessage(name), "\" is longer than file systems take."));
    }
    if (length == rest.size()) {
      return;
    }
    rest.remove_prefix(length + 1);
  }
}

}  // namespace barcode::tool
