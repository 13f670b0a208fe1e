// What `mkbarcode batch` reaches, as ratios in one run: labels beside the library's own draw and PNG of the
// same pixels, two threads beside one, and the memory of many rows.
//   batch_ratios [ROWS]      rows of the long runs, 1000000 unless said otherwise
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "barcode.h"
#include "base/line.h"
#include "label/composition.h"
#include "label/fields.h"
#include "label/json_request.h"
#include "label/symbol.h"

namespace barcode::bench {
namespace {

constexpr int kLabels = 20'000;  // of one round
constexpr int kDraws = 2'000;
constexpr int kRounds = 5;

double Seconds(const timeval& time) {
  constexpr double kMicro = 1e-6;
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * kMicro;
}

double CpuSeconds(const rusage& usage) {
  return Seconds(usage.ru_utime) + Seconds(usage.ru_stime);
}

double OwnCpuSeconds() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return CpuSeconds(usage);
}

struct Run {
  double cpu = 0;
  double wall = 0;
  long mebibytes = 0;
};

// The program with its output thrown away. Throws when it fails.
Run RunBatch(const std::vector<std::string>& arguments) {
  std::vector<std::string> words = {MKBARCODE_PROGRAM, "batch", "--quiet"};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  pointers.reserve(words.size() + 1);
  for (std::string& word : words) {
    pointers.push_back(word.data());
  }
  pointers.push_back(nullptr);
  const auto start = std::chrono::steady_clock::now();
  const pid_t process = fork();
  if (process == 0) {
    dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO);
    execv(pointers[0], pointers.data());
    _exit(127);
  }
  int status = 0;
  rusage usage{};
  wait4(process, &status, 0, &usage);
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
    throw std::runtime_error("mkbarcode failed");
  }
  constexpr long kKibi = 1024;
  return {CpuSeconds(usage), std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(),
          usage.ru_maxrss / kKibi};
}

void WriteJobs(const std::string& file, int rows) {
  std::ofstream stream(file, std::ios::binary);
  for (int i = 0; i < rows; ++i) {
    stream << R"({"type":"code128","text":"Pallet )" << 100'000 + i % 900'000 << "\"}\n";
  }
}

struct Destroy {
  void operator()(BarcodeHandle handle) const { barcode_destroy(handle); }
};

// CPU seconds of one draw with its PNG, at the size of the label. What the library prints goes nowhere.
double LibraryDraw() {
  const label::Request request = label::ParseRequest(R"({"type":"code128","text":"Pallet 100000"})");
  const label::TypeInfo& type = label::ValidateRequest(request);
  const label::Composition composition =
      label::Compose(type, request, label::EncodeSymbol(type.type, request));
  const std::unique_ptr<BarcodeHandleRecord, Destroy> object(barcode_create(BARCODE_CODE128));
  std::fflush(stdout);
  const int saved = dup(STDOUT_FILENO);
  dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO);
  const double start = OwnCpuSeconds();
  for (int i = 0; i < kDraws; ++i) {
    const std::string text = Line("Pallet ", 100'000 + i);
    int length = 0;
    if (barcode_draw_1d(object.get(), text.c_str(), composition.drawing.width, composition.drawing.height) !=
            1 ||
        barcode_get_image_data(object.get(), &length) == nullptr) {
      throw std::runtime_error("the draw failed");
    }
  }
  const double seconds = (OwnCpuSeconds() - start) / kDraws;
  std::fflush(stdout);
  dup2(saved, STDOUT_FILENO);
  close(saved);
  return seconds;
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

// Rounds of all, one behind the other: what disturbs the machine disturbs them alike.
void Speed(const std::string& directory) {
  const std::string jobs = directory + "/jobs.jsonl";
  WriteJobs(jobs, kLabels);
  for (const std::string& output : {std::string("-"), directory + "/labels.tar"}) {
    std::vector<double> overDraw;
    std::vector<double> overOne;
    std::vector<double> cost;
    for (int round = 0; round < kRounds; ++round) {
      const double draw = LibraryDraw();
      const Run one = RunBatch({jobs, "-o", output, "-j", "1"});
      const Run two = RunBatch({jobs, "-o", output, "-j", "2"});
      overDraw.push_back(draw / (one.cpu / kLabels));
      overOne.push_back(one.wall / two.wall);
      cost.push_back(one.cpu / kLabels * 1e6);
    }
    std::printf(
        "%-10s one core: %.1f times the library's draws (at least 12), %.1f us a label; two: %.2f times one "
        "(at least 1.85)\n",
        output == "-" ? "-o -" : "-o x.tar", Median(overDraw), Median(cost), Median(overOne));
  }
}

void Memory(const std::string& directory, int rows) {
  const std::string jobs = directory + "/many.jsonl";
  WriteJobs(jobs, rows);
  const Run lines = RunBatch({jobs, "-o", "-", "--format", "svg"});
  std::printf("%d SVG rows to lines of JSON: %ld MiB (at most 64), %.0f s\n", rows, lines.mebibytes,
              lines.wall);
  for (const char* const suffix : {"tar", "zip"}) {
    const std::string archive = Line(directory, "/many.", suffix);
    const Run run = RunBatch({jobs, "-o", archive});
    std::printf("%d PNG rows to a %s file: %ld MiB, %.0f s\n", rows, suffix, run.mebibytes, run.wall);
    std::filesystem::remove(archive);
  }
}

int Main(int rows) {
  std::array<char, 64> directory{"/tmp/batch_ratios_XXXXXX"};
  if (mkdtemp(directory.data()) == nullptr) {
    throw std::runtime_error("no directory");
  }
  Speed(directory.data());
  Memory(directory.data(), rows);
  std::filesystem::remove_all(directory.data());
  return 0;
}

}  // namespace
}  // namespace barcode::bench

int main(int argc, char** argv) {
  try {
    return barcode::bench::Main(argc > 1 ? std::stoi(argv[1]) : 1'000'000);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "batch_ratios: %s\n", error.what());
    return 1;
  }
}
