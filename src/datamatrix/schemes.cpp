#include "datamatrix/schemes.h"

#include "base/ascii.h"

namespace barcode::datamatrix {
namespace {

struct ValueList {
  std::array<std::uint8_t, 4> values{};
  std::size_t size = 0;

  constexpr void Push(int value) { values[size++] = static_cast<std::uint8_t>(value); }
};

using ValueTable = std::array<ValueList, 256>;

constexpr int kShift1 = 0;
constexpr int kShift2 = 1;
constexpr int kShift3 = 2;
constexpr int kUpperShiftInShift2 = 30;

constexpr bool IsUpperCase(int byte) {
  return byte >= 'A' && byte <= 'Z';
}

constexpr bool IsLowerCase(int byte) {
  return byte >= 'a' && byte <= 'z';
}

// Values of the basic set, the same in C40, TEXT and X12 but for the case of the letters; -1 for other bytes.
constexpr int BasicValue(int byte, bool lowerCase) {
  if (byte == ' ') {
    return 3;
  }
  if (byte >= '0' && byte <= '9') {
    return byte - '0' + 4;
  }
  if (lowerCase ? IsLowerCase(byte) : IsUpperCase(byte)) {
    return byte - (lowerCase ? 'a' : 'A') + 14;
  }
  return -1;
}

// Values of the punctuation set (shift 2); -1 for other bytes.
constexpr int PunctuationValue(int byte) {
  if (byte >= '!' && byte <= '/') {
    return byte - '!';
  }
  if (byte >= ':' && byte <= '@') {
    return byte - ':' + 15;
  }
  if (byte >= '[' && byte <= '_') {
    return byte - '[' + 22;
  }
  return -1;
}

// Shift 3 holds the last 32 ASCII characters; TEXT has its upper-case letters where the lower-case ones would
// be.
constexpr int Shift3Value(int byte) {
  return IsUpperCase(byte) ? byte - 'A' + 1 : byte - '`';
}

constexpr ValueList MakeCharacter(int byte, bool lowerCase) {
  ValueList list;
  if (byte >= 128) {
    list.Push(kShift2);
    list.Push(kUpperShiftInShift2);
    byte -= 128;
  }
  if (const int basic = BasicValue(byte, lowerCase); basic >= 0) {
    list.Push(basic);
  } else if (byte < ' ') {
    list.Push(kShift1);
    list.Push(byte);
  } else if (const int punctuation = PunctuationValue(byte); punctuation >= 0) {
    list.Push(kShift2);
    list.Push(punctuation);
  } else {
    list.Push(kShift3);
    list.Push(Shift3Value(byte));
  }
  return list;
}

constexpr ValueTable MakeTable(bool lowerCase) {
  ValueTable table;
  for (int byte = 0; byte < 256; ++byte) {
    table[static_cast<std::size_t>(byte)] = MakeCharacter(byte, lowerCase);
  }
  return table;
}

constexpr ValueTable MakeX12Table() {
  ValueTable table;
  table['\r'].Push(0);
  table['*'].Push(1);
  table['>'].Push(2);
  for (int byte = 0; byte < 128; ++byte) {
    if (const int basic = BasicValue(byte, false); basic >= 0) {
      table[static_cast<std::size_t>(byte)].Push(basic);
    }
  }
  return table;
}

constexpr ValueTable kC40Values = MakeTable(false);
constexpr ValueTable kTextValues = MakeTable(true);
constexpr ValueTable kX12Values = MakeX12Table();

constexpr int PseudoRandom(std::size_t position, int modulus) {
  return static_cast<int>((149 * position) % static_cast<std::size_t>(modulus)) + 1;
}

}  // namespace

std::uint8_t LatchCodeword(Scheme scheme) {
  constexpr std::array<std::uint8_t, kSchemes.size() - 1> kLatches = {230, 239, 238, 240, 231};
  return kLatches[static_cast<std::size_t>(scheme) - 1];
}

std::span<const std::uint8_t> TripletValues(Scheme scheme, std::uint8_t byte) {
  const ValueTable& table = scheme == Scheme::kC40    ? kC40Values
                            : scheme == Scheme::kText ? kTextValues
                                                      : kX12Values;
  return std::span(table[byte].values).first(table[byte].size);
}

bool IsDigitPair(std::string_view text, std::size_t position) {
  return position + 1 < text.size() && IsDigit(text[position]) && IsDigit(text[position + 1]);
}

std::vector<std::size_t> AsciiLengths(std::string_view text) {
  std::vector<std::size_t> lengths(text.size() + 1);
  for (std::size_t position = text.size(); position-- > 0;) {
    if (IsDigitPair(text, position)) {
      lengths[position] = lengths[position + 2] + 1;
    } else {
      const bool upper = IsUpperByte(static_cast<std::uint8_t>(text[position]));
      lengths[position] = lengths[position + 1] + (upper ? 2 : 1);
    }
  }
  return lengths;
}

std::uint8_t Randomize253State(std::uint8_t codeword, std::size_t position) {
  const int randomized = codeword + PseudoRandom(position, 253);
  return static_cast<std::uint8_t>(randomized > 254 ? randomized - 254 : randomized);
}

std::uint8_t Randomize255State(std::uint8_t codeword, std::size_t position) {
  return static_cast<std::uint8_t>((codeword + PseudoRandom(position, 255)) % 256);
}

}  // namespace barcode::datamatrix
