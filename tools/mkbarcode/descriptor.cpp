#include "mkbarcode/descriptor.h"

#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

#include "mkbarcode/errors.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

constexpr std::size_t kChunk = 65536;

}  // namespace

bool Descriptor::Close() {
  const int number = std::exchange(m_number, -1);
  return number < 0 || close(number) == 0;
}

void FailWithErrno(const std::string& what) {
  throw RunError(Concat({what, ": ", std::generic_category().message(errno)}));
}

std::string ReadDescriptor(int descriptor, const std::string& name) {
  std::string bytes;
  std::array<char, kChunk> chunk{};
  while (true) {
    const ssize_t count = read(descriptor, chunk.data(), chunk.size());
    if (count < 0 && errno == EINTR) {
      continue;
    }
    if (count < 0) {
      FailWithErrno("cannot read " + name);
    }
    if (count == 0) {
      return bytes;
    }
    bytes.append(chunk.data(), static_cast<std::size_t>(count));
  }
}

bool WriteDescriptor(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = write(descriptor, bytes.data(), bytes.size());
    if (count >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno == EAGAIN) {
      pollfd wait = {descriptor, POLLOUT, 0};
      poll(&wait, 1, -1);
    } else if (errno != EINTR) {
      return false;
    }
  }
  return true;
}

}  // namespace barcode::tool
