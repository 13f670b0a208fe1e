#pragma once

#include <algorithm>
#include <ctime>
#include <limits>

namespace barcode::test {

// Seconds of a processor that the calling thread spends in a call, the least of several tries: what else runs
// on the machine, and whether this process is kept waiting, hardly shows.
template <class Call>
double ProcessorTime(Call call) {
  const auto now = [] {
    std::timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
  };
  double least = std::numeric_limits<double>::infinity();
  constexpr int kTries = 5;
  for (int i = 0; i < kTries; ++i) {
    const double start = now();
    call();
    least = std::min(least, now() - start);
  }
  return least;
}

}  // namespace barcode::test
