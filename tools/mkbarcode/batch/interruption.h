#pragma once

#include <array>
#include <csignal>

namespace barcode::tool {

// While it lives, SIGINT, SIGTERM and SIGHUP are noted instead of ending the program, the first of them; a
// second one ends it at once, without leaving temporary files behind. That nobody reads the output any more,
// or that a file grows too large, is an error of the write alone. There is one at a time.
class Interruption {
 public:
  Interruption();
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;
  ~Interruption();

  // 0 as long as there was none.
  static int Signal();

  // Can be read as soon as there was one, or after WakeUp.
  int WakeUpDescriptor() const { return m_wakeUp; }
  // Whoever waits for it is to look around.
  void WakeUp() const;

  // While it lives, a call that waits, such as the opening of a pipe with a name, ends with EINTR after a
  // signal, and not only when the signal came during the call: it might come just before.
  class BreaksOffCalls {
   public:
    BreaksOffCalls();
    BreaksOffCalls(const BreaksOffCalls&) = delete;
    BreaksOffCalls& operator=(const BreaksOffCalls&) = delete;
    ~BreaksOffCalls();

   private:
    struct sigaction m_before {};
  };

 private:
  int m_wakeUp;
  std::array<struct sigaction, 5> m_before{};
};

}  // namespace barcode::tool
