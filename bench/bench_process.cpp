// What a process of mkbarcode costs: the time of the processor, of its own and of the kernel for it, that the
// system tells of it when it has ended. It is the benchmark's time too.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>
#include <vector>

namespace {

double Seconds(const timeval& time) {
  constexpr double kMicrosecond = 1e-6;
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * kMicrosecond;
}

// Negative when the process fails. Its output goes nowhere.
double SecondsOfProcess(std::vector<std::string> words) {
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (std::string& word : words) {
    arguments.push_back(word.data());
  }
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t process = 0;
  const int failure = posix_spawn(&process, arguments.front(), &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  int status = 0;
  rusage usage{};
  if (failure != 0 || wait4(process, &status, 0, &usage) != process || status != 0) {
    return -1;
  }
  return Seconds(usage.ru_utime) + Seconds(usage.ru_stime);
}

void RunProcess(benchmark::State& state, const std::vector<std::string>& words) {
  for (auto _ : state) {
    const double seconds = SecondsOfProcess(words);
    if (seconds < 0) {
      state.SkipWithError("the process failed");
      break;
    }
    state.SetIterationTime(seconds);
  }
}

void Register(const std::string& name, std::vector<std::string> words) {
  words.insert(words.begin(), MKBARCODE_PROGRAM);
  benchmark::RegisterBenchmark(("Process/" + name).c_str(),
                               [words](benchmark::State& state) { RunProcess(state, words); })
      ->UseManualTime()
      ->Unit(benchmark::kMillisecond);
}

const bool kRegistered = [] {
  for (const std::string format : {"png", "svg", "pdf"}) {
    Register("label/" + format, {"code128", "ABC-123", "--format", format, "-o", "-"});
  }
  Register("library/png", {"library", "code128", "ABC-123", "-o", "-"});
  return true;
}();

}  // namespace
