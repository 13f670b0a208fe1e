// A child of a process whose other threads draw may draw, too: it finds no lock that one of them held.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "support/barcode_object.h"
#include "support/capture.h"
#include "threads/every_function.h"

namespace barcode::test {
namespace {

using std::chrono::steady_clock;

enum class ChildEnd { kDone, kFailed, kHung };

std::ostream& operator<<(std::ostream& stream, ChildEnd end) {
  switch (end) {
    case ChildEnd::kDone:
      return stream << "done";
    case ChildEnd::kFailed:
      return stream << "failed";
    case ChildEnd::kHung:
      break;
  }
  return stream << "hung";
}

[[noreturn]] void CallAndExit(const std::function<void()>& call) {
  try {
    call();
    _exit(EXIT_SUCCESS);
  } catch (...) {
    _exit(EXIT_FAILURE);
  }
}

// Forks a child that makes the call; it has failed when the call throws. One that does not end within three
// minutes hangs, and is killed.
ChildEnd RunInChild(const std::function<void()>& call) {
  const pid_t child = fork();
  if (child == 0) {
    CallAndExit(call);
  }
  const auto deadline = steady_clock::now() + std::chrono::minutes(3);
  int status = 0;
  while (waitpid(child, &status, WNOHANG) != child) {
    if (steady_clock::now() > deadline) {
      kill(child, SIGKILL);
      waitpid(child, &status, 0);
      return ChildEnd::kHung;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS ? ChildEnd::kDone : ChildEnd::kFailed;
}

// Threads that call draw(thread) again and again as long as the object lives.
class DrawingThreads {
 public:
  explicit DrawingThreads(const std::function<void(int)>& draw) {
    constexpr int kThreads = 4;
    for (int thread = 0; thread < kThreads; ++thread) {
      m_threads.emplace_back([this, draw, thread] {
        while (!m_isEnding) {
          draw(thread);
        }
      });
    }
  }
  DrawingThreads(const DrawingThreads&) = delete;
  DrawingThreads& operator=(const DrawingThreads&) = delete;
  ~DrawingThreads() {
    m_isEnding = true;
    for (std::thread& thread : m_threads) {
      thread.join();
    }
  }

 private:
  std::atomic<bool> m_isEnding = false;
  std::vector<std::thread> m_threads;
};

// A picture and a document that are small, so that most of the time goes into what is locked.
std::string DrawSmall(int type, const char* text, int height) {
  const BarcodeObject code(type);
  if (barcode_draw_1d(code, text, 40, height) != 1) {
    throw std::runtime_error("the draw failed");
  }
  const auto png = code.Png();
  return std::string(png.begin(), png.end()) + code.SvgOf(text, 40, height);
}

// Forks children that have to draw what is drawn without threads.
void ExpectChildrenToDraw(int children, const std::function<std::string(int)>& draw) {
  constexpr int kVariant = 9;
  std::vector<ChildEnd> ends;
  WithoutOutput([&] {
    const std::string expected = draw(kVariant);
    const DrawingThreads threads(draw);
    for (int child = 0; child < children && (ends.empty() || ends.back() == ChildEnd::kDone); ++child) {
      ends.push_back(RunInChild([&] {
        if (draw(kVariant) != expected) {
          throw std::runtime_error("another picture");
        }
      }));
    }
  });
  EXPECT_EQ(ends, std::vector(static_cast<std::size_t>(children), ChildEnd::kDone));
}

TEST(Fork, WhileTextIsDrawn) {
  ExpectChildrenToDraw(200, [](int variant) { return DrawSmall(BARCODE_CODE39, "A", 20 + variant); });
}

TEST(Fork, WhilePicturesWithoutTextAreDrawn) {
  ExpectChildrenToDraw(400, [](int variant) { return DrawSmall(BARCODE_QR, "A", 20 + variant); });
}

TEST(Fork, WhileEverythingIsDrawn) {
  ExpectChildrenToDraw(4, UseEveryFunction);
}

void DrawText(int variant) {
  DrawSmall(BARCODE_CODE39, "A", 20 + variant);
}

// A child has threads and children of its own.
TEST(Fork, InAChildThatDrawsOnThreads) {
  ChildEnd end = ChildEnd::kFailed;
  WithoutOutput([&] {
    const DrawingThreads threads(DrawText);
    end = RunInChild([&] {
      const DrawingThreads ownThreads(DrawText);
      for (int grandchild = 0; grandchild < 20; ++grandchild) {
        if (RunInChild([] { DrawText(9); }) != ChildEnd::kDone) {
          throw std::runtime_error("a grandchild failed");
        }
      }
    });
  });
  EXPECT_EQ(end, ChildEnd::kDone);
}

// Several threads fork, and the parent goes on drawing.
TEST(Fork, OnSeveralThreadsAtOnce) {
  std::vector<ChildEnd> ends(4, ChildEnd::kFailed);
  WithoutOutput([&] {
    std::vector<std::thread> threads;
    threads.reserve(ends.size());
    for (ChildEnd& end : ends) {
      threads.emplace_back([&end] {
        for (int child = 0; child < 20; ++child) {
          DrawText(child);
          end = RunInChild([child] { DrawText(child); });
          if (end != ChildEnd::kDone) {
            return;
          }
        }
      });
    }
    for (std::thread& thread : threads) {
      thread.join();
    }
  });
  EXPECT_EQ(ends, std::vector(4, ChildEnd::kDone));
}

// Standard output as a stream that forks whenever it is written to; the ends of the children.
class ForkingOutput {
 public:
  ForkingOutput() : m_stream(fopencookie(this, "w", {nullptr, Write, nullptr, nullptr})), m_original(stdout) {
    stdout = m_stream;
  }
  ForkingOutput(const ForkingOutput&) = delete;
  ForkingOutput& operator=(const ForkingOutput&) = delete;
  ~ForkingOutput() {
    stdout = m_original;
    (void)std::fclose(m_stream);
  }

  const std::vector<ChildEnd>& Ends() const { return m_ends; }
  // From the fork to the end of the child, of the one that was done soonest.
  steady_clock::duration Shortest() const { return m_shortest; }

 private:
  static ssize_t Write(void* self, const char* /*bytes*/, std::size_t size) {
    ForkingOutput& output = *static_cast<ForkingOutput*>(self);
    const auto start = steady_clock::now();
    output.m_ends.push_back(RunInChild([] {}));
    output.m_shortest = std::min(output.m_shortest, steady_clock::now() - start);
    return static_cast<ssize_t>(size);
  }

  std::FILE* m_stream;
  std::FILE* m_original;
  std::vector<ChildEnd> m_ends;
  steady_clock::duration m_shortest = steady_clock::duration::max();
};

// As a signal handler might do. The fork cannot wait for the end of the call that it is part of: no fork
// does, so that one that is soon done shows it for all, however busy the machine is.
TEST(Fork, InTheMiddleOfACallOfTheSameThread) {
  const ForkingOutput output;
  const BarcodeObject code(BARCODE_CODE39);
  for (const char* const text : {"A", "B", "C", "D", "E"}) {
    EXPECT_EQ(barcode_draw_1d(code, text, 100, 100), 1);
  }
  EXPECT_EQ(output.Ends(), std::vector(5, ChildEnd::kDone));
  EXPECT_LT(output.Shortest(), std::chrono::seconds(5));
}

// Standard output as a stream whose writers wait until somebody reads.
class UnreadOutput {
 public:
  UnreadOutput() : m_stream(fopencookie(this, "w", {nullptr, Write, nullptr, nullptr})), m_original(stdout) {
    stdout = m_stream;
  }
  UnreadOutput(const UnreadOutput&) = delete;
  UnreadOutput& operator=(const UnreadOutput&) = delete;
  ~UnreadOutput() {
    stdout = m_original;
    (void)std::fclose(m_stream);
  }

  void WaitForWriter() const { m_isWriting.wait(false); }
  void Read() {
    m_isRead = true;
    m_isRead.notify_all();
  }

 private:
  static ssize_t Write(void* self, const char* /*bytes*/, std::size_t size) {
    UnreadOutput& output = *static_cast<UnreadOutput*>(self);
    output.m_isWriting = true;
    output.m_isWriting.notify_all();
    output.m_isRead.wait(false);
    return static_cast<ssize_t>(size);
  }

  std::atomic<bool> m_isWriting = false;
  std::atomic<bool> m_isRead = false;
  std::FILE* m_stream;
  std::FILE* m_original;
};

// A call that prints to a full pipe ends when somebody reads: perhaps the child that is to be forked.
TEST(Fork, DoesNotWaitForeverForACallThatDoesNotEnd) {
  bool wasDrawn = true;
  steady_clock::duration waited{};
  std::array<ChildEnd, 2> ends{};
  WithoutOutput([&] {
    std::atomic<bool> isDrawn = false;
    {
      UnreadOutput output;
      std::thread drawing([&] {
        DrawText(0);
        isDrawn = true;
      });
      output.WaitForWriter();
      const auto start = steady_clock::now();
      ends[0] = RunInChild([] {});
      waited = steady_clock::now() - start;
      wasDrawn = isDrawn;
      output.Read();
      drawing.join();
    }
    // The call that was not waited for, and the fork, leave nothing locked behind.
    ends[1] = RunInChild([] { DrawText(0); });
  });
  EXPECT_FALSE(wasDrawn);
  EXPECT_GT(waited, std::chrono::seconds(9));
  EXPECT_THAT(ends, testing::Each(ChildEnd::kDone));
}

}  // namespace
}  // namespace barcode::test
