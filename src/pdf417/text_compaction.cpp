#include "pdf417/text_compaction.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "pdf417/segments.h"

namespace barcode::pdf417 {
namespace {

enum SubMode : std::uint8_t { kUpper, kLower, kMixed, kPunctuation, kSubModes };

constexpr int kShiftToByte = 913;
constexpr int kSpace = 26;
// Pads the last codeword: the shift to punctuation, or in the punctuation sub-mode the latch to upper case.
constexpr int kPad = 29;
constexpr int kNone = -1;

constexpr std::string_view kMixedCharacters = "0123456789&\r\t,:#-.$/+%*=^";
constexpr std::string_view kPunctuationCharacters = ";<>@[\\]_`~!\r\t,:\n-.$/\"|*()?{}'";
static_assert(kMixedCharacters.size() == 25 && kPunctuationCharacters.size() == 29);

using Values = std::array<std::array<std::int8_t, 128>, kSubModes>;

// The value of each ASCII character in each sub-mode, or kNone.
constexpr Values MakeValues() {
  Values values{};
  for (auto& subMode : values) {
    subMode.fill(kNone);
  }
  for (std::size_t i = 0; i < 26; ++i) {
    values[kUpper]['A' + i] = static_cast<std::int8_t>(i);
    values[kLower]['a' + i] = static_cast<std::int8_t>(i);
  }
  for (std::size_t i = 0; i < kMixedCharacters.size(); ++i) {
    values[kMixed][static_cast<std::size_t>(kMixedCharacters[i])] = static_cast<std::int8_t>(i);
  }
  for (std::size_t i = 0; i < kPunctuationCharacters.size(); ++i) {
    values[kPunctuation][static_cast<std::size_t>(kPunctuationCharacters[i])] = static_cast<std::int8_t>(i);
  }
  for (const SubMode subMode : {kUpper, kLower, kMixed}) {
    values[subMode][' '] = kSpace;
  }
  return values;
}

constexpr Values kValues = MakeValues();

struct Latch {
  std::size_t length = 0;
  std::array<std::uint8_t, 2> values{};
};

// The values that lead from one sub-mode (row) to another (column).
constexpr std::array<std::array<Latch, kSubModes>, kSubModes> kLatches = {{
    {{{0, {}}, {1, {27}}, {1, {28}}, {2, {28, 25}}}},
    {{{2, {28, 28}}, {0, {}}, {1, {28}}, {2, {28, 25}}}},
    {{{1, {28}}, {1, {27}}, {0, {}}, {1, {25}}}},
    {{{1, {29}}, {2, {29, 27}}, {2, {29, 28}}, {0, {}}}},
}};

// The value that shifts for one character from one sub-mode (row) to another (column), or kNone.
constexpr std::array<std::array<std::int8_t, kSubModes>, kSubModes> kShifts = {{
    {kNone, kNone, kNone, 29},
    {27, kNone, kNone, 29},
    {kNone, kNone, kNone, 29},
    {kNone, kNone, kNone, kNone},
}};

int ValueOf(SubMode subMode, char character) {
  return kValues[subMode][static_cast<std::size_t>(character)];
}

// Where the encoder stands after some characters: the sub-mode, and whether the last codeword holds only one
// of its two values. Both decide what the rest will cost.
struct State {
  SubMode subMode = kUpper;
  bool half = false;
};

constexpr std::size_t kStates = std::size_t{kSubModes} * 2;

std::size_t IndexOf(State state) {
  return static_cast<std::size_t>(state.subMode) * 2 + (state.half ? 1 : 0);
}

State StateOf(std::size_t index) {
  return {static_cast<SubMode>(index / 2), index % 2 != 0};
}

// The best way to one state at one character: from which state, which sub-mode it latches to before the
// character, and in which sub-mode the character stands (another one after a shift).
struct Step {
  std::uint8_t from = 0;
  SubMode latched = kUpper;
  SubMode shown = kUpper;
};

// Costs are counted in values, which are half codewords.
constexpr int kUnreachable = std::numeric_limits<int>::max();
using Costs = std::array<int, kStates>;
using Steps = std::array<Step, kStates>;

int LatchLength(SubMode from, SubMode to) {
  return static_cast<int>(kLatches[from][to].length);
}

State Advance(State state, SubMode subMode, int values) {
  return {subMode, state.half != (values % 2 != 0)};
}

// A shift to bytes begins a new codeword. The pad that completes the one before is a latch to upper case in
// the punctuation sub-mode.
SubMode SubModeAfterPad(State state) {
  return state.half && state.subMode == kPunctuation ? kUpper : state.subMode;
}

// Costs and steps of the states after a character, from those before it.
class Transition {
 public:
  explicit Transition(const Costs& before) : m_before(before) { m_costs.fill(kUnreachable); }

  void TakeCharacter(char character) {
    for (std::size_t from = 0; from < kStates; ++from) {
      if (m_before[from] == kUnreachable) {
        continue;
      }
      for (const SubMode latched : {kUpper, kLower, kMixed, kPunctuation}) {
        TakeAfterLatch(from, latched, character);
      }
    }
  }

  // A latch may take the place of the pad.
  void TakeByte() {
    for (std::size_t from = 0; from < kStates; ++from) {
      if (m_before[from] == kUnreachable) {
        continue;
      }
      for (const SubMode latched : {kUpper, kLower, kMixed, kPunctuation}) {
        const State before = StateOf(from);
        const int latchLength = LatchLength(before.subMode, latched);
        const State state = Advance(before, latched, latchLength);
        Offer({SubModeAfterPad(state), false}, from, latchLength + (state.half ? 1 : 0) + 4, latched,
              latched);
      }
    }
  }

  const Costs& AllCosts() const { return m_costs; }
  const Steps& AllSteps() const { return m_steps; }

 private:
  void TakeAfterLatch(std::size_t from, SubMode latched, char character) {
    const State state = StateOf(from);
    const int latchLength = LatchLength(state.subMode, latched);
    if (ValueOf(latched, character) != kNone) {
      Offer(Advance(state, latched, latchLength + 1), from, latchLength + 1, latched, latched);
    }
    for (const SubMode shown : {kUpper, kPunctuation}) {
      if (kShifts[latched][shown] != kNone && ValueOf(shown, character) != kNone) {
        Offer(Advance(state, latched, latchLength + 2), from, latchLength + 2, latched, shown);
      }
    }
  }

  void Offer(State to, std::size_t from, int values, SubMode latched, SubMode shown) {
    const std::size_t index = IndexOf(to);
    if (m_before[from] + values < m_costs[index]) {
      m_costs[index] = m_before[from] + values;
      m_steps[index] = {static_cast<std::uint8_t>(from), latched, shown};
    }
  }

  const Costs& m_before;
  Costs m_costs{};
  Steps m_steps{};
};

// The chosen step of every character: a shortest path through the states.
std::vector<Step> ChooseSteps(std::string_view text) {
  Costs costs;
  costs.fill(kUnreachable);
  costs[IndexOf({kUpper, false})] = 0;
  std::vector<Steps> table;
  table.reserve(text.size());
  for (const char character : text) {
    Transition transition(costs);
    if (IsText(character)) {
      transition.TakeCharacter(character);
    } else {
      transition.TakeByte();
    }
    costs = transition.AllCosts();
    table.push_back(transition.AllSteps());
  }
  std::vector<Step> chosen(text.size());
  auto state = static_cast<std::size_t>(std::min_element(costs.begin(), costs.end()) - costs.begin());
  for (std::size_t i = text.size(); i > 0; --i) {
    chosen[i - 1] = table[i - 1][state];
    state = chosen[i - 1].from;
  }
  return chosen;
}

// Packs two values into a codeword.
class ValuePacker {
 public:
  explicit ValuePacker(std::vector<int>& codewords) : m_codewords(codewords) {}

  void Put(int value) {
    if (m_high == kNone) {
      m_high = value;
    } else {
      m_codewords.push_back(m_high * 30 + value);
      m_high = kNone;
    }
  }

  void PutByte(char byte) {
    Pad();
    m_codewords.push_back(kShiftToByte);
    m_codewords.push_back(static_cast<unsigned char>(byte));
  }

  void Pad() {
    if (m_high != kNone) {
      Put(kPad);
    }
  }

 private:
  std::vector<int>& m_codewords;
  int m_high = kNone;
};

void PutStep(ValuePacker& packer, const Step& step, char character) {
  const Latch& latch = kLatches[StateOf(step.from).subMode][step.latched];
  for (std::size_t i = 0; i < latch.length; ++i) {
    packer.Put(latch.values[i]);
  }
  if (!IsText(character)) {
    packer.PutByte(character);
    return;
  }
  if (step.shown != step.latched) {
    packer.Put(kShifts[step.latched][step.shown]);
  }
  packer.Put(ValueOf(step.shown, character));
}

}  // namespace

void AppendText(std::vector<int>& codewords, std::string_view text) {
  const std::vector<Step> steps = ChooseSteps(text);
  ValuePacker packer(codewords);
  for (std::size_t i = 0; i < text.size(); ++i) {
    PutStep(packer, steps[i], text[i]);
  }
  packer.Pad();
}

}  // namespace barcode::pdf417
