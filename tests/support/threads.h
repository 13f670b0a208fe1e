#pragma once

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace barcode::test {

// Calls draw(thread) on several threads at once, many times each: what it returns must be what it returned
// for that thread's number when it ran alone.
template <class Draw>
void ExpectThreadsDrawWhatTheyDrawAlone(int rounds, Draw draw) {
  constexpr int kThreads = 4;
  std::vector<std::string> alone;
  alone.reserve(kThreads);
  for (int thread = 0; thread < kThreads; ++thread) {
    alone.push_back(draw(thread));
  }
  std::vector<int> differences(kThreads);
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (int thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&, index = static_cast<std::size_t>(thread), thread] {
      for (int round = 0; round < rounds; ++round) {
        differences[index] += draw(thread) != alone[index] ? 1 : 0;
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(differences, std::vector<int>(kThreads));
}

}  // namespace barcode::test
