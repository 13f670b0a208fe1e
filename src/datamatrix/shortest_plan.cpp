#include "datamatrix/shortest_plan.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>

#include "base/ascii.h"
#include "datamatrix/channel.h"

namespace barcode::datamatrix {
namespace {

// What can be open between two bytes. Of two encodings in the same state the shorter one stays the shorter
// one whatever follows, so that one of each is enough to find the shortest of all.
constexpr std::size_t kPlainAscii = 0;
constexpr std::size_t kOpenDigit = 1;      // one digit of a pair; the second one is free
constexpr std::size_t kFirstTriplet = 2;   // C40, TEXT, X12 by 0, 1, 2 open values
constexpr std::size_t kFirstEdifact = 11;  // 0, 1, 2, 3 open characters
constexpr std::size_t kShortField = 15;    // Base 256, the length in one codeword
constexpr std::size_t kLongField = 16;     // in two
constexpr std::size_t kStates = 17;

constexpr std::array kTripletSchemes = {Scheme::kC40, Scheme::kText, Scheme::kX12};

constexpr std::size_t TripletState(std::size_t scheme, std::size_t open) {
  return kFirstTriplet + scheme * kTripletSize + open;
}

constexpr Scheme SchemeOf(std::size_t state) {
  if (state < kFirstTriplet) {
    return Scheme::kAscii;
  }
  if (state < kFirstEdifact) {
    return kTripletSchemes[(state - kFirstTriplet) / kTripletSize];
  }
  return state < kShortField ? Scheme::kEdifact : Scheme::kBase256;
}

// Lengths are counted in twelfths of a codeword, as those of channels.
constexpr int kNever = std::numeric_limits<int>::max() / 2;

// What it takes to be in ASCII from each state.
constexpr std::array<int, kStates> MakeUnlatchLengths() {
  std::array<int, kStates> lengths{};
  for (std::size_t scheme = 0; scheme < kTripletSchemes.size(); ++scheme) {
    lengths[TripletState(scheme, 0)] = kCodewordLength;
    lengths[TripletState(scheme, 1)] = kNever;
    lengths[TripletState(scheme, 2)] = kNever;
  }
  for (int open = 0; open < kQuadrupletSize; ++open) {
    lengths[kFirstEdifact + static_cast<std::size_t>(open)] = EdifactUnlatchLength(open);
  }
  return lengths;
}
constexpr std::array<int, kStates> kUnlatchLengths = MakeUnlatchLengths();

// Of the shortest encoding that ends in each state: its length, and the state before its last byte.
using Lengths = std::array<int, kStates>;
using Origins = std::array<std::uint8_t, kStates>;

// The encodings behind one more byte.
class Step {
 public:
  explicit Step(Origins& origins) : m_origins(origins) { m_lengths.fill(kNever); }

  // The first of equally short ones stays.
  bool Offer(std::size_t state, int length, std::size_t origin) {
    if (length >= m_lengths[state]) {
      return false;
    }
    m_lengths[state] = length;
    m_origins[state] = static_cast<std::uint8_t>(origin);
    return true;
  }

  const Lengths& Result() const { return m_lengths; }

 private:
  Lengths m_lengths;
  Origins& m_origins;
};

// An end of the text: in ASCII from `position` on, where the state is.
struct Ending {
  std::size_t position;
  std::size_t state;
  std::size_t codewords;  // at least
};

class Search {
 public:
  Search(std::string_view text, const std::vector<std::size_t>& asciiLengths)
      : m_text(text), m_asciiLengths(asciiLengths) {
    m_lengths.fill(kNever);
    m_lengths[kPlainAscii] = 0;
    m_origins.reserve(text.size());
  }

  std::vector<SchemePlan> Run(std::size_t limit) {
    constexpr std::size_t kLongestTail = 4;  // two pairs of digits
    for (std::size_t position = 0; position <= m_text.size(); ++position) {
      if (m_text.size() - position <= kLongestTail) {
        AddEndings(position);
      }
      if (position < m_text.size()) {
        Advance(static_cast<std::uint8_t>(m_text[position]));
      }
    }
    std::vector<SchemePlan> plans;
    for (const Ending& ending : m_endings) {
      if (ending.codewords < limit) {
        plans.push_back(TraceBack(ending));
      }
    }
    return plans;
  }

 private:
  int LengthInAscii(std::size_t state) const { return m_lengths[state] + kUnlatchLengths[state]; }

  // The state from which the shortest encoding in ASCII comes.
  std::size_t BeforeAscii() const {
    std::size_t best = kPlainAscii;
    for (std::size_t state = 1; state < kStates; ++state) {
      best = LengthInAscii(state) < LengthInAscii(best) ? state : best;
    }
    return best;
  }

  void Advance(std::uint8_t byte) {
    m_beforeAscii = BeforeAscii();
    Step step(m_origins.emplace_back());
    AdvanceAscii(byte, step);
    for (std::size_t scheme = 0; scheme < kTripletSchemes.size(); ++scheme) {
      AdvanceTriplets(scheme, byte, step);
    }
    if (IsEdifactByte(byte)) {
      AdvanceEdifact(step);
    }
    AdvanceBase256(step);
    m_lengths = step.Result();
  }

  bool Stay(Step& step, std::size_t state, std::size_t from, int length) const {
    return step.Offer(state, m_lengths[from] + length, from);
  }

  bool Enter(Step& step, std::size_t state, int length) const {
    return step.Offer(state, LengthInAscii(m_beforeAscii) + length, m_beforeAscii);
  }

  void AdvanceAscii(std::uint8_t byte, Step& step) const {
    if (IsDigit(static_cast<char>(byte))) {
      Stay(step, kPlainAscii, kOpenDigit, 0);
      Enter(step, kOpenDigit, kCodewordLength);
    } else {
      Enter(step, kPlainAscii, (IsUpperByte(byte) ? 2 : 1) * kCodewordLength);
    }
  }

  void AdvanceTriplets(std::size_t scheme, std::uint8_t byte, Step& step) const {
    const std::size_t values = TripletValues(kTripletSchemes[scheme], byte).size();
    if (values == 0) {
      return;
    }
    const int length = static_cast<int>(values) * kTripletValueLength;
    for (std::size_t open = 0; open < kTripletSize; ++open) {
      Stay(step, TripletState(scheme, (open + values) % kTripletSize), TripletState(scheme, open), length);
    }
    Enter(step, TripletState(scheme, values % kTripletSize), LatchLength(kTripletSchemes[scheme]) + length);
  }

  void AdvanceEdifact(Step& step) const {
    for (std::size_t open = 0; open < kQuadrupletSize; ++open) {
      Stay(step, kFirstEdifact + (open + 1) % kQuadrupletSize, kFirstEdifact + open, kEdifactLength);
    }
    Enter(step, kFirstEdifact + 1, LatchLength(Scheme::kEdifact) + kEdifactLength);
  }

  // Of equally short fields the younger one is taken: it has more room.
  void AdvanceBase256(Step& step) {
    Stay(step, kLongField, kLongField, kCodewordLength);
    Enter(step, kShortField, LatchLength(Scheme::kBase256) + kCodewordLength);
    if (m_shortField == kShortBase256Field) {
      Stay(step, kLongField, kShortField, 2 * kCodewordLength);
      m_shortField = 1;
    } else if (Stay(step, kShortField, kShortField, kCodewordLength)) {
      ++m_shortField;
    } else {
      m_shortField = 1;
    }
  }

  // The ends that the end-of-data rules tell apart: all unlatches; none, with at most one codeword of ASCII
  // behind triplets, the last one completed by a pad, and two behind EDIFACT; and the field of no stated
  // length.
  void AddEndings(std::size_t position) {
    const std::size_t tail = m_asciiLengths[position];
    if (tail == 0) {
      const std::size_t beforeAscii = BeforeAscii();
      AddEnding(position, beforeAscii, LengthInAscii(beforeAscii));
      AddEnding(position, kLongField, m_lengths[kLongField] - kCodewordLength);
    }
    for (std::size_t scheme = 0; scheme < kTripletSchemes.size() && tail <= 1; ++scheme) {
      AddEnding(position, TripletState(scheme, 0), m_lengths[TripletState(scheme, 0)]);
      if (kTripletSchemes[scheme] != Scheme::kX12) {
        AddEnding(position, TripletState(scheme, 2),
                  m_lengths[TripletState(scheme, 2)] + kTripletValueLength);
      }
    }
    if (tail <= 2) {
      AddEnding(position, kFirstEdifact, m_lengths[kFirstEdifact]);
    }
  }

  void AddEnding(std::size_t position, std::size_t state, int length) {
    if (m_lengths[state] < kNever) {
      const auto codewords = static_cast<std::size_t>(length / kCodewordLength);
      m_endings.push_back({position, state, codewords + m_asciiLengths[position]});
    }
  }

  SchemePlan TraceBack(const Ending& ending) const {
    SchemePlan plan;
    if (ending.position < m_text.size()) {
      plan.push_back({Scheme::kAscii, ending.position, m_text.size()});
    }
    std::size_t state = ending.state;
    for (std::size_t position = ending.position; position-- > 0;) {
      if (plan.empty() || plan.back().scheme != SchemeOf(state)) {
        plan.push_back({SchemeOf(state), position, position + 1});
      }
      plan.back().begin = position;
      state = m_origins[position][state];
    }
    std::reverse(plan.begin(), plan.end());
    return plan;
  }

  std::string_view m_text;
  const std::vector<std::size_t>& m_asciiLengths;
  Lengths m_lengths{};
  std::size_t m_beforeAscii = kPlainAscii;
  std::size_t m_shortField = 0;  // bytes of the shortest encoding that ends in a short field
  std::vector<Origins> m_origins;
  std::vector<Ending> m_endings;
};

}  // namespace

std::vector<SchemePlan> ShortestPlans(std::string_view text, const std::vector<std::size_t>& asciiLengths,
                                      std::size_t limit) {
  return Search(text, asciiLengths).Run(limit);
}

}  // namespace barcode::datamatrix
