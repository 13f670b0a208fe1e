#include "datamatrix/codeword_encoder.h"

#include <optional>
#include <span>
#include <utility>

#include "datamatrix/channel.h"
#include "datamatrix/codeword_writer.h"
#include "datamatrix/scheme_optimizer.h"
#include "datamatrix/shortest_plan.h"
#include "datamatrix/symbol_sizes.h"

namespace barcode::datamatrix {
namespace {

// A codeword holds at most two characters, a pair of digits.
constexpr std::size_t kLongestText = 2 * kCodewordBuffer;

// Tries plans and keeps the codewords of the shortest, of equally short ones the first.
class Trial {
 public:
  Trial(std::string_view text, std::span<const SymbolSize> sizes)
      : m_text(text), m_sizes(sizes), m_asciiLengths(AsciiLengths(text)) {}

  void Try(const SchemePlan& plan) {
    const CodewordWriter writer(m_text, m_asciiLengths, plan);
    const std::optional<std::size_t> capacity = FindCapacity(writer);
    if (capacity && *writer.Count(*capacity) < Limit()) {
      m_best = writer.Write(*capacity);
    }
  }

  void TryFixed(Scheme scheme, EncoderLines& lines) {
    if (const std::optional<SchemePlan> plan = FixedPlan(m_text, scheme, lines)) {
      Try(*plan);
    }
  }

  // Comparing unfinished encodings, a channel passes over one that becomes the shortest only later: by the
  // next digit or triplet, or by the end-of-data rules. What is shorter than all channels is taken instead.
  void TryAll(EncoderLines& lines) {
    for (const SchemePlan& plan : OptimizePlans(m_text, lines)) {
      Try(plan);
    }
    for (const Scheme scheme : kSchemes) {
      EncoderLines alreadyTold;
      TryFixed(scheme, alreadyTold);
    }
    for (const SchemePlan& plan : ShortestPlans(m_text, m_asciiLengths, Limit())) {
      Try(plan);
    }
  }

  std::vector<std::uint8_t> TakeBest() { return std::move(m_best); }

 private:
  // Fewer codewords than this are wanted.
  std::size_t Limit() const { return m_best.empty() ? m_sizes.back().dataCodewords + 1 : m_best.size(); }

  // Capacity of the first of the sizes that holds the plan.
  std::optional<std::size_t> FindCapacity(const CodewordWriter& writer) const {
    for (const SymbolSize& size : m_sizes) {
      if (writer.Count(size.dataCodewords)) {
        return size.dataCodewords;
      }
    }
    return std::nullopt;
  }

  std::string_view m_text;
  std::span<const SymbolSize> m_sizes;
  std::vector<std::size_t> m_asciiLengths;
  std::vector<std::uint8_t> m_best;
};

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
  Trial trial(text, AdmittedSizes(options.size));
  if (options.scheme) {
    trial.TryFixed(*options.scheme, lines);
  } else {
    trial.TryAll(lines);
  }
  return trial.TakeBest();
}

}  // namespace barcode::datamatrix
