#include "faults/isolated.h"

#include <execinfo.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <new>
#include <stdexcept>

namespace barcode::test {
namespace {

constexpr unsigned kSeconds = 180;

void* SharedMemory(std::size_t size) {
  void* const memory = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) {
    throw std::runtime_error("no shared memory");
  }
  return memory;
}

// The call stack goes to a file that the parent reads, and the process dies as it would have.
int stackFile = -1;

void WriteStackAndDie(int signal) {
  std::array<void*, 48> frames{};
  const int depth = backtrace(frames.data(), static_cast<int>(frames.size()));
  backtrace_symbols_fd(frames.data(), depth, stackFile);
  (void)std::signal(signal, SIG_DFL);
  (void)raise(signal);
}

void CatchCrashes() {
  std::array<void*, 1> frames{};
  (void)backtrace(frames.data(), 1);  // loads what it needs
  struct sigaction action {};
  action.sa_handler = &WriteStackAndDie;
  action.sa_flags = SA_ONSTACK;
  for (const int signal : {SIGSEGV, SIGBUS, SIGABRT, SIGILL, SIGFPE, SIGALRM}) {
    sigaction(signal, &action, nullptr);
  }
}

std::string ReadAll(int descriptor) {
  std::string text;
  std::array<char, 4096> buffer{};
  off_t offset = 0;
  for (ssize_t read = 0; (read = pread(descriptor, buffer.data(), buffer.size(), offset)) > 0;
       offset += read) {
    text.append(buffer.data(), static_cast<std::size_t>(read));
  }
  return text;
}

std::string DescribeEnd(int status) {
  if (WIFSIGNALED(status)) {
    return std::string("killed by signal ") + strsignal(WTERMSIG(status)) + '\n';
  }
  return "ended the process with status " + std::to_string(WEXITSTATUS(status)) + '\n';
}

}  // namespace

Legacy& SharedLegacy() {
  static auto& legacy = *new (SharedMemory(sizeof(Legacy))) Legacy;  // NOLINT: in memory that is not freed
  return legacy;
}

void SetStage(const char* stage) {
  auto& text = SharedLegacy().stage;
  std::strncpy(text.data(), stage, text.size() - 1);
}

void Bequeath(std::string_view text) {
  Legacy& legacy = SharedLegacy();
  const std::size_t length = std::min(text.size(), legacy.text.size() - legacy.used);
  std::memcpy(legacy.text.data() + legacy.used, text.data(), length);
  legacy.used += length;
}

std::string RunInChild(const std::function<void()>& job) {
  SharedLegacy();
  (void)std::fflush(stdout);
  (void)std::fflush(stderr);
  stackFile = memfd_create("stack", 0);
  const pid_t child = fork();
  if (child < 0 || stackFile < 0) {
    throw std::runtime_error("no child process");
  }
  if (child == 0) {
    const CrashStack stack;
    CatchCrashes();
    StillAlive();
    job();
    _exit(0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  const std::string stack = ReadAll(stackFile);
  close(stackFile);
  return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? "" : DescribeEnd(status) + stack;
}

void StillAlive() {
  alarm(kSeconds);
}

CrashStack::CrashStack()
    : m_memory(mmap(nullptr, kSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)) {
  const stack_t alternative{.ss_sp = m_memory, .ss_flags = 0, .ss_size = kSize};
  sigaltstack(&alternative, nullptr);
}

CrashStack::~CrashStack() {
  const stack_t none{.ss_sp = nullptr, .ss_flags = SS_DISABLE, .ss_size = 0};
  sigaltstack(&none, nullptr);
  munmap(m_memory, kSize);
}

Streams::Streams() {
  (void)std::fflush(stdout);
  (void)std::fflush(stderr);
  m_out.descriptor = memfd_create("stdout", 0);
  m_err.descriptor = memfd_create("stderr", 0);
  if (m_out.descriptor < 0 || m_err.descriptor < 0 || dup2(m_out.descriptor, STDOUT_FILENO) < 0 ||
      dup2(m_err.descriptor, STDERR_FILENO) < 0) {
    throw std::runtime_error("cannot redirect a descriptor");
  }
}

std::string_view Streams::Stream::Text() {
  const ssize_t read = pread(descriptor, buffer.data(), buffer.size(), 0);
  return {buffer.data(), static_cast<std::size_t>(std::max<ssize_t>(read, 0))};
}

void Streams::Clear() {
  for (const int descriptor : {m_out.descriptor, m_err.descriptor}) {
    if (ftruncate(descriptor, 0) != 0 || lseek(descriptor, 0, SEEK_SET) < 0) {
      throw std::runtime_error("cannot empty a file in memory");
    }
  }
}

}  // namespace barcode::test
