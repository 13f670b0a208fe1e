#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <optional>
#include <system_error>

#include "base/line.h"
#include "label/excerpt.h"
#include "mkbarcode/batch/new_file.h"
#include "mkbarcode/batch/output.h"
#include "mkbarcode/descriptor.h"
#include "mkbarcode/io.h"

namespace barcode::tool {
namespace {

constexpr int kOpenFolder = O_RDONLY | O_DIRECTORY | O_CLOEXEC;

// Errors that lie in the name; the others would meet the next row, too.
bool IsOfName(int error) {
  constexpr std::array kErrors = {ENAMETOOLONG, EISDIR, ENOTDIR, EEXIST, ENOTEMPTY, ELOOP,
                                  EINVAL,       EILSEQ, EACCES,  EPERM,  EBUSY};
  return std::find(kErrors.begin(), kErrors.end(), error) != kErrors.end();
}

// In a folder that another name needs as well as in a file.
[[noreturn]] void FailForName(const std::string& name) {
  if (!IsOfName(errno)) {
    FailWithErrno("cannot write " + name);
  }
  throw label::LabelError(label::ErrorCode::kBadValue, "name",
                          Line("The file \"", label::ExcerptForMessage(name),
                               "\" cannot be written: ", std::generic_category().message(errno), '.'));
}

class DirectoryPacker : public Packer {
 public:
  DirectoryPacker(int root, bool skipExisting) : m_root(root), m_skipExisting(skipExisting) {}

  bool Has(const std::string& name) override {
    if (!m_skipExisting) {
      return false;
    }
    struct stat status {};
    const std::optional<int> folder = FolderOf(name, false);
    // A link to a file is one, wherever that is.
    return folder && fstatat(*folder, BaseName(name), &status, 0) == 0 && S_ISREG(status.st_mode);
  }

  void Pack(const FinishedRow& row, Parcel& /*parcel*/) override {
    const std::optional<int> folder = FolderOf(row.name, true);
    if (!folder) {
      FailForName(row.name);
    }
    NewFile file(*folder);
    const bool isWritten = file.Number() >= 0 && WriteDescriptor(file.Number(), row.label.data) &&
                           file.TakeName(BaseName(row.name));
    if (!isWritten) {
      FailForName(row.name);
    }
  }

 private:
  static const char* BaseName(const std::string& name) {
    const std::size_t slash = name.find_last_of('/');
    return slash == std::string::npos ? name.c_str() : name.c_str() + slash + 1;
  }

  // The descriptor of the folder of a name; rows that follow each other often share one.
  std::optional<int> FolderOf(const std::string& name, bool makesMissing) {
    const std::size_t slash = name.find_last_of('/');
    if (slash == std::string::npos) {
      return m_root;
    }
    if (m_folder && m_folderName == name.substr(0, slash)) {
      return m_folder->Number();
    }
    m_folderName = name.substr(0, slash);
    m_folder.emplace(OpenFolder(m_folderName, makesMissing));
    if (m_folder->Number() < 0) {
      const int reason = errno;
      m_folder.reset();
      errno = reason;
      return std::nullopt;
    }
    return m_folder->Number();
  }

  // Part by part, none of which is a link: what is below the directory stays there.
  int OpenFolder(std::string_view path, bool makesMissing) const {
    std::optional<Descriptor> above;
    while (true) {
      const std::string part(path.substr(0, path.find('/')));
      const int from = above ? above->Number() : m_root;
      int folder = openat(from, part.c_str(), kOpenFolder | O_NOFOLLOW);
      if (folder < 0 && errno == ENOENT && makesMissing) {
        constexpr mode_t kMode = 0777;
        const bool isThere = mkdirat(from, part.c_str(), kMode) == 0 || errno == EEXIST;
        folder = isThere ? openat(from, part.c_str(), kOpenFolder | O_NOFOLLOW) : -1;
      }
      if (folder < 0 || part.size() == path.size()) {
        return folder;
      }
      above.emplace(folder);
      path.remove_prefix(part.size() + 1);
    }
  }

  int m_root;
  bool m_skipExisting;
  std::string m_folderName;
  std::optional<Descriptor> m_folder;
};

int OpenDirectory(const std::string& directory) {
  MakeDirectory(directory);
  const int root = open(directory.c_str(), kOpenFolder);
  if (root < 0) {
    FailWithErrno("cannot open the directory " + directory);
  }
  return root;
}

class Directory : public Output {
 public:
  Directory(const std::string& directory, bool skipExisting)
      : m_root(OpenDirectory(directory)), m_skipExisting(skipExisting) {}

  std::unique_ptr<Packer> NewPacker() override {
    return std::make_unique<DirectoryPacker>(m_root.Number(), m_skipExisting);
  }

  void Write(Parcel& /*parcel*/) override {}  // the packers have

 private:
  Descriptor m_root;
  bool m_skipExisting;
};

}  // namespace

std::unique_ptr<Output> DirectoryOutput(const std::string& directory, bool skipExisting) {
  return std::make_unique<Directory>(directory, skipExisting);
}

}  // namespace barcode::tool
