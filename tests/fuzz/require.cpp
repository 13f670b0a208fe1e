#include "fuzz/require.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace barcode::fuzz {
namespace {

ssize_t Discard(void* /*cookie*/, const char* /*bytes*/, std::size_t size) {
  return static_cast<ssize_t>(size);
}

// A stream that costs no call of the system.
std::FILE* OpenSink() {
  std::FILE* const sink =
      fopencookie(nullptr, "w", {.read = nullptr, .write = Discard, .seek = nullptr, .close = nullptr});
  Require(sink != nullptr, "a stream to discard output can be opened");
  return sink;
}

}  // namespace

void Require(bool kept, std::string_view promise) {
  if (kept) {
    return;
  }
  const std::string line = "Promise broken: " + std::string(promise) + "\n";
  (void)!write(STDERR_FILENO, line.data(), line.size());
  std::abort();
}

void SilenceStreams() {
  stdout = OpenSink();
  stderr = OpenSink();
}

}  // namespace barcode::fuzz
