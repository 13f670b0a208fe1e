#include "datamatrix/codeword_encoder.h"

#include <optional>
#include <utility>

#include "datamatrix/channel.h"
#include "datamatrix/codeword_writer.h"
#include "datamatrix/encodation.h"
#include "datamatrix/scheme_optimizer.h"
#include "datamatrix/symbol_attributes.h"

namespace barcode {
namespace {

// A codeword holds at most two characters, a pair of digits.
constexpr std::size_t kLongestText = 2 * kCodewordBuffer;

std::size_t Capacity(int sizeIndex) {
  return static_cast<std::size_t>(LookUpSymbolAttribute(SymbolAttribute::kDataCodewords, sizeIndex));
}

// The plans of the optimiser, and behind them the six of a single scheme. Comparing unfinished encodings, a
// channel may pass over one that only the end-of-data rules make the shortest; with these, automatic never
// needs more codewords than any fixed scheme.
std::vector<SchemePlan> AutomaticPlans(std::string_view text, EncoderMessages& messages) {
  std::vector<SchemePlan> plans = OptimizePlans(text, messages);
  for (int scheme = 0; scheme < kEncodationSchemes; ++scheme) {
    EncoderMessages alreadyTold;
    for (SchemePlan& plan : FixedPlan(text, static_cast<EncodationScheme>(scheme), alreadyTold)) {
      plans.push_back(std::move(plan));
    }
  }
  return plans;
}

std::vector<SchemePlan> MakePlans(std::string_view text, int schemeOption, EncoderMessages& messages) {
  if (schemeOption == kAutomaticScheme) {
    return AutomaticPlans(text, messages);
  }
  return FixedPlan(text, static_cast<EncodationScheme>(schemeOption), messages);
}

// Capacity of the first admitted size that holds the plan.
std::optional<std::size_t> FindCapacity(const CodewordWriter& writer, int sizeOption) {
  const SizeRange sizes = AdmittedSizes(sizeOption);
  for (int size = sizes.begin; size < sizes.end; ++size) {
    if (writer.Count(Capacity(size))) {
      return Capacity(size);
    }
  }
  return std::nullopt;
}

}  // namespace

std::vector<std::uint8_t> EncodeCodewords(std::string_view text, int schemeOption, int sizeOption,
                                          EncoderMessages& messages) {
  if (schemeOption == kNoEncodation) {
    return {};
  }
  if (schemeOption < kAutomaticScheme || schemeOption >= kEncodationSchemes) {
    messages.emplace_back("Invalid encoding scheme selected!\n");
    return {};
  }
  if (text.empty()) {
    return {};
  }
  if (text.size() > kLongestText) {
    messages.emplace_back("Encoding failed, data length out of range!\n");
    return {};
  }
  const std::vector<std::size_t> asciiLengths = AsciiLengths(text);
  std::vector<std::uint8_t> best;
  for (const SchemePlan& plan : MakePlans(text, schemeOption, messages)) {
    const CodewordWriter writer(text, asciiLengths, plan);
    const std::optional<std::size_t> capacity = FindCapacity(writer, sizeOption);
    if (capacity && (best.empty() || *writer.Count(*capacity) < best.size())) {
      best = writer.Write(*capacity);
    }
  }
  return best;
}

}  // namespace barcode
