#pragma once

#include <gtest/gtest.h>

#include <latch>
#include <string>
#include <thread>
#include <vector>

#include "support/capture.h"

namespace barcode::test {

// Calls draw(thread) on several threads at once, many times each: what it returns must be what it returns for
// that thread's number when it runs alone. The threads come first, so that what the first call of a process
// sets up is set up by several at a time.
template <class Draw>
void ExpectThreadsDrawWhatTheyDrawAlone(int threadCount, int rounds, Draw draw) {
  const auto count = static_cast<std::size_t>(threadCount);
  std::vector<std::vector<std::string>> drawn(count);
  std::vector<std::string> alone(count);
  WithoutOutput([&] {
    std::latch start(threadCount);
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < count; ++i) {
      threads.emplace_back([&, i] {
        start.arrive_and_wait();
        for (int round = 0; round < rounds; ++round) {
          drawn[i].push_back(draw(static_cast<int>(i)));
        }
      });
    }
    for (std::thread& thread : threads) {
      thread.join();
    }
    for (std::size_t i = 0; i < count; ++i) {
      alone[i] = draw(static_cast<int>(i));
    }
  });
  for (std::size_t i = 0; i < count; ++i) {
    EXPECT_FALSE(alone[i].empty()) << i;
    // Compared here: pictures are not to be printed.
    EXPECT_TRUE(drawn[i] == std::vector(static_cast<std::size_t>(rounds), alone[i])) << i;
  }
}

}  // namespace barcode::test
