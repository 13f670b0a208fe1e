#pragma once

#include <gtest/gtest.h>

#include <latch>
#include <string>
#include <thread>
#include <vector>

namespace barcode::test {

// Calls draw(thread) on several threads at once, many times each: what it returns must be what it returns for
// that thread's number when it runs alone. The threads come first, so that what the first call of a process
// sets up is set up by several at a time.
template <class Draw>
void ExpectThreadsDrawWhatTheyDrawAlone(int threadCount, int rounds, Draw draw) {
  const auto count = static_cast<std::size_t>(threadCount);
  std::vector<std::vector<std::string>> drawn(count);
  std::latch start(threadCount);
  std::vector<std::thread> threads;
  threads.reserve(count);
  for (int thread = 0; thread < threadCount; ++thread) {
    threads.emplace_back([&start, &draw, rounds, thread, &own = drawn[static_cast<std::size_t>(thread)]] {
      start.arrive_and_wait();
      for (int round = 0; round < rounds; ++round) {
        own.push_back(draw(thread));
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  for (int thread = 0; thread < threadCount; ++thread) {
    const std::vector<std::string> alone(static_cast<std::size_t>(rounds), draw(thread));
    // Not EXPECT_EQ, which would print the pictures.
    EXPECT_TRUE(drawn[static_cast<std::size_t>(thread)] == alone) << thread;
  }
}

}  // namespace barcode::test
