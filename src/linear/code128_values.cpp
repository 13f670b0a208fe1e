#include "linear/code128_values.h"

#include <algorithm>
#include <stdexcept>
#include <string>

#include "core/ascii.h"
#include "linear/width_string.h"

namespace barcode {
namespace {

constexpr std::size_t kSetCount = kCode128Sets.size();
constexpr int kNoPath = 999'999'999;  // the cost of what cannot be encoded

// For every position of a text and every set that is current there: the set in which a shortest encoding of
// the rest holds the byte at that position, and the length of that encoding in values.
class SetPlan {
 public:
  explicit SetPlan(std::string_view text) : m_choices(text.size()) {
    Costs next{};
    Costs afterNext{};
    for (std::size_t pos = text.size(); pos-- > 0;) {
      const Costs costs = Visit(text, pos, next, afterNext);
      afterNext = next;
      next = costs;
    }
    m_startCosts = next;
  }

  [[nodiscard]] int CostFromStart(Code128Set set) const { return m_startCosts[Index(set)]; }

  [[nodiscard]] Code128Set Choice(std::size_t pos, Code128Set current) const {
    return static_cast<Code128Set>(m_choices[pos] >> (2 * Index(current)) & 3U);
  }

 private:
  using Costs = std::array<int, kSetCount>;

  static constexpr std::size_t Index(Code128Set set) { return static_cast<std::size_t>(set); }

  // The costs at pos by current set, from those at the next two positions.
  Costs Visit(std::string_view text, std::size_t pos, const Costs& next, const Costs& afterNext) {
    Costs inSet{};  // the byte at pos encoded in a set, its switch not counted
    for (const Code128Set set : kCode128Sets) {
      const Costs& rest = set == Code128Set::kC ? afterNext : next;
      inSet[Index(set)] = CharValue(set, text, pos) < 0 ? kNoPath : 1 + rest[Index(set)];
    }
    Costs costs{};
    unsigned choices = 0;
    for (const Code128Set current : kCode128Sets) {
      const Code128Set choice = Cheapest(inSet, current);
      const int switching = choice == current ? 0 : 1;
      costs[Index(current)] = std::min(kNoPath, inSet[Index(choice)] + switching);
      choices |= static_cast<unsigned>(choice) << (2 * Index(current));
    }
    m_choices[pos] = static_cast<std::uint8_t>(choices);
    return costs;
  }

  // Among equals, staying comes first, then A before B before C.
  static Code128Set Cheapest(const Costs& inSet, Code128Set current) {
    Code128Set best = current;
    int bestCost = inSet[Index(current)];
    for (const Code128Set set : kCode128Sets) {
      if (set != current && inSet[Index(set)] + 1 < bestCost) {
        best = set;
        bestCost = inSet[Index(set)] + 1;
      }
    }
    return best;
  }

  std::vector<std::uint8_t> m_choices;  // by position: two bits for each current set
  Costs m_startCosts{};
};

Code128Values EncodeAutomatic(std::string_view text) {
  const SetPlan plan(text);
  Code128Set set = Code128Set::kA;
  for (const Code128Set start : kCode128Sets) {
    if (plan.CostFromStart(start) < plan.CostFromStart(set)) set = start;
  }
  const int cost = plan.CostFromStart(set);
  if (cost >= kNoPath) throw std::invalid_argument("No valid start");

  Code128Values values;
  values.reserve(static_cast<std::size_t>(cost) + 3);  // with start, check and stop
  values.push_back(StartValue(set));
  for (std::size_t pos = 0; pos < text.size(); pos += BytesPerValue(set)) {
    const Code128Set choice = plan.Choice(pos, set);
    if (choice != set) values.push_back(SwitchValue(choice));
    set = choice;
    values.push_back(CharValue(set, text, pos));
  }
  return values;
}

[[noreturn]] void ThrowNotInSet(Code128Set set, std::size_t pos) {
  switch (set) {
    case Code128Set::kA:
      throw std::invalid_argument("Invalid char for CODE_A");
    case Code128Set::kB:
      throw std::invalid_argument("Invalid char for CODE_B");
    case Code128Set::kC:
      break;
  }
  throw std::invalid_argument("Not 2-digit at pos=" + std::to_string(pos));
}

Code128Values EncodeFixed(std::string_view text, Code128Set set) {
  Code128Values values;
  values.reserve(text.size() / BytesPerValue(set) + 3);
  values.push_back(StartValue(set));
  for (std::size_t pos = 0; pos < text.size(); pos += BytesPerValue(set)) {
    const int value = CharValue(set, text, pos);
    if (value < 0) ThrowNotInSet(set, pos);
    values.push_back(value);
  }
  return values;
}

}  // namespace

int CharValue(Code128Set set, std::string_view text, std::size_t pos) {
  const int byte = static_cast<unsigned char>(text[pos]);
  switch (set) {
    case Code128Set::kA:
      return byte <= 95 ? byte : -1;
    case Code128Set::kB:
      return byte >= 32 && byte <= 126 ? byte - 32 : -1;
    case Code128Set::kC:
      break;
  }
  if (pos + 1 >= text.size() || !IsDigit(text[pos]) || !IsDigit(text[pos + 1])) return -1;
  return 10 * (text[pos] - '0') + (text[pos + 1] - '0');
}

Code128Values EncodeValues(std::string_view text, std::int32_t mode) {
  if (text.empty()) throw std::invalid_argument("Empty string");
  if (mode < 0 || mode > kCode128ModeAuto) throw std::invalid_argument("Invalid CodeMode");
  Code128Values values =
      mode == kCode128ModeAuto ? EncodeAutomatic(text) : EncodeFixed(text, static_cast<Code128Set>(mode));
  AppendCheckAndStop(values);
  return values;
}

int CheckValue(const Code128Values& values) {
  if (values.empty()) return 0;
  // Weights are kept below the modulus, so that the sum of no text can overflow.
  std::int64_t sum = values.front();
  int weight = 0;
  for (std::size_t i = 1; i < values.size(); ++i) {
    weight = weight + 1 == kCode128CheckModulus ? 0 : weight + 1;
    sum += weight * values[i];
  }
  return static_cast<int>(sum % kCode128CheckModulus);
}

void AppendCheckAndStop(Code128Values& values) {
  values.push_back(CheckValue(values));
  values.push_back(kCode128Stop);
}

RunVector ValuesToPattern(const Code128Values& values, const char* invalidMessage) {
  RunVector pattern;
  pattern.reserve(6 * values.size() + 1);
  for (const int value : values) {
    if (value < 0 || value > kCode128Stop) throw std::out_of_range(invalidMessage);
    AppendWidths(pattern, kCode128Widths[static_cast<std::size_t>(value)]);
  }
  return pattern;
}

}  // namespace barcode
