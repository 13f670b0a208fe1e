#include "datamatrix/codeword_encoder.h"

#include <optional>
#include <span>
#include <utility>

#include "datamatrix/channel.h"
#include "datamatrix/codeword_writer.h"
#include "datamatrix/scheme_optimizer.h"
#include "datamatrix/symbol_sizes.h"

namespace barcode::datamatrix {
namespace {

// A codeword holds at most two characters, a pair of digits.
constexpr std::size_t kLongestText = 2 * kCodewordBuffer;

// The plans of the optimiser, and behind them the six of a single scheme. Comparing unfinished encodings, a
// channel may pass over one that only the end-of-data rules make the shortest; with these, automatic never
// needs more codewords than any fixed scheme.
std::vector<SchemePlan> AutomaticPlans(std::string_view text, EncoderLines& lines) {
  std::vector<SchemePlan> plans = OptimizePlans(text, lines);
  for (const Scheme scheme : kSchemes) {
    EncoderLines alreadyTold;
    if (std::optional<SchemePlan> plan = FixedPlan(text, scheme, alreadyTold)) {
      plans.push_back(*std::move(plan));
    }
  }
  return plans;
}

std::vector<SchemePlan> MakePlans(std::string_view text, std::optional<Scheme> scheme, EncoderLines& lines) {
  if (!scheme) {
    return AutomaticPlans(text, lines);
  }
  const std::optional<SchemePlan> plan = FixedPlan(text, *scheme, lines);
  return plan ? std::vector<SchemePlan>(1, *plan) : std::vector<SchemePlan>();
}

// Capacity of the first of the sizes that holds the plan.
std::optional<std::size_t> FindCapacity(const CodewordWriter& writer, std::span<const SymbolSize> sizes) {
  for (const SymbolSize& size : sizes) {
    if (writer.Count(size.dataCodewords)) {
      return size.dataCodewords;
    }
  }
  return std::nullopt;
}

}  // namespace

std::vector<std::uint8_t> EncodeCodewords(std::string_view text, const Options& options,
                                          EncoderLines& lines) {
  if (text.empty()) {
    return {};
  }
  if (text.size() > kLongestText) {
    lines.Add("Encoding failed, data length out of range!");
    return {};
  }
  const std::span<const SymbolSize> sizes = AdmittedSizes(options.size);
  const std::vector<std::size_t> asciiLengths = AsciiLengths(text);
  std::vector<std::uint8_t> best;
  for (const SchemePlan& plan : MakePlans(text, options.scheme, lines)) {
    const CodewordWriter writer(text, asciiLengths, plan);
    const std::optional<std::size_t> capacity = FindCapacity(writer, sizes);
    if (capacity && (best.empty() || *writer.Count(*capacity) < best.size())) {
      best = writer.Write(*capacity);
    }
  }
  return best;
}

}  // namespace barcode::datamatrix
