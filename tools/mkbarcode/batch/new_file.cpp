#include "mkbarcode/batch/new_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include "base/line.h"

namespace barcode::tool {
namespace {

constexpr mode_t kMode = 0666;  // less what the umask takes
constexpr std::size_t kNoSlot = static_cast<std::size_t>(-1);

// The temporary names that stand in directories: all that a signal handler has to know. Each thread has one
// at most.
struct TemporaryName {
  std::atomic<bool> isTaken = false;
  std::atomic<int> directory = -1;  // negative: there is no such file
  std::array<char, 64> name{};
};
std::array<TemporaryName, 1100> temporaryNames;

std::atomic<bool> hasNamelessFiles = true;

std::size_t TakeSlot() {
  for (std::size_t slot = 0; slot < temporaryNames.size(); ++slot) {
    if (!temporaryNames[slot].isTaken.exchange(true)) {
      return slot;
    }
  }
  std::abort();  // not reached: there are more slots than threads
}

void ReleaseSlot(std::size_t slot) {
  temporaryNames[slot].directory = -1;
  temporaryNames[slot].isTaken = false;
}

// Calls make(name) until it has found a name that nobody has. False with the reason in errno.
template <class Make>
bool MakeTemporaryName(std::size_t slot, int directory, const Make& make) {
  TemporaryName& temporary = temporaryNames[slot];
  for (int number = 0;; ++number) {
    std::snprintf(temporary.name.data(), temporary.name.size(), ".mkbarcode-%d-%zu-%d", getpid(), slot,
                  number);
    if (make(temporary.name.data())) {
      temporary.directory = directory;
      return true;
    }
    if (errno != EEXIST) {
      return false;
    }
  }
}

void RemoveTemporaryName(std::size_t slot) {
  TemporaryName& temporary = temporaryNames[slot];
  const int directory = temporary.directory.exchange(-1);
  if (directory >= 0) {
    unlinkat(directory, temporary.name.data(), 0);
  }
}

// What a file system without nameless files says, or a kernel.
bool IsNotKnown(int error) {
  return error == EOPNOTSUPP || error == EISDIR || error == EINVAL || error == ENOENT;
}

}  // namespace

int OpenNameless(const std::string& directory) {
  constexpr mode_t kPrivate = 0600;
  const int file = open(directory.c_str(), O_RDWR | O_TMPFILE | O_CLOEXEC, kPrivate);
  if (file >= 0 || !IsNotKnown(errno)) {
    return file;
  }
  std::string name = Line(directory, "/.mkbarcode-XXXXXX");
  const int named = mkostemp(name.data(), O_CLOEXEC);
  if (named >= 0) {
    unlink(name.c_str());
  }
  return named;
}

NewFile::NewFile(int directory)
    : m_directory(directory),
      m_file(std::in_place,
             hasNamelessFiles ? openat(directory, ".", O_WRONLY | O_TMPFILE | O_CLOEXEC, kMode) : -1),
      m_slot(kNoSlot) {
  if (Number() >= 0 || (hasNamelessFiles && !IsNotKnown(errno))) {
    return;
  }
  hasNamelessFiles = false;
  m_slot = TakeSlot();
  m_file.emplace(OpenNamed());
}

int NewFile::OpenNamed() {
  int file = -1;
  MakeTemporaryName(m_slot, m_directory, [&](const char* name) {
    file = openat(m_directory, name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kMode);
    return file >= 0;
  });
  return file;
}

NewFile::~NewFile() {
  if (m_slot != kNoSlot) {
    RemoveTemporaryName(m_slot);
    ReleaseSlot(m_slot);
  }
}

bool NewFile::Link(const char* name) const {
  std::array<char, 32> path{};
  std::snprintf(path.data(), path.size(), "/proc/self/fd/%d", Number());
  return linkat(AT_FDCWD, path.data(), m_directory, name, AT_SYMLINK_FOLLOW) == 0;
}

bool NewFile::TakeName(const char* name) {
  if (m_slot == kNoSlot) {
    if (Link(name)) {
      return true;
    }
    if (errno != EEXIST) {
      return false;
    }
    // A link takes no other's place, a rename does.
    m_slot = TakeSlot();
    if (!MakeTemporaryName(m_slot, m_directory, [&](const char* temporary) { return Link(temporary); })) {
      return false;
    }
  }
  TemporaryName& temporary = temporaryNames[m_slot];
  if (renameat(m_directory, temporary.name.data(), m_directory, name) != 0) {
    return false;
  }
  temporary.directory = -1;
  return true;
}

void RemoveTemporaryFiles() {
  for (std::size_t slot = 0; slot < temporaryNames.size(); ++slot) {
    RemoveTemporaryName(slot);
  }
}

}  // namespace barcode::tool
