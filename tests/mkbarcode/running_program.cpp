#include "mkbarcode/running_program.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <fstream>
#include <stdexcept>
#include <string>
#include <utility>

#include "support/own_memory.h"

namespace barcode::tool {
namespace {

constexpr int kPatience = 120'000;  // milliseconds

// Whoever runs the tests may have signals ignored or blocked, which a program takes over.
void TakeSignalsAsUsual() {
  for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGTERM}) {
    (void)std::signal(signal, SIG_DFL);
  }
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
}

void CloseOne(int& descriptor) {
  if (const int number = std::exchange(descriptor, -1); number >= 0) {
    close(number);
  }
}

}  // namespace

RunningProgram::RunningProgram(const std::vector<std::string>& arguments, const std::string& errorFile) {
  std::array<int, 2> input{};
  std::array<int, 2> output{};
  if (pipe2(input.data(), O_CLOEXEC) != 0 || pipe2(output.data(), O_CLOEXEC) != 0) {
    throw std::runtime_error("no pipes");
  }
  std::vector<std::string> words = arguments;
  words.insert(words.begin(), MKBARCODE_PROGRAM);
  std::vector<char*> pointers;
  pointers.reserve(words.size() + 1);
  for (std::string& word : words) {
    pointers.push_back(word.data());
  }
  pointers.push_back(nullptr);
  const int errors = open(errorFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  m_process = fork();
  if (m_process == 0) {
    dup2(input[0], STDIN_FILENO);
    dup2(output[1], STDOUT_FILENO);
    dup2(errors, STDERR_FILENO);
    TakeSignalsAsUsual();
    execv(pointers[0], pointers.data());
    _exit(127);
  }
  close(input[0]);
  close(output[1]);
  close(errors);
  m_input = input[1];
  m_output = output[0];
  std::signal(SIGPIPE, SIG_IGN);  // the program may end before it has read all
}

RunningProgram::~RunningProgram() {
  CloseInput();
  CloseOutput();
  if (m_process > 0) {
    kill(m_process, SIGKILL);
    waitpid(m_process, nullptr, 0);
  }
}

void RunningProgram::Write(std::string_view bytes) const {
  while (!bytes.empty()) {
    const ssize_t count = write(m_input, bytes.data(), bytes.size());
    if (count < 0) {
      throw std::runtime_error("the program does not read");
    }
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

std::size_t RunningProgram::WriteWhatIsTaken(std::string_view bytes) const {
  fcntl(m_input, F_SETFL, O_NONBLOCK);
  const ssize_t count = write(m_input, bytes.data(), bytes.size());
  fcntl(m_input, F_SETFL, 0);
  return count < 0 ? 0 : static_cast<std::size_t>(count);
}

bool RunningProgram::OutputIsFull() const {
  const std::string path = "/proc/self/fd/" + std::to_string(m_output);
  const int otherEnd = open(path.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
  pollfd room = {otherEnd, POLLOUT, 0};
  const bool isFull = otherEnd >= 0 && poll(&room, 1, 0) == 0;
  close(otherEnd);
  return isFull;
}

void RunningProgram::CloseInput() {
  CloseOne(m_input);
}

void RunningProgram::CloseOutput() {
  CloseOne(m_output);
}

std::string RunningProgram::ReadLine() {
  while (true) {
    if (const std::size_t end = m_read.find('\n'); end != std::string::npos) {
      std::string line = m_read.substr(0, end + 1);
      m_read.erase(0, end + 1);
      return line;
    }
    pollfd wait = {m_output, POLLIN, 0};
    std::array<char, 4096> block{};
    const ssize_t count = poll(&wait, 1, kPatience) == 1 ? read(m_output, block.data(), block.size()) : 0;
    if (count <= 0) {
      return std::exchange(m_read, "");
    }
    m_read.append(block.data(), static_cast<std::size_t>(count));
  }
}

std::string RunningProgram::ReadToEnd() {
  std::string all;
  for (std::string line = ReadLine(); !line.empty(); line = ReadLine()) {
    all += line;
  }
  return all;
}

void RunningProgram::Signal(int signal) const {
  kill(m_process, signal);
}

bool RunningProgram::Catches(int signal) const {
  return HasInMask("SigCgt:", signal);
}

bool RunningProgram::HasTaken(int signal) const {
  return !HasInMask("ShdPnd:", signal);
}

// A mask of signals in hexadecimal, bit 0 for signal 1.
bool RunningProgram::HasInMask(std::string_view mask, int signal) const {
  constexpr int kHexadecimal = 16;
  std::ifstream status("/proc/" + std::to_string(m_process) + "/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with(mask)) {
      const std::uint64_t bits = std::stoull(line.substr(mask.size()), nullptr, kHexadecimal);
      return (bits >> static_cast<unsigned>(signal - 1) & 1U) != 0;
    }
  }
  return false;
}

std::size_t RunningProgram::Memory() const {
  return test::OwnMemory(std::to_string(m_process));
}

int RunningProgram::Wait() {
  int status = 0;
  waitpid(std::exchange(m_process, -1), &status, 0);
  constexpr int kSignalled = 1000;
  return WIFEXITED(status) ? WEXITSTATUS(status) : kSignalled + WTERMSIG(status);
}

}  // namespace barcode::tool
