#include "support/capture.h"

#include <unistd.h>

#include <cstdio>
#include <stdexcept>

namespace barcode::test {
namespace {

// One descriptor redirected into an unnamed file while the object lives.
class Redirected {
 public:
  explicit Redirected(int descriptor)
      : m_descriptor(descriptor), m_original(dup(descriptor)), m_file(std::tmpfile()) {
    if (m_original < 0 || m_file == nullptr || dup2(fileno(m_file), descriptor) < 0) {
      throw std::runtime_error("cannot redirect a descriptor");
    }
  }

  Redirected(const Redirected&) = delete;
  Redirected& operator=(const Redirected&) = delete;

  ~Redirected() {
    Restore();
    (void)std::fclose(m_file);
  }

  std::string Text() {
    Restore();
    std::string text;
    std::rewind(m_file);
    char buffer[65536];
    for (std::size_t read = 0; (read = std::fread(buffer, 1, sizeof buffer, m_file)) != 0;) {
      text.append(buffer, read);
    }
    return text;
  }

 private:
  void Restore() {
    if (m_original < 0) {
      return;
    }
    dup2(m_original, m_descriptor);
    close(m_original);
    m_original = -1;
  }

  int m_descriptor;
  int m_original;
  std::FILE* m_file;
};

Captured CaptureAnd(const std::function<void()>& call, bool flush) {
  (void)std::fflush(stdout);
  (void)std::fflush(stderr);
  Redirected out(STDOUT_FILENO);
  Redirected err(STDERR_FILENO);
  call();
  if (flush) {
    (void)std::fflush(stdout);
  }
  return {out.Text(), err.Text()};
}

}  // namespace

Captured Capture(const std::function<void()>& call) {
  return CaptureAnd(call, false);
}

Captured CaptureInternal(const std::function<void()>& call) {
  return CaptureAnd(call, true);
}

void WithoutOutput(const std::function<void()>& call) {
  (void)std::fflush(stdout);
  const Redirected out(STDOUT_FILENO);
  call();
  (void)std::fflush(stdout);
}

}  // namespace barcode::test
