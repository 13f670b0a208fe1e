#pragma once

#include <sys/types.h>
#include <unistd.h>

#include <string>
#include <string_view>
#include <vector>

namespace barcode::tool {

// The built program, while it runs: its standard input and output are pipes of the test, its standard error
// goes to a file.
class RunningProgram {
 public:
  RunningProgram(const std::vector<std::string>& arguments, const std::string& errorFile);
  RunningProgram(const RunningProgram&) = delete;
  RunningProgram& operator=(const RunningProgram&) = delete;
  // Kills what still runs.
  ~RunningProgram();

  void Write(std::string_view bytes) const;
  // As many as are taken without waiting, of at most so many.
  std::size_t WriteWhatIsTaken(std::string_view bytes) const;
  // Whether it has written as much as fits in the pipe.
  bool OutputIsFull() const;
  void CloseInput();
  void CloseOutput();
  // The next line of the output, with its end; what there is when none comes within two minutes.
  std::string ReadLine();
  std::string ReadToEnd();
  void Signal(int signal) const;
  // Whether it has a handler for the signal by now.
  bool Catches(int signal) const;
  // Whether a signal that was sent has reached it: a second one is another then.
  bool HasTaken(int signal) const;
  // Bytes that are its own.
  std::size_t Memory() const;
  // The exit status; 1000 and the signal's number when one ended it.
  int Wait();

 private:
  bool HasInMask(std::string_view mask, int signal) const;

  pid_t m_process = -1;
  int m_input = -1;
  int m_output = -1;
  std::string m_read;
};

// Whether it becomes true within two minutes.
template <class Condition>
bool Eventually(const Condition& condition) {
  for (int i = 0; i < 12'000; ++i) {
    if (condition()) {
      return true;
    }
    usleep(10'000);
  }
  return false;
}

}  // namespace barcode::tool
