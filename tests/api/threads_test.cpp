// Handles on different threads do not disturb each other.
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "support/barcode_object.h"
#include "support/capture.h"

namespace barcode::test {
namespace {

// A picture and a document of a text, drawn by an object of its own.
std::string DrawBoth(const std::string& text, int height) {
  const BarcodeObject code(BARCODE_CODE39);
  barcode_draw_1d(code, text.c_str(), 300, height);
  const auto png = code.Png();
  return std::string(png.begin(), png.end()) + code.SvgOf(text, 300, height);
}

TEST(Threads, HandlesOnDifferentThreadsDrawWhatTheyDrawAlone) {
  constexpr int kThreads = 4;
  constexpr int kRounds = 30;
  const auto text = [](int thread) { return "T" + std::to_string(thread); };
  (void)Capture([&] {
    std::vector<std::string> alone;
    alone.reserve(kThreads);
    for (int thread = 0; thread < kThreads; ++thread) {
      alone.push_back(DrawBoth(text(thread), 60 + 20 * thread));
    }
    std::vector<int> differences(kThreads);
    std::vector<std::thread> threads;
    threads.reserve(kThreads);
    for (int thread = 0; thread < kThreads; ++thread) {
      threads.emplace_back([&, thread] {
        for (int round = 0; round < kRounds; ++round) {
          const auto index = static_cast<std::size_t>(thread);
          if (DrawBoth(text(thread), 60 + 20 * thread) != alone[index]) {
            ++differences[index];
          }
        }
      });
    }
    for (std::thread& thread : threads) {
      thread.join();
    }
    EXPECT_EQ(differences, std::vector<int>(kThreads));
  });
}

}  // namespace
}  // namespace barcode::test
