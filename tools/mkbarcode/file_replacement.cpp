#include "mkbarcode/file_replacement.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <system_error>

#include "mkbarcode/descriptor.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

namespace fs = std::filesystem;

constexpr mode_t kPermissions = 0777;

// The signals that end the program unless it expects them.
constexpr std::array kFatalSignals = {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGTERM, SIGXCPU, SIGXFSZ};

// The new file's name while there is one: all that the signal handler knows. It changes only while the
// signals are blocked.
std::array<char, PATH_MAX> nameOfNewFile{};

// The default action is in force again: it takes the raised signal as soon as this returns.
extern "C" void RemoveNewFileAndEnd(int signal) {
  unlink(nameOfNewFile.data());
  (void)raise(signal);
}

sigset_t FatalSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int signal : kFatalSignals) {
    sigaddset(&signals, signal);
  }
  return signals;
}

// While it lives, the signals wait.
class BlockedSignals {
 public:
  BlockedSignals() {
    const sigset_t signals = FatalSignals();
    sigprocmask(SIG_BLOCK, &signals, &m_before);
  }
  BlockedSignals(const BlockedSignals&) = delete;
  BlockedSignals& operator=(const BlockedSignals&) = delete;
  ~BlockedSignals() { sigprocmask(SIG_SETMASK, &m_before, nullptr); }

 private:
  sigset_t m_before{};
};

// While it lives, the signals remove the new file before they end the program. Those that the caller of the
// program has it ignore stay ignored.
class HandledSignals {
 public:
  HandledSignals() {
    struct sigaction action {};
    action.sa_handler = RemoveNewFileAndEnd;
    action.sa_mask = FatalSignals();
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (std::size_t i = 0; i < kFatalSignals.size(); ++i) {
      sigaction(kFatalSignals[i], nullptr, &m_before[i]);
      if (m_before[i].sa_handler != SIG_IGN) {
        sigaction(kFatalSignals[i], &action, nullptr);
      }
    }
  }
  HandledSignals(const HandledSignals&) = delete;
  HandledSignals& operator=(const HandledSignals&) = delete;
  ~HandledSignals() {
    for (std::size_t i = 0; i < kFatalSignals.size(); ++i) {
      sigaction(kFatalSignals[i], &m_before[i], nullptr);
    }
  }

 private:
  std::array<struct sigaction, kFatalSignals.size()> m_before{};
};

fs::path DirectoryOf(const fs::path& file) {
  return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

// A new file, which goes with the object unless it was given a name.
class NewFile {
 public:
  // Number() is negative, with the reason in errno, when none could be made.
  NewFile(const fs::path& directory, mode_t mode) : m_descriptor(Create(directory, mode)) {}
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;
  ~NewFile() {
    const BlockedSignals blocked;
    unlink(nameOfNewFile.data());
    nameOfNewFile.front() = '\0';
  }

  int Number() const { return m_descriptor.Number(); }

  // Everything written so far has reached the disk, as far as there is one.
  bool Flush() {
    const bool isFlushed = fsync(m_descriptor.Number()) == 0 || errno == EINVAL;
    return isFlushed && m_descriptor.Close();
  }

  bool Rename(const fs::path& name) {
    const BlockedSignals blocked;
    if (std::rename(nameOfNewFile.data(), name.c_str()) != 0) {
      return false;
    }
    nameOfNewFile.front() = '\0';
    return true;
  }

 private:
  // A name that somebody else has taken leads to the next one.
  static int Create(const fs::path& directory, mode_t mode) {
    const BlockedSignals blocked;
    for (int number = 0;; ++number) {
      const std::string name =
          directory / Concat({".mkbarcode-", std::to_string(getpid()), "-", std::to_string(number)});
      if (name.size() >= nameOfNewFile.size()) {
        errno = ENAMETOOLONG;
        return -1;
      }
      const int descriptor = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
      if (descriptor >= 0) {
        name.copy(nameOfNewFile.data(), name.size());
        nameOfNewFile[name.size()] = '\0';
        return descriptor;
      }
      if (errno != EEXIST) {
        return -1;
      }
    }
  }

  HandledSignals m_handled;
  Descriptor m_descriptor;
};

bool IsOnProcFileSystem(const fs::path& directory) {
  struct statfs status {};
  return statfs(directory.c_str(), &status) == 0 && status.f_type == PROC_SUPER_MAGIC;
}

// The name at which a chain of symbolic links ends; none when it ends at an open file of a process.
std::optional<fs::path> FollowLinks(fs::path file) {
  while (true) {
    std::error_code error;
    const fs::path target = fs::read_symlink(file, error);
    if (error) {
      return file;
    }
    const fs::path directory = DirectoryOf(file);
    if (IsOnProcFileSystem(directory)) {
      return std::nullopt;
    }
    file = directory / target;
  }
}

// Owner, group and permissions of the earlier file. A group that cannot be kept loses its permissions.
bool TakeOver(int descriptor, const struct stat& earlier) {
  mode_t mode = earlier.st_mode & kPermissions;
  constexpr auto kSameOwner = static_cast<uid_t>(-1);
  if (fchown(descriptor, earlier.st_uid, earlier.st_gid) != 0 &&
      fchown(descriptor, kSameOwner, earlier.st_gid) != 0) {
    mode &= ~static_cast<mode_t>(S_IRWXG);
  }
  return fchmod(descriptor, mode) == 0;
}

// What stands under the name, if anything does.
std::optional<struct stat> StatusOf(const std::string& file, const std::string& failure) {
  std::optional<struct stat> status(std::in_place);
  if (stat(file.c_str(), &*status) == 0) {
    return status;
  }
  // Links in a circle and names that lead through a file end here.
  if (errno != ENOENT) {
    FailWithErrno(failure);
  }
  return std::nullopt;
}

}  // namespace

// A new file that takes a name at the end, or a file that is written in place.
class FileReplacement::Target {
 public:
  explicit Target(const std::string& file) : m_failure("cannot write " + file) {
    const std::optional<struct stat> earlier = StatusOf(file, m_failure);
    const bool isRegular = !earlier || S_ISREG(earlier->st_mode);
    if (const std::optional<fs::path> name = isRegular ? FollowLinks(file) : std::nullopt) {
      OpenBeside(*name, earlier);
    } else {
      OpenInPlace(file);
    }
  }

  void Write(std::string_view bytes) const { Require(WriteDescriptor(Number(), bytes)); }

  void Commit() {
    if (m_newFile) {
      Require(m_newFile->Flush() && m_newFile->Rename(m_name));
    } else {
      Require(m_inPlace->Close());
    }
  }

 private:
  void OpenInPlace(const std::string& file) {
    m_inPlace.emplace(open(file.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC | O_NOCTTY));
    Require(Number() >= 0);
  }

  void OpenBeside(const fs::path& name, const std::optional<struct stat>& earlier) {
    constexpr mode_t kDefaultMode = 0666;
    constexpr mode_t kPrivateMode = 0600;
    m_name = name;
    // Whoever protected a file from being written did not have in mind that it be replaced.
    Require(!earlier || faccessat(AT_FDCWD, name.c_str(), W_OK, AT_EACCESS) == 0);
    const fs::path directory = DirectoryOf(name);
    m_newFile.emplace(directory, earlier ? kPrivateMode : kDefaultMode);
    if (Number() < 0) {
      FailWithErrno(Concat({m_failure, ": cannot make a file in ", directory.string()}));
    }
    Require(!earlier || TakeOver(Number(), *earlier));
  }

  int Number() const { return m_newFile ? m_newFile->Number() : m_inPlace->Number(); }

  void Require(bool succeeded) const {
    if (!succeeded) {
      FailWithErrno(m_failure);
    }
  }

  std::string m_failure;
  fs::path m_name;
  std::optional<NewFile> m_newFile;
  std::optional<Descriptor> m_inPlace;
};

FileReplacement::FileReplacement(const std::string& file) : m_target(std::make_unique<Target>(file)) {}
FileReplacement::~FileReplacement() = default;

void FileReplacement::Write(std::string_view bytes) {
  m_target->Write(bytes);
}

void FileReplacement::Commit() {
  m_target->Commit();
}

void ReplaceFile(const std::string& file, std::string_view bytes) {
  FileReplacement replacement(file);
  replacement.Write(bytes);
  replacement.Commit();
}

}  // namespace barcode::tool
