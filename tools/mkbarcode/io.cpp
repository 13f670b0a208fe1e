#include "mkbarcode/io.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <utility>

#include "mkbarcode/descriptor.h"
#include "mkbarcode/errors.h"
#include "mkbarcode/file_replacement.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {

void ReserveStandardDescriptors() {
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(descriptor, F_GETFD) >= 0) {
      continue;
    }
    // The lowest free number is the one wanted, as those below are open by now.
    const int access = descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY;
    if (open("/dev/null", access) < 0) {
      return;
    }
  }
}

std::string ReadAll(const std::string& file) {
  if (file == "-") {
    return ReadDescriptor(STDIN_FILENO, "standard input");
  }
  const Descriptor descriptor(open(file.c_str(), O_RDONLY | O_CLOEXEC));
  if (descriptor.Number() < 0) {
    FailWithErrno("cannot read " + file);
  }
  return ReadDescriptor(descriptor.Number(), file);
}

std::string ReadText(const std::string& file, bool keepNewline) {
  std::string text = ReadAll(file);
  if (keepNewline || !text.ends_with('\n')) {
    return text;
  }
  text.pop_back();
  if (text.ends_with('\r')) {
    text.pop_back();
  }
  return text;
}

void WriteAll(const std::string& file, std::string_view bytes) {
  if (file != "-") {
    ReplaceFile(file, bytes);
  } else if (!WriteDescriptor(STDOUT_FILENO, bytes)) {
    FailWithErrno("cannot write to standard output");
  }
}

void MakeDirectory(const std::string& directory) {
  std::error_code error;
  std::filesystem::create_directories(directory, error);
  if (!std::filesystem::is_directory(directory)) {
    throw RunError(Concat({"cannot make the directory ", directory, error ? ": " : "",
                           error ? error.message() : std::string()}));
  }
}

void WriteToStandardError(std::string_view text) {
  WriteDescriptor(STDERR_FILENO, text);
}

Redirection Redirection::ToDescriptor(int descriptor, int target) {
  const int copy = fcntl(target, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  if (copy < 0) {
    FailWithErrno("cannot redirect the library's output");
  }
  return {descriptor, copy};
}

Redirection Redirection::ToNothing(int descriptor) {
  const int null = open("/dev/null", O_WRONLY | O_CLOEXEC);
  if (null < 0) {
    FailWithErrno("cannot open /dev/null");
  }
  return {descriptor, null};
}

Redirection Redirection::ToBuffer(int descriptor) {
  const int buffer = memfd_create("diagnostics", MFD_CLOEXEC);
  if (buffer < 0) {
    FailWithErrno("cannot redirect the library's output");
  }
  return {descriptor, buffer};
}

Redirection::Redirection(int descriptor, int target)
    : m_descriptor(descriptor),
      m_saved(fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1)),
      m_target(target) {
  if (m_saved >= 0 && dup2(target, descriptor) >= 0) {
    return;
  }
  const int reason = errno;
  if (m_saved >= 0) {
    close(m_saved);
  }
  close(target);
  errno = reason;
  FailWithErrno("cannot redirect the library's output");
}

Redirection::Redirection(Redirection&& other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, -1)),
      m_saved(std::exchange(other.m_saved, -1)),
      m_target(std::exchange(other.m_target, -1)) {}

Redirection::~Redirection() {
  if (m_descriptor < 0) {
    return;
  }
  std::fflush(nullptr);
  dup2(m_saved, m_descriptor);
  close(m_saved);
  close(m_target);
}

std::string Redirection::Contents() const {
  std::fflush(nullptr);
  lseek(m_target, 0, SEEK_SET);
  std::string contents = ReadDescriptor(m_target, "the library's messages");
  return contents;
}

}  // namespace barcode::tool
