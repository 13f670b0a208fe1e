// label_proof: random labels of every type, read back by every independent reader that knows it.
//   label_proof [--labels N] [--type NAME]... [--seed N] [--jobs N] [--first N] [--keep FOLDER] [--show N]
// Prints a line for each type and the failures; the exit status is 1 when there is any.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <fstream>
#include <iostream>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "label_proof/proof.h"

namespace {

using barcode::test::EverySymbologyInfo;
using barcode::test::ProofLabel;
using barcode::test::SymbologyInfo;
using barcode::test::TypeCount;

struct Options {
  int labels = 10000;
  int first = 0;
  std::vector<std::string> types;
  std::uint64_t seed = 1;
  int jobs = 1;
  int show = 10;
  std::string keep;
};

// Pictures of so many labels stand in memory at once, for each job.
constexpr int kBatch = 250;

struct Task {
  const SymbologyInfo* info;
  int first;
  int labels;
};

std::vector<const SymbologyInfo*> TypesOf(const Options& options) {
  std::vector<const SymbologyInfo*> infos;
  for (const SymbologyInfo& info : EverySymbologyInfo()) {
    if (options.types.empty() || std::ranges::find(options.types, info.name) != options.types.end()) {
      infos.push_back(&info);
    }
  }
  return infos;
}

std::vector<Task> TasksOf(const Options& options) {
  std::vector<Task> tasks;
  for (const SymbologyInfo* info : TypesOf(options)) {
    const int end = options.first + options.labels;
    for (int first = options.first; first < end; first += kBatch) {
      tasks.push_back({info, first, std::min(kBatch, end - first)});
    }
  }
  return tasks;
}

// Counts by type, which prints its line when its last batch is in.
class Results {
 public:
  explicit Results(const Options& options) : m_options(options) {}

  void Add(const SymbologyInfo& info, const TypeCount& count) {
    const std::scoped_lock lock(m_mutex);
    TypeCount& all = m_counts[info.symbology];
    all.Add(count);
    if (all.drawn < m_options.labels) {
      return;
    }
    all.CheckClaims(info);
    std::cout << LineOf(info, all) << '\n';
    for (const auto& [limit, labels] : all.limits) {
      std::cout << "  limit of " << limit << ": " << labels << '\n';
    }
    const auto shown = std::min(all.failures.size(), static_cast<std::size_t>(m_options.show));
    for (std::size_t i = 0; i < shown; ++i) {
      std::cout << "  " << info.name << ' ' << all.failures[i] << '\n';
    }
    std::cout << std::flush;
    m_holds = m_holds && all.Holds();
  }

  void Fail(const std::string& message) {
    const std::scoped_lock lock(m_mutex);
    std::cerr << message << '\n';
    m_holds = false;
  }

  bool Hold() const { return m_holds; }

 private:
  const Options& m_options;
  std::mutex m_mutex;
  std::map<barcode::test::Symbology, TypeCount> m_counts;
  bool m_holds = true;
};

bool Prove(const Options& options) {
  const std::vector<Task> tasks = TasksOf(options);
  Results results(options);
  std::atomic<std::size_t> next = 0;
  const auto work = [&] {
    for (std::size_t i = next++; i < tasks.size(); i = next++) {
      const auto& [info, first, labels] = tasks[i];
      try {
        results.Add(*info, ProveLabels(*info, options.seed, first, labels));
      } catch (const std::exception& error) {
        results.Fail(std::string(info->name) + ": " + error.what());
      }
    }
  };
  std::vector<std::thread> threads;
  for (int job = 1; job < options.jobs; ++job) {
    threads.emplace_back(work);
  }
  work();
  for (std::thread& thread : threads) {
    thread.join();
  }
  return results.Hold() && !tasks.empty();
}

// The files of the labels instead of their proof, to be looked at.
void Keep(const Options& options) {
  for (const SymbologyInfo* info : TypesOf(options)) {
    for (int number = options.first; number < options.first + options.labels; ++number) {
      const ProofLabel label = barcode::test::MakeProofLabel(*info, options.seed, number);
      const std::string name = options.keep + "/" + std::string(info->name) + "-" + std::to_string(number);
      std::ofstream(name + "." + label.request.value("format", "png"), std::ios::binary) << label.made.data;
      std::ofstream(name + ".json") << label.request.dump(2, ' ', true) << '\n'
                                    << label.made.report.dump(2) << '\n';
    }
  }
}

int Main(int argc, char** argv) {
  Options options;
  CLI::App app("Random labels of every type, read back by every independent reader that knows it");
  app.add_option("--labels", options.labels, "labels of each type")->capture_default_str();
  app.add_option("--first", options.first, "number of the first label")->capture_default_str();
  app.add_option("--type", options.types, "only these types, by their first names");
  app.add_option("--seed", options.seed, "another seed, other labels")->capture_default_str();
  app.add_option("-j,--jobs", options.jobs, "threads")->capture_default_str();
  app.add_option("--show", options.show, "failures that are told for each type")->capture_default_str();
  app.add_option("--keep", options.keep, "write the labels into this folder, prove nothing");
  CLI11_PARSE(app, argc, argv);
  if (!options.keep.empty()) {
    Keep(options);
    return 0;
  }
  const auto start = std::chrono::steady_clock::now();
  const bool holds = Prove(options);
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
  std::cout << "proof " << (holds ? "holds" : "FAILS") << " seconds=" << static_cast<int>(taken.count())
            << '\n';
  return holds ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Main(argc, argv);
  } catch (const std::exception& error) {
    (void)std::fprintf(stderr, "label_proof: %s\n", error.what());
    return 2;
  }
}
