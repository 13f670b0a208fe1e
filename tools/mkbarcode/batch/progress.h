#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "mkbarcode/batch/parcel.h"

namespace barcode::tool {

// Tells on standard error how far a run has come: a bar where that is a terminal, else a line every ten
// seconds, also while nothing is done.
class Progress {
 public:
  enum class Shown { kNothing, kBar, kLines };

  struct Intervals {
    std::chrono::milliseconds lines = std::chrono::seconds(10);
    std::chrono::milliseconds bars = std::chrono::milliseconds(100);
    std::chrono::milliseconds idleBars = std::chrono::seconds(1);  // when nothing is done
  };

  // inputSize: bytes of all rows, where it is known.
  Progress(Shown shown, std::optional<std::uint64_t> inputSize) : Progress(shown, inputSize, Intervals()) {}
  Progress(Shown shown, std::optional<std::uint64_t> inputSize, Intervals intervals);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress();

  static Shown OnStandardError(bool isQuiet);

  void Tell(const Counts& counts, std::uint64_t bytesTaken);
  // Takes the bar off the terminal, for something else to be written there.
  void Clear();

 private:
  using Clock = std::chrono::steady_clock;

  void Tick();
  void Show(Clock::time_point now);
  Clock::duration Between() const;
  Clock::time_point NextTick() const;

  const Shown m_shown;
  const std::optional<std::uint64_t> m_inputSize;
  const Intervals m_intervals;
  const Clock::time_point m_start;

  std::mutex m_mutex;  // of what follows
  std::condition_variable m_ended;
  bool m_isEnded = false;
  Clock::time_point m_last;     // when something was shown
  Clock::time_point m_cleared;  // for something else to be written
  Counts m_counts;
  std::uint64_t m_bytesTaken = 0;
  bool m_isBarShown = false;

  std::thread m_ticking;  // last: it uses all of the others
};

// "12000 rows, 48 %, 11900 a second, 00:01 left, 3 failed"; done: the part of the input, where it is known.
std::string ProgressText(const Counts& counts, std::optional<double> done, double seconds);

// "[####------]" for a half.
std::string Bar(double done);

}  // namespace barcode::tool
