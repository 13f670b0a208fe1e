// `mkbarcode batch` while it runs: streams, signals, threads, its parts that put rows into order.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <random>
#include <thread>

#include "base/line.h"
#include "label/label.h"
#include "mkbarcode/batch/parcel_queue.h"
#include "mkbarcode/batch/progress.h"
#include "mkbarcode/program_runner.h"
#include "mkbarcode/quoting.h"
#include "mkbarcode/running_program.h"

namespace barcode::tool {
namespace {

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::StartsWith;

constexpr std::string_view kRow = "{\"type\":\"code128\",\"text\":\"Pallet 771204\"}\n";

std::string ManyRows(int rows) {
  std::string text;
  for (int i = 0; i < rows; ++i) {
    text += kRow;
  }
  return text;
}

TEST(BatchRunning, ARowComesOutWhileTheInputIsOpen) {
  for (const char* const threads : {"1", "3"}) {
    const ScratchDirectory scratch;
    RunningProgram program({"batch", "-", "-o", "-", "-j", threads}, scratch.File("errors"));
    for (int i = 1; i <= 3; ++i) {
      program.Write(kRow);
      EXPECT_THAT(program.ReadLine(), AllOf(StartsWith(Line("{\"n\":", i, ',')), EndsWith("}\n")));
    }
    program.CloseInput();
    EXPECT_EQ(program.ReadToEnd(), "");
    EXPECT_EQ(program.Wait(), 0);
  }
}

TEST(BatchRunning, ATableStreamsToo) {
  const ScratchDirectory scratch;
  RunningProgram program({"batch", "-", "--input-format", "csv", "-o", "-"}, scratch.File("errors"));
  program.Write("type,text\r\n");
  program.Write("qr,\"a\nb\"\r");
  EXPECT_THAT(program.ReadLine(), StartsWith("{\"n\":1,\"ok\":true"));
  program.Write("\nqr,c\n");
  EXPECT_THAT(program.ReadLine(), StartsWith("{\"n\":2,\"ok\":true"));
}

TEST(BatchRunning, FilesAppearWhileTheInputIsOpen) {
  const ScratchDirectory scratch;
  RunningProgram program({"batch", "-", "-o", scratch.File("out")}, scratch.File("errors"));
  program.Write(kRow);
  EXPECT_TRUE(Eventually([&] { return std::filesystem::exists(scratch.File("out/000001.png")); }));
}

TEST(BatchRunning, ASlowReaderHoldsItBack) {
  const ScratchDirectory scratch;
  const RunningProgram program({"batch", "-", "-o", "-", "-j", "2"}, scratch.File("errors"));
  const std::string rows = ManyRows(1000);
  std::size_t taken = 0;
  int idle = 0;
  // A second in which nothing was taken, once there was no more room for what it makes.
  while (idle < 100 || (idle < 12'000 && !program.OutputIsFull())) {
    const std::size_t more = program.WriteWhatIsTaken(rows);
    taken += more;
    idle = more == 0 ? idle + 1 : 0;
    usleep(10'000);
    ASSERT_LT(taken, 4'000'000);
  }
  EXPECT_TRUE(program.OutputIsFull());
  EXPECT_GT(taken, 10'000);
}

TEST(BatchRunning, AReaderThatIsGoneEndsItThoughTheInputIsOpen) {
  const ScratchDirectory scratch;
  RunningProgram program({"batch", "-", "-o", "-", "-j", "2"}, scratch.File("errors"));
  program.Write(kRow);
  program.ReadLine();
  program.CloseOutput();
  program.Write(kRow);
  EXPECT_EQ(program.Wait(), 1);
  // Where that took long, it has told its progress.
  EXPECT_THAT(ReadFile(scratch.File("errors")),
              MatchesRegex("(mkbarcode: [01] rows?, [^\n]*\n)*"
                           "mkbarcode: cannot write to standard output: Broken pipe\n"));
}

class BatchSignal : public testing::TestWithParam<int> {};

TEST_P(BatchSignal, LinesOfJsonEndWithAWholeRow) {
  const ScratchDirectory scratch;
  RunningProgram program({"batch", "-", "-o", "-"}, scratch.File("errors"));
  program.Write(ManyRows(10));
  std::string last = program.ReadLine();
  program.Signal(GetParam());
  const std::string rest = program.ReadToEnd();
  EXPECT_EQ(program.Wait(), 128 + GetParam());
  EXPECT_TRUE(rest.empty() || rest.ends_with("}\n"));
  const auto rows = 1 + std::count(rest.begin(), rest.end(), '\n');
  EXPECT_THAT(ReadFile(scratch.File("errors")),
              HasSubstr(Line("interrupted after row ", rows, ". What is missing are the rows from ", rows + 1,
                             " on.\n")));
}

TEST_P(BatchSignal, FilesAreWholeAndResumeGoesOn) {
  const ScratchDirectory scratch;
  constexpr int kRows = 5'000;
  // A pipe that stays open: however fast it draws, it is not done before the signal.
  const std::string jobs = scratch.File("jobs.jsonl");
  ASSERT_EQ(mkfifo(jobs.c_str(), 0600), 0);
  const std::vector<std::string> arguments = {"batch", jobs, "-o", scratch.File("out")};
  RunningProgram program(arguments, scratch.File("errors"));
  {
    std::ofstream rows(jobs, std::ios::binary);
    rows << ManyRows(kRows - 1) << std::flush;
    ASSERT_TRUE(Eventually([&] { return std::filesystem::exists(scratch.File("out/000100.png")); }));
    program.Signal(GetParam());
    EXPECT_EQ(program.Wait(), 128 + GetParam());
  }
  EXPECT_THAT(ReadFile(scratch.File("errors")),
              HasSubstr("The same command with --resume goes on from there."));
  const std::string picture = label::MakeFromJson(kRow).data;
  std::size_t files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(scratch.File("out"))) {
    ++files;
    ASSERT_EQ(ReadFile(entry.path()), picture);
  }
  ASSERT_LT(files, kRows);
  EXPECT_THAT(ReadFile(scratch.File("errors")), HasSubstr(Line("interrupted after row ", files, '.')));
  std::filesystem::remove(jobs);
  WriteFile(jobs, ManyRows(kRows));
  std::vector<std::string> resuming = arguments;
  resuming.emplace_back("--resume");
  const Outcome outcome = RunProgram(resuming);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.errors,
              HasSubstr(Line(kRows, " rows: ", kRows - files, " drawn, ", files, " there already")));
}

TEST_P(BatchSignal, AnArchiveIsRemoved) {
  for (const char* const output : {"a.zip", "a.tar"}) {
    const ScratchDirectory scratch;
    RunningProgram program({"batch", "-", "-o", scratch.File(output)}, scratch.File("errors"));
    program.Write(ManyRows(5'000));  // more than a pipe holds: it has begun
    ASSERT_TRUE(Eventually([&] { return program.Catches(GetParam()); }));
    program.Signal(GetParam());
    EXPECT_EQ(program.Wait(), 128 + GetParam());
    EXPECT_THAT(ReadFile(scratch.File("errors")),
                AllOf(HasSubstr("interrupted"), HasSubstr("was not written")));
    EXPECT_THAT(scratch.Names(), ElementsAre("errors"));
  }
}

// Signals that come before it waits, or just then, and those that come while it does. (Microseconds; any of
// them is right for a program that is late.)
constexpr std::array<useconds_t, 3> kMoments = {0, 1'000, 300'000};

TEST_P(BatchSignal, APipeThatNobodyWritesIsNotWaitedFor) {
  for (const useconds_t moment : kMoments) {
    const ScratchDirectory scratch;
    ASSERT_EQ(mkfifo(scratch.File("jobs.jsonl").c_str(), 0600), 0);
    RunningProgram program({"batch", scratch.File("jobs.jsonl"), "-o", scratch.File("out")},
                           scratch.File("errors"));
    ASSERT_TRUE(Eventually([&] { return program.Catches(GetParam()); }));
    usleep(moment);
    program.Signal(GetParam());
    EXPECT_EQ(program.Wait(), 128 + GetParam());
    EXPECT_EQ(ReadFile(scratch.File("errors")),
              "mkbarcode: 0 rows: 0 drawn, 0 failed\nmkbarcode: interrupted after row 0. The same command "
              "with --resume goes on from there.\n");
    EXPECT_THAT(scratch.Names(), ElementsAre("errors", "jobs.jsonl"));
  }
}

TEST_P(BatchSignal, APipeForErrorsThatNobodyReadsIsNotWaitedFor) {
  for (const useconds_t moment : kMoments) {
    const ScratchDirectory scratch;
    ASSERT_EQ(mkfifo(scratch.File("failed").c_str(), 0600), 0);
    RunningProgram program({"batch", "-", "-o", scratch.File("out"), "--errors", scratch.File("failed")},
                           scratch.File("errors"));
    ASSERT_TRUE(Eventually([&] { return program.Catches(GetParam()); }));
    usleep(moment);
    program.Signal(GetParam());
    EXPECT_EQ(program.Wait(), 128 + GetParam());
    EXPECT_THAT(ReadFile(scratch.File("errors")), HasSubstr("interrupted after row 0."));
  }
}

INSTANTIATE_TEST_SUITE_P(Both, BatchSignal, testing::Values(SIGINT, SIGTERM));

TEST(BatchRunning, ASignalBeforeTheHeaderEndsIt) {
  for (const useconds_t moment : kMoments) {
    const ScratchDirectory scratch;
    RunningProgram program({"batch", "-", "--input-format", "csv", "-o", scratch.File("out")},
                           scratch.File("errors"));
    ASSERT_TRUE(Eventually([&] { return program.Catches(SIGTERM); }));
    usleep(moment);
    program.Signal(SIGTERM);
    EXPECT_EQ(program.Wait(), 128 + SIGTERM);
    EXPECT_THAT(scratch.Names(), ElementsAre("errors"));
  }
}

// The first one waits for the reader, for ever; the second one does not.
TEST(BatchRunning, ASecondSignalEndsItAtOnce) {
  const ScratchDirectory scratch;
  RunningProgram program({"batch", "-", "-o", "-"}, scratch.File("errors"));
  const std::string rows = ManyRows(1000);
  ASSERT_TRUE(Eventually([&] {
    program.WriteWhatIsTaken(rows);
    return program.OutputIsFull();
  }));
  program.Signal(SIGINT);
  ASSERT_TRUE(Eventually([&] { return program.HasTaken(SIGINT); }));
  usleep(300'000);
  ASSERT_TRUE(program.Catches(SIGINT)) << "one was enough";
  program.Signal(SIGINT);
  EXPECT_EQ(program.Wait(), 1000 + SIGINT);
}

TEST(BatchRunning, AKillLeavesWholeFilesAlone) {
  const ScratchDirectory scratch;
  const std::string picture = label::MakeFromJson(kRow).data;
  for (int round = 0; round < 5; ++round) {
    RunningProgram program({"batch", "-", "-o", scratch.File("out"), "-j", "3"}, scratch.File("errors"));
    program.Write(ManyRows(300));
    ASSERT_TRUE(Eventually([&] { return std::filesystem::exists(scratch.File("out/000030.png")); }));
    program.Signal(SIGKILL);
    EXPECT_EQ(program.Wait(), 1000 + SIGKILL);
    for (const auto& entry : std::filesystem::directory_iterator(scratch.File("out"))) {
      ASSERT_EQ(ReadFile(entry.path()), picture) << entry.path();
    }
    std::filesystem::remove_all(scratch.File("out"));
  }
  RunningProgram archive({"batch", "-", "-o", scratch.File("a.zip")}, scratch.File("errors"));
  archive.Write(ManyRows(1000));
  archive.Signal(SIGKILL);
  archive.Wait();
  EXPECT_THAT(scratch.Names(), ElementsAre("errors"));
}

// Draws so many rows, not all at once. Where they come out again, they are read.
void DrawRows(RunningProgram& program, int rows, bool comeOut) {
  constexpr int kAtOnce = 100;
  const std::string text = ManyRows(kAtOnce);
  for (int row = 0; row < rows; row += kAtOnce) {
    program.Write(text);
    for (int line = 0; comeOut && line < kAtOnce; ++line) {
      ASSERT_THAT(program.ReadLine(), EndsWith("}\n"));
    }
  }
}

TEST(BatchRunning, MemoryDoesNotGrowWithTheRows) {
  if (MKBARCODE_IS_SANITIZED != 0) {
    GTEST_SKIP() << "the sanitizers keep memory that was freed";
  }
  const ScratchDirectory scratch;
  for (const std::string& output : {std::string("-"), scratch.File("a.zip"), scratch.File("a.tar")}) {
    RunningProgram program({"batch", "-", "-q", "-j", "2", "-o", output}, scratch.File("errors"));
    DrawRows(program, 5'000, output == "-");
    const std::size_t few = program.Memory();
    constexpr int kRows = 20'000;
    DrawRows(program, kRows, output == "-");
    // Less than a hundred bytes for each row, whatever the threads have in hand just then.
    EXPECT_GT(few, 500'000);
    EXPECT_LT(program.Memory(), few + 100 * std::size_t{kRows}) << output;
    program.CloseInput();
    EXPECT_EQ(program.Wait(), 0);
  }
}

TEST(Progress, TellsRowsRateTimeAndFailures) {
  EXPECT_EQ(ProgressText({.rows = 1200, .failed = 3}, 0.25, 10),
            "1200 rows, 25 %, 120 a second, 00:30 left, 3 failed");
  EXPECT_EQ(ProgressText({.rows = 1}, std::nullopt, 2), "1 row, 1 a second, 0 failed");
  EXPECT_EQ(ProgressText({.rows = 10}, 0.001, 10), "10 rows, 0 %, 1 a second, 2:46:30 left, 0 failed");
  EXPECT_EQ(Bar(0), "[------------------------]");
  EXPECT_EQ(Bar(0.5), "[############------------]");
  EXPECT_EQ(Bar(1), "[########################]");
}

// script(1) gives the program a terminal.
TEST(BatchRunning, ATerminalHasABar) {
  const ScratchDirectory scratch;
  WriteFile(scratch.File("jobs.jsonl"), ManyRows(8'000));
  const std::string program =
      Concat({"SHELL=/bin/sh script -qec '", Program(), " batch ", scratch.File("jobs.jsonl")});
  // However fast it draws, its reader waits until there is a bar, for two minutes.
  const std::string shown = scratch.File("shown");
  RunShell(Concat({program, " -o - | { i=0; until grep -q \" left, 0 failed\" ", shown,
                   " || [ $i -ge 1200 ]; do i=$((i + 1)); sleep 0.1; done; cat >/dev/null; }' /dev/null >",
                   shown}));
  EXPECT_THAT(ReadFile(shown), HasSubstr("\r["));
  EXPECT_THAT(ReadFile(shown), HasSubstr(" left, 0 failed\x1B[K"));
  EXPECT_THAT(ReadFile(shown), HasSubstr("\r\x1B[Kmkbarcode: 8000 rows: 8000 drawn, 0 failed"));
  const Outcome quiet = RunShell(program + " -q -o - | { sleep 1.5; cat >/dev/null; }' /dev/null");
  EXPECT_EQ(quiet.output, "");
}

TEST(BatchRunning, ElsewhereThereIsALineEveryTenSeconds) {
  using Clock = std::chrono::steady_clock;
  constexpr auto kTenSeconds = std::chrono::seconds(10);
  const ScratchDirectory scratch;
  const Clock::time_point start = Clock::now();
  RunningProgram program({"batch", "-", "-o", "-"}, scratch.File("errors"));
  RunningProgram quiet({"batch", "-", "-o", "-", "-q"}, scratch.File("quiet"));
  program.Write(kRow);
  program.ReadLine();
  ASSERT_TRUE(Eventually([&] { return quiet.Catches(SIGINT); }));
  std::this_thread::sleep_for(kTenSeconds + std::chrono::milliseconds(100));
  // The input stays open and idle. A row that was late is not in the first line, a test that is late sees
  // more.
  EXPECT_TRUE(
      Eventually([&] { return ReadFile(scratch.File("errors")).find(" 1 row,") != std::string::npos; }));
  const std::string lines = ReadFile(scratch.File("errors"));
  EXPECT_THAT(lines, MatchesRegex("(mkbarcode: 0 rows, 0 a second, 0 failed\n)*"
                                  "(mkbarcode: 1 row, 0 a second, 0 failed\n)+"));
  EXPECT_LE(std::count(lines.begin(), lines.end(), '\n'), (Clock::now() - start) / kTenSeconds);
  program.CloseInput();
  EXPECT_EQ(program.Wait(), 0);
  quiet.CloseInput();
  EXPECT_EQ(quiet.Wait(), 0);
  EXPECT_EQ(ReadFile(scratch.File("quiet")), "");
}

std::size_t CountOf(std::string_view part, std::string_view text) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string_view::npos; at = text.find(part, at + 1)) {
    ++count;
  }
  return count;
}

// What is written to standard error without a row, until the rows were told twice, or for a moment where they
// are not to be told.
std::string WhileIdle(Progress::Shown shown, std::chrono::milliseconds interval, bool isTold) {
  testing::internal::CaptureStderr();
  {
    Progress progress(shown, 100, {.lines = interval, .bars = std::chrono::hours(1), .idleBars = interval});
    progress.Tell({.rows = 1000, .failed = 2}, 50);
    if (isTold) {
      EXPECT_TRUE(Eventually([] { return CountOf(" 1000 rows", ReadFile("/proc/self/fd/2")) >= 2; }));
    } else {
      usleep(100'000);
    }
  }
  return testing::internal::GetCapturedStderr();
}

TEST(Progress, TellsWhileNothingIsDone) {
  constexpr auto kShort = std::chrono::milliseconds(20);
  // An interval may end before the rows are told.
  const std::string before = "0 rows, 0 %, 0 a second, 0 failed";
  const std::string text = "1000 rows, 50 %, [0-9]+ a second, [0-9:]+ left, 2 failed";
  EXPECT_THAT(WhileIdle(Progress::Shown::kLines, kShort, true),
              MatchesRegex("(mkbarcode: " + before + "\n)*(mkbarcode: " + text + "\n){2,}"));
  EXPECT_THAT(WhileIdle(Progress::Shown::kBar, kShort, true),
              MatchesRegex("(\r\\[-{24}\\] " + before + "\x1B\\[K)*(\r\\[#{12}-{12}\\] " + text +
                           "\x1B\\[K){2,}\r\x1B\\[K"));
  EXPECT_EQ(WhileIdle(Progress::Shown::kNothing, kShort, false), "");
  EXPECT_EQ(WhileIdle(Progress::Shown::kLines, std::chrono::hours(1), false), "");
}

TEST(ParcelQueue, PassesOnInOrderFromManyThreads) {
  constexpr std::uint64_t kParcels = 20'000;
  std::vector<std::string> taken;
  ParcelQueue queue([&](Parcel& parcel) { taken.push_back(parcel.bytes); }, 8);
  std::atomic<std::uint64_t> next = 0;
  {
    std::array<std::jthread, 4> threads;
    for (std::jthread& thread : threads) {
      thread = std::jthread([&] {
        for (std::uint64_t index = next++; index < kParcels; index = next++) {
          Parcel parcel;
          parcel.bytes = Line(index);
          queue.Deliver(index, std::move(parcel));
        }
      });
    }
  }
  ASSERT_EQ(taken.size(), kParcels);
  for (std::uint64_t i = 0; i < kParcels; ++i) {
    ASSERT_EQ(taken[i], Line(i));
  }
}

TEST(ParcelQueue, AnAbandonedOneLetsEverybodyGo) {
  ParcelQueue queue([](Parcel&) { FAIL(); }, 2);
  std::jthread waiting([&] { queue.Deliver(5, {}); });
  queue.Abandon();
  waiting.join();
  queue.Deliver(0, {});
}

}  // namespace
}  // namespace barcode::tool
