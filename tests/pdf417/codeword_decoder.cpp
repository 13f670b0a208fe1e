#include "pdf417/codeword_decoder.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string_view>
#include <vector>

#include "pdf417/tables.h"

namespace barcode::test {
namespace {

using namespace std::string_view_literals;

// The characters of the values 0, 1, 2, ... of each sub-mode; the values after them are controls.
constexpr std::array<std::string_view, 4> kCharacters = {
    "ABCDEFGHIJKLMNOPQRSTUVWXYZ "sv,
    "abcdefghijklmnopqrstuvwxyz "sv,
    "0123456789&\r\t,:#-.$/+%*=^"sv,
    ";<>@[\\]_`~!\r\t,:\n-.$/\"|*()?{}'"sv,
};

// Text Compaction, value by value.
class TextReader {
 public:
  explicit TextReader(std::string& out) : m_out(out) {}

  // A latch to Text Compaction begins in upper case.
  void Restart() {
    m_mode = 0;
    m_shift = -1;
  }

  void Codeword(int codeword) {
    Value(codeword / 30);
    Value(codeword % 30);
  }

  // A shift that is not followed by a character is a pad.
  void DropShift() { m_shift = -1; }

 private:
  void Value(int value) {
    const auto mode = static_cast<std::size_t>(m_shift >= 0 ? m_shift : m_mode);
    const bool shifted = m_shift >= 0;
    m_shift = -1;
    if (static_cast<std::size_t>(value) < kCharacters[mode].size()) {
      m_out += kCharacters[mode][static_cast<std::size_t>(value)];
    } else if (mode == 2 && value == 26) {
      m_out += ' ';
    } else {
      Control(static_cast<int>(mode), value, shifted);
    }
  }

  void Control(int mode, int value, bool shifted) {
    if (mode == 3) {
      m_mode = 0;
    } else if (value == 29) {
      m_shift = 3;
    } else if (mode == 2) {
      m_mode = value == 25 ? 3 : value == 27 ? 1 : 0;
    } else if (value == 28) {
      m_mode = 2;
    } else if (mode == 0) {
      m_mode = 1;
    } else if (!shifted) {
      m_shift = 0;
    }
  }

  std::string& m_out;
  int m_mode = 0;
  int m_shift = -1;
};

std::size_t BlockEnd(std::span<const int> data, std::size_t start) {
  while (start < data.size() && data[start] < 900) {
    ++start;
  }
  return start;
}

bool ReadByteBlock(std::span<const int> block, bool multipleOf6, std::string& out) {
  // After 901 one to five single bytes stand behind the groups, so that five codewords at the end are no
  // group.
  if (block.empty() || (multipleOf6 && block.size() % 5 != 0)) {
    return false;
  }
  const std::size_t groups = multipleOf6 ? block.size() / 5 : (block.size() - 1) / 5;
  for (std::size_t group = 0; group < groups; ++group) {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < 5; ++i) {
      value = value * 900 + static_cast<std::uint64_t>(block[group * 5 + i]);
    }
    for (int shift = 40; shift >= 0; shift -= 8) {
      out += static_cast<char>(value >> static_cast<unsigned>(shift) & 0xFFU);
    }
    if (value >> 48U != 0) {
      return false;
    }
  }
  for (const int single : block.subspan(groups * 5)) {
    if (single > 255) {
      return false;
    }
    out += static_cast<char>(single);
  }
  return true;
}

// Up to 15 codewords: a number of base 900 that is, in decimals, a 1 and the digits.
bool ReadDigitGroup(std::span<const int> group, std::string& out) {
  std::string decimals = "0";  // least significant first
  for (const int codeword : group) {
    int carry = codeword;
    for (char& digit : decimals) {
      const int value = (digit - '0') * 900 + carry;
      digit = static_cast<char>('0' + value % 10);
      carry = value / 10;
    }
    for (; carry > 0; carry /= 10) {
      decimals += static_cast<char>('0' + carry % 10);
    }
  }
  if (decimals.back() != '1' || decimals.size() < 2) {
    return false;
  }
  decimals.pop_back();
  out.append(decimals.rbegin(), decimals.rend());
  return true;
}

bool ReadNumericBlock(std::span<const int> block, std::string& out) {
  if (block.empty()) {
    return false;
  }
  while (!block.empty()) {
    const std::size_t length = std::min<std::size_t>(block.size(), 15);
    if (!ReadDigitGroup(block.first(length), out)) {
      return false;
    }
    block = block.subspan(length);
  }
  return true;
}

}  // namespace

std::optional<std::string> DecodePDF417Codewords(std::span<const int> data) {
  if (data.empty() || static_cast<std::size_t>(data[0]) != data.size()) {
    return std::nullopt;
  }
  std::string out;
  TextReader text(out);
  bool textMode = true;
  for (std::size_t i = 1; i < data.size();) {
    const int codeword = data[i];
    if (codeword < 900) {
      text.Codeword(codeword);
      ++i;
      continue;
    }
    text.DropShift();
    if (codeword == 900) {
      textMode = true;
      text.Restart();
      ++i;
    } else if (codeword == 913) {
      if (!textMode || i + 1 >= data.size() || data[i + 1] > 255) {
        return std::nullopt;
      }
      out += static_cast<char>(data[i + 1]);
      i += 2;
    } else {
      const std::size_t end = BlockEnd(data, i + 1);
      const std::span<const int> block = data.subspan(i + 1, end - i - 1);
      const bool numeric = codeword == 902;
      const bool known = numeric || codeword == 901 || codeword == 924;
      if (!known || !(numeric ? ReadNumericBlock(block, out) : ReadByteBlock(block, codeword == 924, out))) {
        return std::nullopt;
      }
      textMode = false;
      i = end;
    }
  }
  return out;
}

namespace {

std::uint32_t Bits(const ModuleMatrix& modules, int row, int x, int length) {
  std::uint32_t bits = 0;
  for (int i = 0; i < length; ++i) {
    bits = bits << 1U | (modules.At(x + i, row) ? 1U : 0U);
  }
  return bits;
}

using PatternMap = std::map<std::uint32_t, int>;

const std::array<PatternMap, 3>& PatternMaps() {
  static const std::array<PatternMap, 3> maps = [] {
    std::array<PatternMap, 3> result;
    for (std::size_t cluster = 0; cluster < 3; ++cluster) {
      for (std::size_t value = 0; value < pdf417::kClusters[cluster].size(); ++value) {
        result[cluster].emplace(pdf417::kClusters[cluster][value], static_cast<int>(value));
      }
    }
    return result;
  }();
  return maps;
}

// All symbol characters between start and stop pattern.
std::optional<std::vector<int>> ReadRow(const ModuleMatrix& modules, int row) {
  const int end = modules.Columns() - 18;
  if (Bits(modules, row, 0, 17) != 0x1FEA8 || Bits(modules, row, end, 18) != 0x3FA29) {
    return std::nullopt;
  }
  const PatternMap& map = PatternMaps()[static_cast<std::size_t>(row % 3)];
  std::vector<int> values;
  for (int x = 17; x < end; x += 17) {
    const auto found = map.find(Bits(modules, row, x, 17));
    if (found == map.end()) {
      return std::nullopt;
    }
    values.push_back(found->second);
  }
  return values;
}

// What the three kinds of row say, from one side of the symbol.
struct IndicatorTriple {
  int rowsDiv3 = -1;
  int levelAndRows = -1;
  int columns = -1;

  bool operator==(const IndicatorTriple&) const = default;
};

}  // namespace

std::optional<ReadPDF417Symbol> ReadPDF417Modules(const ModuleMatrix& modules) {
  if ((modules.Columns() - 69) % 17 != 0) {
    return std::nullopt;
  }
  ReadPDF417Symbol symbol;
  IndicatorTriple left;
  IndicatorTriple right;
  for (int row = 0; row < modules.Rows(); ++row) {
    const auto values = ReadRow(modules, row);
    if (!values || values->front() / 30 != row / 3 || values->back() / 30 != row / 3) {
      return std::nullopt;
    }
    symbol.codewords.insert(symbol.codewords.end(), values->begin() + 1, values->end() - 1);
    const std::array<int*, 3> leftFields = {&left.rowsDiv3, &left.levelAndRows, &left.columns};
    const std::array<int*, 3> rightFields = {&right.columns, &right.rowsDiv3, &right.levelAndRows};
    for (const auto& [field, value] :
         {std::pair{leftFields[static_cast<std::size_t>(row % 3)], values->front()},
          std::pair{rightFields[static_cast<std::size_t>(row % 3)], values->back()}}) {
      if (row >= 3 && *field != value % 30) {
        return std::nullopt;
      }
      *field = value % 30;
    }
  }
  if (left != right) {
    return std::nullopt;
  }
  symbol.rows = left.rowsDiv3 * 3 + left.levelAndRows % 3 + 1;
  symbol.errorLevel = left.levelAndRows / 3;
  symbol.columns = left.columns + 1;
  return symbol;
}

bool HasZeroSyndromes(std::span<const int> codewords, int errorCodewords) {
  unsigned root = 1;
  for (int i = 0; i < errorCodewords; ++i) {
    root = root * 3 % 929;
    unsigned value = 0;
    for (const int codeword : codewords) {
      value = (value * root + static_cast<unsigned>(codeword)) % 929;
    }
    if (value != 0) {
      return false;
    }
  }
  return true;
}

}  // namespace barcode::test
