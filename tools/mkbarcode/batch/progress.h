#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

#include "mkbarcode/batch/parcel.h"

namespace barcode::tool {

// Tells on standard error how far a run has come: a bar where that is a terminal, else a line every ten
// seconds.
class Progress {
 public:
  enum class Shown { kNothing, kBar, kLines };
  // inputSize: bytes of all rows, where it is known.
  Progress(Shown shown, std::optional<std::uint64_t> inputSize);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress() { Clear(); }

  static Shown OnStandardError(bool isQuiet);

  void Tell(const Counts& counts, std::uint64_t bytesTaken);
  // Takes the bar off the terminal, for something else to be written there.
  void Clear();

 private:
  using Clock = std::chrono::steady_clock;

  Shown m_shown;
  std::optional<std::uint64_t> m_inputSize;
  Clock::time_point m_start;
  Clock::time_point m_last;
  bool m_isBarShown = false;
};

// "12000 rows, 48 %, 11900 a second, 00:01 left, 3 failed"; done: the part of the input, where it is known.
std::string ProgressText(const Counts& counts, std::optional<double> done, double seconds);

// "[####------]" for a half.
std::string Bar(double done);

}  // namespace barcode::tool
