#include "linear/yubin_customer_encoder.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "base/ascii.h"

namespace barcode {
namespace {

using enum FourState;

constexpr std::size_t kBarsPerCode = 3;
constexpr std::size_t kPositions = 20;
constexpr int kCheckModulus = 19;

using Code = std::array<FourState, kBarsPerCode>;

constexpr std::array kStart = {kLong, kLowerSemiLong};
constexpr std::array kStop = {kLowerSemiLong, kLong};

// A code from its bars as they are published: 1 long, 2 upper semi-long, 3 lower semi-long, 4 timing.
constexpr Code CodeOf(std::string_view bars) {
  return {static_cast<FourState>(bars[0] - '1'), static_cast<FourState>(bars[1] - '1'),
          static_cast<FourState>(bars[2] - '1')};
}

// Digits 0 to 9, hyphen, CC1 to CC8; the index of a code is its value in the check sum.
constexpr std::array<Code, 19> kCodes = {
    CodeOf("144"), CodeOf("114"), CodeOf("132"), CodeOf("312"), CodeOf("123"), CodeOf("141"), CodeOf("321"),
    CodeOf("213"), CodeOf("231"), CodeOf("411"), CodeOf("414"), CodeOf("324"), CodeOf("342"), CodeOf("234"),
    CodeOf("432"), CodeOf("243"), CodeOf("423"), CodeOf("441"), CodeOf("111")};
constexpr std::size_t kCc1 = 11;
constexpr std::size_t kCc4 = 14;

// The first eleven characters are their own codes. The letters follow in tens: a control code for the ten,
// then the digit within it.
constexpr std::string_view kCharacters = "0123456789-ABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr std::size_t kFirstLetter = 11;

static_assert(kStart.size() + (kPositions + 1) * kBarsPerCode + kStop.size() == kYubinBars);

constexpr bool CodesAreDistinct() {
  for (std::size_t i = 0; i < kCodes.size(); ++i) {
    if (std::find(kCodes.begin(), kCodes.end(), kCodes[i]) != &kCodes[i]) {
      return false;
    }
  }
  return true;
}
static_assert(CodesAreDistinct());

// The data positions of a symbol, as values of the check sum.
class DataPositions {
 public:
  bool Full() const { return m_count == kPositions; }

  void Append(char character) {
    const std::size_t index = kCharacters.find(ToUpper(character));
    if (index == std::string_view::npos) {
      return;
    }
    if (index < kFirstLetter) {
      Push(index);
      return;
    }
    const std::size_t letter = index - kFirstLetter;
    if (m_count + 1 == kPositions) {
      // No room for the letter's digit: CC1 takes the last position, whatever the letter.
      Push(kCc1);
      return;
    }
    Push(kCc1 + letter / 10);
    Push(letter % 10);
  }

  void Fill() {
    while (!Full()) {
      Push(kCc4);
    }
  }

  int CheckValue() const { return (kCheckModulus - m_sum % kCheckModulus) % kCheckModulus; }
  const std::vector<FourState>& Bars() const { return m_bars; }

 private:
  void Push(std::size_t value) {
    m_bars.insert(m_bars.end(), kCodes[value].begin(), kCodes[value].end());
    m_sum += static_cast<int>(value);
    ++m_count;
  }

  std::vector<FourState> m_bars;
  std::size_t m_count = 0;
  int m_sum = 0;
};

}  // namespace

FourStateSymbol EncodeYubinCustomer(std::string_view text) {
  DataPositions data;
  for (const char character : text) {
    if (data.Full()) {
      break;
    }
    data.Append(character);
  }
  data.Fill();
  const int checkValue = data.CheckValue();
  const Code& check = kCodes[static_cast<std::size_t>(checkValue)];
  FourStateSymbol symbol{.bars = {kStart.begin(), kStart.end()}, .checkValue = checkValue};
  symbol.bars.reserve(kYubinBars);
  symbol.bars.insert(symbol.bars.end(), data.Bars().begin(), data.Bars().end());
  symbol.bars.insert(symbol.bars.end(), check.begin(), check.end());
  symbol.bars.insert(symbol.bars.end(), kStop.begin(), kStop.end());
  return symbol;
}

}  // namespace barcode
