#include "same/streams.h"

#include <sys/mman.h>
#include <unistd.h>

#include <stdexcept>

namespace barcode::same {
namespace {

int MemoryFile(const char* name) {
  const int file = memfd_create(name, MFD_CLOEXEC);
  if (file < 0) {
    throw std::runtime_error("cannot make a file in memory");
  }
  return file;
}

std::string Take(int file) {
  const off_t length = lseek(file, 0, SEEK_END);
  if (length <= 0) {
    return "";
  }
  std::string text(static_cast<std::size_t>(length), '\0');
  // The position is shared with the redirected descriptor: the next line is to be written at the beginning.
  if (pread(file, text.data(), text.size(), 0) != length || ftruncate(file, 0) != 0 ||
      lseek(file, 0, SEEK_SET) != 0) {
    throw std::runtime_error("cannot read a file in memory");
  }
  return text;
}

void Redirect(int descriptor, int file) {
  if (dup2(file, descriptor) < 0) {
    throw std::runtime_error("cannot redirect a descriptor");
  }
}

}  // namespace

Streams::Streams()
    : m_originalOut(dup(STDOUT_FILENO)),
      m_originalErr(dup(STDERR_FILENO)),
      m_out(MemoryFile("out")),
      m_err(MemoryFile("err")) {
  Join(false);
}

Streams::~Streams() {
  dup2(m_originalOut, STDOUT_FILENO);
  dup2(m_originalErr, STDERR_FILENO);
  for (const int file : {m_originalOut, m_originalErr, m_out, m_err}) {
    close(file);
  }
}

void Streams::Join(bool together) {
  Redirect(STDOUT_FILENO, m_out);
  Redirect(STDERR_FILENO, together ? m_out : m_err);
  m_joined = together;
}

std::string Streams::TakeOut() const {
  return Take(m_out);
}

std::string Streams::TakeErr() const {
  return Take(m_err);
}

}  // namespace barcode::same
