#include "linear/code128_encoder.h"

#include <algorithm>
#include <stdexcept>
#include <string>

#include "base/ascii.h"

namespace barcode {
namespace {

using Cost = std::uint64_t;  // in symbol values
using Costs = std::array<Cost, kCode128Sets.size()>;

constexpr Cost kCostLimit = 999'999'999;  // no encoding of this cost or more is taken
constexpr Cost kNotHeld = Cost{1} << 60;  // what a set that does not hold a byte costs: never the cheapest

// Bytes above it are in no set.
constexpr unsigned char LastHeldByte(Code128Rule rule) {
  return rule == Code128Rule::kStandard ? 127 : 126;
}

constexpr std::size_t Index(Code128Set set) {
  return static_cast<std::size_t>(set);
}

// By byte: what its value costs in each set; for set C, half of what a pair costs.
constexpr auto kPenalties = [] {
  std::array<Costs, 256> penalties{};
  for (std::size_t byte = 0; byte < penalties.size(); ++byte) {
    penalties[byte] = {byte <= 95 ? 0 : kNotHeld, byte >= 32 && byte <= 127 ? 0 : kNotHeld,
                       byte >= '0' && byte <= '9' ? 0 : kNotHeld};
  }
  penalties[static_cast<unsigned char>(kCode128Fnc1Mark)] = {0, 0, kNotHeld};  // half of no pair
  return penalties;
}();

// For every position of a text and every set that is current there: the set in which a shortest encoding of
// the rest holds the byte at that position, and the length of that encoding. Each byte must be held by some
// set, or be the mark of FNC1, which all of them hold. The work at a position is free of branches that depend
// on the text: a processor could not predict them.
class SetPlan {
 public:
  explicit SetPlan(std::string_view text) : m_choices(text.size()) {
    Costs next{};
    Cost nextInPair = kNotHeld;
    Cost afterNextInSetC = 0;
    for (std::size_t pos = text.size(); pos-- > 0;) {
      const Costs& penalties = kPenalties[static_cast<unsigned char>(text[pos])];
      const Cost restInSetC =
          text[pos] == kCode128Fnc1Mark ? next[2] : afterNextInSetC + (penalties[2] | nextInPair);
      const Costs inSet = {next[0] + 1 + penalties[0], next[1] + 1 + penalties[1], restInSetC + 1};
      afterNextInSetC = next[2];
      nextInPair = penalties[2];
      next = Choose(pos, inSet);
    }
    m_startCosts = next;
  }

  [[nodiscard]] Cost CostFromStart(Code128Set set) const { return m_startCosts[Index(set)]; }

  [[nodiscard]] Code128Set Choice(std::size_t pos, Code128Set current) const {
    return static_cast<Code128Set>(m_choices[pos] >> (2 * Index(current)) & 3U);
  }

 private:
  // Records the cheapest set for each current one, given the costs by the set that holds the byte (a switch
  // to it not counted); returns the costs by current set. Cost and rank are compared as one number: among
  // equal costs, staying (rank 0) comes first, then A before B before C (1 to 3).
  Costs Choose(std::size_t pos, const Costs& inSet) {
    Costs costs{};
    unsigned choices = 0;
    for (unsigned current = 0; current < inSet.size(); ++current) {
      Cost best = inSet[current] << 2;
      for (unsigned set = 0; set < inSet.size(); ++set) {
        if (set != current) {
          best = std::min(best, (inSet[set] + 1) << 2 | (set + 1));
        }
      }
      costs[current] = best >> 2;
      const unsigned rank = best & 3U;
      choices |= (rank == 0 ? current : rank - 1) << (2 * current);
    }
    m_choices[pos] = static_cast<std::uint8_t>(choices);
    return costs;
  }

  std::vector<std::uint8_t> m_choices;  // by position: the set chosen, two bits for each current set
  Costs m_startCosts{};
};

constexpr std::size_t kElementsPerValue = 6;

constexpr std::size_t ElementCount(int value) {
  return value == kCode128Stop ? kElementsPerValue + 1 : kElementsPerValue;
}

// The width table as numbers; the seventh element is the stop value's only.
constexpr auto kElements = [] {
  std::array<std::array<std::uint32_t, kElementsPerValue + 1>, kCode128Widths.size()> elements{};
  for (std::size_t value = 0; value < elements.size(); ++value) {
    for (std::size_t i = 0; i < kCode128Widths[value].size(); ++i) {
      elements[value][i] = static_cast<std::uint32_t>(kCode128Widths[value][i] - '0');
    }
  }
  return elements;
}();

// The value of a byte in set A by the standard, where `byte` is one of its 96.
constexpr int StandardSetAValue(int byte) {
  return byte < 32 ? byte + 64 : byte - 32;
}

// By rule and set, what the first byte of a value adds to it; in set C the second one adds its digit.
constexpr auto kFirstTerms = [] {
  std::array<std::array<std::array<std::int16_t, 256>, kCode128Sets.size()>, 2> terms{};
  for (std::size_t rule = 0; rule < terms.size(); ++rule) {
    for (int byte = 0; byte < 256; ++byte) {
      const bool rotated = rule == static_cast<std::size_t>(Code128Rule::kStandard);
      const auto index = static_cast<std::size_t>(byte);
      terms[rule][0][index] = static_cast<std::int16_t>(rotated ? StandardSetAValue(byte) : byte);
      terms[rule][1][index] = static_cast<std::int16_t>(byte - 32);
      terms[rule][2][index] = static_cast<std::int16_t>(10 * (byte - '0'));
    }
  }
  return terms;
}();

// CharValue of what a set is known to hold, as one sum for all sets for the same reason.
int HeldValue(Code128Set set, std::string_view text, std::size_t pos, Code128Rule rule) {
  const int first =
      kFirstTerms[static_cast<std::size_t>(rule)][Index(set)][static_cast<unsigned char>(text[pos])];
  const int second = static_cast<unsigned char>(text[pos + BytesPerValue(set) - 1]) - '0';
  return first + (set == Code128Set::kC ? second : 0);
}

constexpr bool IsHeld(char character, Code128Rule rule) {
  return static_cast<unsigned char>(character) <= LastHeldByte(rule);
}

// Start value and data. The sets hold every byte but the marks of FNC1.
Code128Values EncodeAutomatic(std::string_view text, Code128Rule rule) {
  const SetPlan plan(text);
  Code128Set set = Code128Set::kA;
  for (const Code128Set start : kCode128Sets) {
    if (plan.CostFromStart(start) < plan.CostFromStart(set)) {
      set = start;
    }
  }
  const Cost cost = plan.CostFromStart(set);
  if (cost >= kCostLimit) {
    throw std::runtime_error("No valid start");
  }

  Code128Values values;
  values.reserve(std::size_t{cost} + 3);  // with start, check and stop
  values.resize(std::size_t{cost} + 1);
  values[0] = StartValue(set);
  std::size_t count = 1;
  for (std::size_t pos = 0; pos < text.size();) {
    if (text[pos] == kCode128Fnc1Mark) {
      values[count++] = kCode128Fnc1;  // the plan never switches for it
      ++pos;
      continue;
    }
    // A switch value is overwritten by the data when the set stays.
    const Code128Set choice = plan.Choice(pos, set);
    values[count] = SwitchValue(choice);
    count += choice == set ? 0 : 1;
    values[count++] = HeldValue(choice, text, pos, rule);
    set = choice;
    pos += BytesPerValue(set);
  }
  return values;
}

[[noreturn]] void ThrowNotInSet(Code128Set set, std::size_t pos) {
  switch (set) {
    case Code128Set::kA:
      throw std::runtime_error("Invalid char for CODE_A");
    case Code128Set::kB:
      throw std::runtime_error("Invalid char for CODE_B");
    case Code128Set::kC:
      break;
  }
  throw std::runtime_error("Not 2-digit at pos=" + std::to_string(pos));
}

Code128Values EncodeFixed(std::string_view text, Code128Set set, Code128Rule rule) {
  Code128Values values;
  values.reserve(text.size() / BytesPerValue(set) + 3);
  values.push_back(StartValue(set));
  for (std::size_t pos = 0; pos < text.size(); pos += BytesPerValue(set)) {
    const int value = CharValue(set, text, pos, rule);
    if (value < 0) {
      ThrowNotInSet(set, pos);
    }
    values.push_back(value);
  }
  return values;
}

}  // namespace

int CharValue(Code128Set set, std::string_view text, std::size_t pos, Code128Rule rule) {
  const int byte = static_cast<unsigned char>(text[pos]);
  switch (set) {
    case Code128Set::kA:
      if (byte > 95) {
        return -1;
      }
      return rule == Code128Rule::kStandard ? StandardSetAValue(byte) : byte;
    case Code128Set::kB:
      return byte >= 32 && byte <= LastHeldByte(rule) ? byte - 32 : -1;
    case Code128Set::kC:
      break;
  }
  if (pos + 1 >= text.size() || !IsDigit(text[pos]) || !IsDigit(text[pos + 1])) {
    return -1;
  }
  return 10 * (text[pos] - '0') + (text[pos + 1] - '0');
}

Code128Values EncodeValues(std::string_view text, Code128Mode mode, Code128Rule rule) {
  if (text.empty()) {
    throw std::runtime_error("Empty string");
  }
  const auto isHeld = [rule](char character) { return IsHeld(character, rule); };
  if (mode == Code128Mode::kAuto && !std::all_of(text.begin(), text.end(), isHeld)) {
    throw std::runtime_error("No valid start");
  }
  Code128Values values = mode == Code128Mode::kAuto ? EncodeAutomatic(text, rule)
                                                    : EncodeFixed(text, static_cast<Code128Set>(mode), rule);
  AppendCheckAndStop(values);
  return values;
}

Code128Values EncodeValuesWithFnc1(std::string_view text) {
  if (text.empty()) {
    throw std::runtime_error("Empty string");
  }
  const auto isHeld = [](char character) {
    return character == kCode128Fnc1Mark || IsHeld(character, Code128Rule::kStandard);
  };
  if (!std::all_of(text.begin(), text.end(), isHeld)) {
    throw std::runtime_error("No valid start");
  }
  Code128Values values = EncodeAutomatic(text, Code128Rule::kStandard);
  AppendCheckAndStop(values);
  return values;
}

int CheckValue(const Code128Values& values) {
  if (values.empty()) {
    return 0;
  }
  // Weights are kept below the modulus, so that the sum of no text can overflow.
  std::int64_t sum = values.front();
  std::int64_t weight = 0;
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

RunVector ValuesToPattern(const Code128Values& values) {
  std::size_t count = 0;
  for (const int value : values) {
    if (value < 0 || value > kCode128Stop) {
      throw std::out_of_range("Invalid code value");
    }
    count += ElementCount(value);
  }
  RunVector pattern(count);
  auto element = pattern.begin();
  for (const int value : values) {
    const auto& elements = kElements[static_cast<std::size_t>(value)];
    element = std::copy_n(elements.begin(), kElementsPerValue, element);
    if (value == kCode128Stop) {
      *element++ = elements.back();
    }
  }
  return pattern;
}

RunVector EncodeCode128(std::string_view text, Code128Mode mode, Code128Rule rule) {
  return ValuesToPattern(EncodeValues(text, mode, rule));
}

}  // namespace barcode
