#include "datamatrix/shortest_plan.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "datamatrix/channel.h"
#include "datamatrix/codeword_encoder.h"
#include "datamatrix/codeword_writer.h"
#include "datamatrix/corpus.h"

namespace barcode::datamatrix {
namespace {

using ::testing::IsEmpty;

constexpr std::size_t kNone = 10'000;

// Codewords of a plan in the smallest square that holds it; kNone when none does.
std::size_t CountOf(std::string_view text, const SchemePlan& plan) {
  const std::vector<std::size_t> asciiLengths = AsciiLengths(text);
  const CodewordWriter writer(text, asciiLengths, plan);
  for (const SymbolSize& size : AdmittedSizes({})) {
    if (const std::optional<std::size_t> count = writer.Count(size.dataCodewords)) {
      return *count;
    }
  }
  return kNone;
}

std::size_t CountOf(std::string_view text, const std::vector<SchemePlan>& plans) {
  std::size_t fewest = kNone;
  for (const SchemePlan& plan : plans) {
    fewest = std::min(fewest, CountOf(text, plan));
  }
  return fewest;
}

std::size_t Automatic(std::string_view text) {
  EncoderLines lines;
  const std::size_t count = EncodeCodewords(text, {.scheme = {}}, lines).size();
  return count == 0 ? kNone : count;
}

// The optimiser of scheme_optimizer.h with a pair of digits as one unit of the ASCII channel, so that
// channels stand at different places in the text. Every channel that reaches the end gives a plan.
class PairOptimizer {
 public:
  explicit PairOptimizer(std::string_view text) : m_text(text) {}

  std::vector<SchemePlan> Run() {
    std::vector<Path> paths;
    paths.reserve(kSchemes.size());
    for (const Scheme scheme : kSchemes) {
      paths.push_back({StartChannel(scheme), {}});
    }
    std::vector<SchemePlan> plans;
    while (!paths.empty()) {
      std::vector<Path> next;
      for (const Scheme target : kSchemes) {
        const std::optional<Path> path = Shortest(paths, target);
        if (path && path->channel.position == m_text.size()) {
          plans.push_back(path->plan);
        } else if (path) {
          next.push_back(*path);
        }
      }
      paths = std::move(next);
    }
    return plans;
  }

 private:
  struct Path {
    Channel channel;
    SchemePlan plan;
  };

  std::optional<Path> Shortest(const std::vector<Path>& paths, Scheme target) {
    std::optional<Path> best;
    for (Path path : paths) {
      if (Advance(path, target) && (!best || path.channel.length < best->channel.length)) {
        best = path;
      }
    }
    return best;
  }

  bool Advance(Path& path, Scheme target) {
    Channel& channel = path.channel;
    const std::size_t begin = channel.position;
    if (channel.scheme != target) {
      ChangeScheme(channel, target, m_lines);
    }
    const bool pair = target == Scheme::kAscii && IsDigitPair(m_text, begin);
    for (int byte = 0; byte < (pair ? 2 : 1) && channel.Valid(); ++byte) {
      EncodeNext(channel, target, m_text, m_lines);
    }
    if (path.plan.empty() || path.plan.back().scheme != target) {
      path.plan.push_back({target, begin, begin});
    }
    path.plan.back().end = channel.position;
    return channel.Valid();
  }

  std::string_view m_text;
  EncoderLines m_lines;
};

// May the run stand there: does the scheme have its bytes, and does it end where the scheme can be left?
bool IsPossible(std::string_view text, const SchemeRun& run) {
  EncoderLines lines;
  Channel channel = StartChannel(run.scheme);
  const std::string_view data = text.substr(run.begin, run.end - run.begin);
  while (channel.Valid() && channel.position < data.size()) {
    EncodeNext(channel, run.scheme, data, lines);
  }
  return channel.Valid() && (run.end == text.size() || !UsesTriplets(run.scheme) || channel.open == 0);
}

// All plans of at most that many runs, begun by those of `plan`.
void AddPlans(std::string_view text, const SchemePlan& plan, int runs, std::vector<SchemePlan>& plans) {
  const std::size_t begin = plan.empty() ? 0 : plan.back().end;
  if (begin == text.size()) {
    plans.push_back(plan);
    return;
  }
  for (std::size_t end = runs == 1 ? text.size() : begin + 1; end <= text.size(); ++end) {
    for (const Scheme scheme : kSchemes) {
      const SchemeRun run = {scheme, begin, end};
      if ((plan.empty() || plan.back().scheme != scheme) && IsPossible(text, run)) {
        SchemePlan longer = plan;
        longer.push_back(run);
        AddPlans(text, longer, runs - 1, plans);
      }
    }
  }
}

TEST(ShortestPlans, AutomaticIsNeverLongerThanAnyOptimiserOrScheme) {
  Corpus corpus(21);
  int shorterThanBytes = 0;
  for (int round = 0; round < 5000; ++round) {
    const std::string text = corpus.Mixed(60);
    EncoderLines lines;
    const std::size_t automatic = Automatic(text);
    const std::size_t bytes = CountOf(text, OptimizePlans(text, lines));
    ASSERT_LE(automatic, bytes) << text;
    ASSERT_LE(automatic, CountOf(text, PairOptimizer(text).Run())) << text;
    for (const Scheme scheme : kSchemes) {
      if (const std::optional<SchemePlan> plan = FixedPlan(text, scheme, lines)) {
        ASSERT_LE(automatic, CountOf(text, *plan)) << text;
      }
    }
    shorterThanBytes += automatic < bytes ? 1 : 0;
  }
  EXPECT_GT(shorterThanBytes, 0);
}

// At every capacity, not only those of real symbols.
TEST(ShortestPlans, NoPlanOfThreeRunsIsShorter) {
  Corpus corpus(22);
  for (int round = 0; round < 300; ++round) {
    const std::string text = corpus.Mixed(18);
    const std::vector<std::size_t> asciiLengths = AsciiLengths(text);
    const std::size_t largest = 2 * text.size() + 6;
    const auto fewest = [&](const std::vector<SchemePlan>& plans) {
      std::vector<std::size_t> counts(largest, kNone);
      for (const SchemePlan& plan : plans) {
        const CodewordWriter writer(text, asciiLengths, plan);
        for (std::size_t capacity = 1; capacity <= largest; ++capacity) {
          counts[capacity - 1] = std::min(counts[capacity - 1], writer.Count(capacity).value_or(kNone));
        }
      }
      return counts;
    };
    std::vector<SchemePlan> plans;
    AddPlans(text, {}, 3, plans);
    const std::vector<std::size_t> others = fewest(plans);
    const std::vector<std::size_t> shortest = fewest(ShortestPlans(text, asciiLengths, kNone));
    for (std::size_t capacity = 1; capacity <= largest; ++capacity) {
      ASSERT_LE(shortest[capacity - 1], others[capacity - 1]) << text << " in " << capacity;
    }
  }
}

TEST(ShortestPlans, LongFields) {
  // A short field grows only when no younger one is as short; one to the end of the symbol has no length.
  const std::string field(260, '\xE9');
  const std::vector<std::size_t> asciiLengths = AsciiLengths(field);
  EXPECT_EQ(CountOf(field, ShortestPlans(field, asciiLengths, kNone)), 263U);
  const std::string filling(278, '\xE9');
  EXPECT_EQ(CountOf(filling, ShortestPlans(filling, AsciiLengths(filling), kNone)), 280U);
}

TEST(ShortestPlans, OnlyPlansBelowTheLimit) {
  const std::string text = "12ABCDEFGHI";
  const std::vector<std::size_t> asciiLengths = AsciiLengths(text);
  const std::size_t shortest = CountOf(text, ShortestPlans(text, asciiLengths, kNone));
  EXPECT_EQ(shortest, 8U);  // a pair, the latch and three triplets
  EXPECT_EQ(CountOf(text, ShortestPlans(text, asciiLengths, shortest + 1)), shortest);
  EXPECT_THAT(ShortestPlans(text, asciiLengths, shortest), IsEmpty());
}

TEST(ShortestPlans, PlansCoverTheTextWithoutGaps) {
  Corpus corpus(23);
  for (int round = 0; round < 2000; ++round) {
    const std::string text = corpus.Mixed(60);
    const std::vector<SchemePlan> plans = ShortestPlans(text, AsciiLengths(text), kNone);
    ASSERT_FALSE(plans.empty());
    for (const SchemePlan& plan : plans) {
      std::size_t position = 0;
      for (std::size_t i = 0; i < plan.size(); ++i) {
        ASSERT_EQ(plan[i].begin, position);
        ASSERT_LT(plan[i].begin, plan[i].end);
        ASSERT_TRUE(i == 0 || plan[i].scheme != plan[i - 1].scheme);
        position = plan[i].end;
      }
      ASSERT_EQ(position, text.size());
    }
  }
}

}  // namespace
}  // namespace barcode::datamatrix
