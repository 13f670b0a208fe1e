#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace barcode::test {

// What a child process leaves behind for its parent, whatever becomes of it.
struct Legacy {
  long point = 0;   // the last one begun
  long number = 0;  // of whatever the children count
  int findings = 0;
  bool isDone = false;
  std::array<char, 64> stage{};  // what it was doing
  std::size_t used = 0;
  std::array<char, 1U << 20U> text{};
};

// The legacy of the process that runs: of itself in a child, of its last child in the parent.
Legacy& SharedLegacy();

void SetStage(const char* stage);

// Appends a text to the legacy; what does not fit is dropped.
void Bequeath(std::string_view text);

// Runs the job in a child process, whose end comes with the job's, without any clean-up. Returns "" when the
// child came to that end, or how else it ended, with its call stack. The child gets `seconds` of time for
// each call of StillAlive().
std::string RunInChild(const std::function<void()>& job);
void StillAlive();

// Room for the call stack of a crash on this thread, while it lives; RunInChild has it for the job's thread.
class CrashStack {
 public:
  CrashStack();
  ~CrashStack();
  CrashStack(const CrashStack&) = delete;
  CrashStack& operator=(const CrashStack&) = delete;

 private:
  static constexpr std::size_t kSize = 1U << 16U;
  void* m_memory;
};

// The descriptors of standard output and standard error go to files in memory from its construction to the
// end of the process. What they hold is read without any allocation that outlives the call.
class Streams {
 public:
  Streams();

  // What was written since the last call of Clear().
  std::string_view Out() { return m_out.Text(); }
  std::string_view Err() { return m_err.Text(); }
  void Clear();

 private:
  struct Stream {
    std::string_view Text();

    int descriptor = -1;
    std::array<char, 1U << 16U> buffer{};
  };
  Stream m_out;
  Stream m_err;
};

}  // namespace barcode::test
