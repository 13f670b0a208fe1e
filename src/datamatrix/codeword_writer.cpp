#include "datamatrix/codeword_writer.h"

namespace barcode::datamatrix {
namespace {

using Codewords = std::vector<std::uint8_t>;

constexpr std::uint8_t Byte(char c) {
  return static_cast<std::uint8_t>(c);
}

void AppendAscii(Codewords& out, std::string_view text) {
  for (std::size_t position = 0; position < text.size(); ++position) {
    const std::uint8_t byte = Byte(text[position]);
    if (IsDigitPair(text, position)) {
      ++position;
      out.push_back(static_cast<std::uint8_t>(kDigitPairBase + (byte - '0') * 10 + (text[position] - '0')));
    } else if (IsUpperByte(byte)) {
      out.push_back(kUpperShiftCodeword);
      out.push_back(static_cast<std::uint8_t>(byte - 128 + 1));
    } else {
      out.push_back(static_cast<std::uint8_t>(byte + 1));
    }
  }
}

// A last triplet of two values is completed.
void AppendTriplets(Codewords& out, Scheme scheme, std::string_view text) {
  unsigned packed = 0;
  int open = 0;
  const auto push = [&](std::uint8_t value) {
    packed = packed * 40 + value;
    if (++open == kTripletSize) {
      out.push_back(static_cast<std::uint8_t>((packed + 1) / 256));
      out.push_back(static_cast<std::uint8_t>((packed + 1) % 256));
      packed = 0;
      open = 0;
    }
  };
  for (const char c : text) {
    for (const std::uint8_t value : TripletValues(scheme, Byte(c))) {
      push(value);
    }
  }
  if (open != 0) {
    push(kTripletPad);
  }
}

// Six bits per character, most significant first; bits left over in the last codeword are zero.
void AppendEdifact(Codewords& out, std::string_view text, bool unlatch) {
  unsigned bits = 0;
  unsigned bitCount = 0;
  const auto push = [&](unsigned value) {
    bits = (bits << 6U) | (value & 0x3FU);
    bitCount += 6;
    if (bitCount >= 8) {
      bitCount -= 8;
      out.push_back(static_cast<std::uint8_t>(bits >> bitCount));
      bits &= (1U << bitCount) - 1U;
    }
  };
  for (const char c : text) {
    push(Byte(c));
  }
  if (unlatch) {
    push(kEdifactUnlatch);
  }
  if (bitCount != 0) {
    out.push_back(static_cast<std::uint8_t>(bits << (8U - bitCount)));
  }
}

// Length codewords and bytes, all randomised by their position in the symbol. Length 0: to the end of the
// symbol.
void AppendBase256(Codewords& out, std::string_view text, bool openField) {
  const auto push = [&out](std::size_t codeword) {
    out.push_back(Randomize255State(static_cast<std::uint8_t>(codeword), out.size() + 1));
  };
  if (openField) {
    push(0);
  } else if (Base256LengthCodewords(text.size()) == 1) {
    push(text.size());
  } else {
    constexpr std::size_t kLengthBase = kShortBase256Field + 1;
    push(text.size() / kLengthBase + kShortBase256Field);
    push(text.size() % kLengthBase);
  }
  for (const char c : text) {
    push(Byte(c));
  }
}

void AppendLatch(Codewords& out, Scheme scheme) {
  if (scheme != Scheme::kAscii) {
    out.push_back(LatchCodeword(scheme));
  }
}

void AppendRun(Codewords& out, Scheme scheme, std::string_view text, bool unlatch, bool openField) {
  if (scheme == Scheme::kAscii) {
    AppendAscii(out, text);
  } else if (scheme == Scheme::kEdifact) {
    AppendEdifact(out, text, unlatch);
  } else if (scheme == Scheme::kBase256) {
    AppendBase256(out, text, openField);
  } else {
    AppendTriplets(out, scheme, text);
    if (unlatch) {
      out.push_back(kTripletUnlatch);
    }
  }
}

// The last run that is not ASCII, or the only run.
std::size_t FindLast(const SchemePlan& plan) {
  const bool endsInAscii = plan.back().scheme == Scheme::kAscii;
  return plan.size() - (endsInAscii && plan.size() > 1 ? 2 : 1);
}

}  // namespace

CodewordWriter::CodewordWriter(std::string_view text, const std::vector<std::size_t>& asciiLengths,
                               const SchemePlan& plan)
    : m_text(text), m_asciiLengths(asciiLengths), m_last(plan[FindLast(plan)]) {
  for (const SchemeRun& run : plan) {
    AppendLatch(m_start, run.scheme);
    if (run == m_last) {
      break;
    }
    const std::size_t size = run.end - run.begin;
    if (run.scheme == Scheme::kBase256 && size > kLongestBase256Field) {
      m_writable = false;
      return;
    }
    AppendRun(m_start, run.scheme, m_text.substr(run.begin, size), true, false);
  }
  if (UsesTriplets(m_last.scheme)) {
    for (std::size_t position = m_last.begin; position < m_last.end; ++position) {
      m_tripletValues += TripletValues(m_last.scheme, Byte(m_text[position])).size();
    }
  }
}

// With at most one codeword left after a triplet the unlatch is implied. A text that does not end with a
// whole triplet may complete one of two values with a pad; otherwise its end is given to ASCII, from the last
// byte that ends a triplet. The shortest form is taken, of equal ones that which has more of the text in the
// scheme.
std::optional<CodewordWriter::Ending> CodewordWriter::FindTripletEnding(std::size_t capacity) const {
  std::optional<Ending> best;
  std::size_t values = m_tripletValues;
  for (std::size_t split = m_last.end;; --split) {
    const std::size_t open = values % kTripletSize;
    const bool completable = open == 2 && m_last.scheme != Scheme::kX12;
    const std::size_t triplets = values / kTripletSize + (completable ? 1 : 0);
    const std::size_t used = m_start.size() + triplets * kTripletCodewords;
    if ((open == 0 || completable) && used <= capacity) {
      const bool unlatch = capacity - used > 1;
      const std::size_t count = used + (unlatch ? 1 : 0) + m_asciiLengths[split];
      if (count <= capacity && (!best || count < best->count)) {
        best = Ending{count, split, unlatch};
      }
    }
    if (open == 0) {
      return best;
    }
    values -= TripletValues(m_last.scheme, Byte(m_text[split - 1])).size();
  }
}

// With at most two codewords left where a quadruplet would begin, they are ASCII without an unlatch: an
// unlatch there would be read as a character.
std::optional<CodewordWriter::Ending> CodewordWriter::FindEdifactEnding(std::size_t capacity) const {
  const std::size_t size = m_last.end - m_last.begin;
  const std::size_t open = size % kQuadrupletSize;
  const std::size_t used = m_start.size() + size / kQuadrupletSize * kQuadrupletCodewords;
  if (used > capacity) {
    return std::nullopt;
  }
  Ending ending{};
  if (capacity - used <= 2) {
    const std::size_t split = m_last.end - open;
    ending = {used + m_asciiLengths[split], split, false};
  } else {
    const auto last = static_cast<std::size_t>(EdifactUnlatchCodewords(static_cast<int>(open)));
    ending = {used + last + m_asciiLengths[m_last.end], m_last.end, true};
  }
  return ending.count <= capacity ? std::optional(ending) : std::nullopt;
}

std::optional<CodewordWriter::Ending> CodewordWriter::FindBase256Ending(std::size_t capacity) const {
  const std::size_t size = m_last.end - m_last.begin;
  const std::size_t rest = m_asciiLengths[m_last.end];
  const std::size_t count = m_start.size() + Base256LengthCodewords(size) + size + rest;
  if (count <= capacity && size <= kLongestBase256Field) {
    return Ending{count, m_last.end, false};
  }
  if (rest == 0 && m_start.size() + 1 + size == capacity) {
    return Ending{capacity, m_last.end, false, true};
  }
  return std::nullopt;
}

std::optional<CodewordWriter::Ending> CodewordWriter::FindEnding(std::size_t capacity) const {
  if (!m_writable || m_start.size() > capacity) {
    return std::nullopt;
  }
  if (m_last.scheme == Scheme::kAscii) {
    const std::size_t count = m_asciiLengths[m_last.begin];
    return count <= capacity ? std::optional(Ending{count, m_last.begin, false}) : std::nullopt;
  }
  if (m_last.scheme == Scheme::kEdifact) {
    return FindEdifactEnding(capacity);
  }
  if (m_last.scheme == Scheme::kBase256) {
    return FindBase256Ending(capacity);
  }
  return FindTripletEnding(capacity);
}

std::optional<std::size_t> CodewordWriter::Count(std::size_t capacity) const {
  const std::optional<Ending> ending = FindEnding(capacity);
  return ending ? std::optional(ending->count) : std::nullopt;
}

std::vector<std::uint8_t> CodewordWriter::Write(std::size_t capacity) const {
  const std::optional<Ending> ending = FindEnding(capacity);
  if (!ending) {
    return {};
  }
  Codewords out = m_start;
  const std::string_view data = m_text.substr(m_last.begin, ending->split - m_last.begin);
  AppendRun(out, m_last.scheme, data, ending->unlatch, ending->openField);
  AppendAscii(out, m_text.substr(ending->split));
  return out;
}

}  // namespace barcode::datamatrix
