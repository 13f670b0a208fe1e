#include "linear/yubin_customer.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/ascii.h"
#include "base/number_format.h"
#include "base/numeric.h"
#include "core/diagnostics.h"
#include "core/rect_painter.h"

namespace barcode {
namespace {

constexpr std::size_t kBarsPerCode = 3;
constexpr std::size_t kPositions = 20;
constexpr int kCheckModulus = 19;
constexpr std::string_view kStart = "13";
constexpr std::string_view kStop = "31";

// Digits 0 to 9, hyphen, CC1 to CC8; the index of a code is its value in the check sum.
constexpr std::array<std::string_view, 19> kCodes = {"144", "114", "132", "312", "123", "141", "321",
                                                     "213", "231", "411", "414", "324", "342", "234",
                                                     "432", "243", "423", "441", "111"};
constexpr std::size_t kCc1 = 11;
constexpr std::size_t kCc4 = 14;

// The first eleven characters are their own codes. The letters follow in tens: a control code for the ten,
// then the digit within it.
constexpr std::string_view kCharacters = "0123456789-ABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr std::size_t kFirstLetter = 11;

static_assert(kStart.size() + (kPositions + 1) * kBarsPerCode + kStop.size() == 67);

constexpr bool CodesAreDistinct() {
  for (std::size_t i = 0; i < kCodes.size(); ++i) {
    if (kCodes[i].size() != kBarsPerCode ||
        std::find(kCodes.begin(), kCodes.end(), kCodes[i]) != &kCodes[i]) {
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
  const std::string& Bars() const { return m_bars; }

 private:
  void Push(std::size_t value) {
    m_bars += kCodes[value];
    m_sum += static_cast<int>(value);
    ++m_count;
  }

  std::string m_bars;
  std::size_t m_count = 0;
  int m_sum = 0;
};

// Vertical extent of a bar type: long bars are three thirds high, semi-long bars two, timing bars the middle
// one.
struct Extent {
  float top;
  float height;
};

Extent BarExtent(char type, float height) {
  const float twoThirds = 2.0F * height / 3.0F;
  switch (type) {
    case '1':
      return {0.0F, height};
    case '2':
      return {0.0F, twoThirds};
    case '3':
      return {height - twoThirds, twoThirds};
    default:
      return {height - twoThirds, height / 3.0F};
  }
}

float Pitch(float height) {
  return height / 3.0F;
}

// Negative heights of a host arrive with the sign bit set.
bool IsPositive(std::uint32_t height) {
  return static_cast<std::int32_t>(height) >= 1;
}

void PrintReport(std::string_view text, std::uint32_t height, int checkValue) {
  std::string line = "YubinCustomer: ";
  line += text;
  line += " (h=";
  AppendInt(line, height);
  line += ", CD=";
  AppendInt(line, checkValue);
  line += ')';
  PrintLine(line);
}

}  // namespace

FourStateSymbol YubinCustomer::Encode(std::string_view text) {
  DataPositions data;
  for (const char character : text) {
    if (data.Full()) {
      break;
    }
    data.Append(character);
  }
  data.Fill();
  const int checkValue = data.CheckValue();
  std::string bars(kStart);
  bars += data.Bars();
  bars += kCodes[static_cast<std::size_t>(checkValue)];
  bars += kStop;
  return {std::move(bars), checkValue};
}

std::vector<RectF> LayoutFourStateBars(std::string_view bars, float x, float y, float height,
                                       std::int32_t pxAdjustBlack) {
  const float width = std::max(1.0F, height / 6.0F + static_cast<float>(pxAdjustBlack));
  std::vector<RectF> rects;
  rects.reserve(bars.size());
  float pen = x;
  for (const char type : bars) {
    const Extent extent = BarExtent(type, height);
    rects.push_back({pen, y + extent.top, width, extent.height});
    pen += Pitch(height);
  }
  return rects;
}

int FourStateImageWidth(float height) {
  return TruncToInt(height / 6.0F + Pitch(height) * 67.0F + 1.0F);
}

bool YubinCustomer::Draw(const std::string& text, int x, int y, std::uint32_t /*width*/,
                         std::uint32_t height) {
  return DrawPostal(text, x, y, height);
}

bool YubinCustomer::DrawPostal(const std::string& text, int x, int y, std::uint32_t height) {
  if (text.empty() || !IsPositive(height)) {
    return false;
  }
  if (IsSvgOutput()) {
    return DrawSvg(text, x, y, 0, height);
  }
  const auto width = static_cast<std::uint32_t>(FourStateImageWidth(static_cast<float>(height)));
  if (!HasPreparedCanvas(x, y, width, height)) {
    return false;
  }
  FillBackground();
  const FourStateSymbol symbol = Encode(text);
  RectPainter painter(*m_canvas, m_foreColor);
  for (const RectF& bar : Bars(symbol, x, y, height)) {
    painter.Fill(bar);
  }
  painter.Flush();
  PresentCanvas();
  PrintReport(text, height, symbol.checkValue);
  return true;
}

bool YubinCustomer::DrawSvg(const std::string& text, int x, int y, std::uint32_t /*width*/,
                            std::uint32_t height) {
  if (text.empty() || !IsPositive(height)) {
    return false;
  }
  const FourStateSymbol symbol = Encode(text);
  const auto width = static_cast<std::uint32_t>(FourStateImageWidth(static_cast<float>(height)));
  BeginSvgDocument(width, height);
  for (const RectF& bar : Bars(symbol, x, y, height)) {
    SvgRect(bar.x, bar.y, bar.width, bar.height, m_foreColor);
  }
  EndSvg();
  PrintReport(text, height, symbol.checkValue);
  return true;
}

std::vector<RectF> YubinCustomer::Bars(const FourStateSymbol& symbol, int x, int y,
                                       std::uint32_t height) const {
  return LayoutFourStateBars(symbol.bars, static_cast<float>(x), static_cast<float>(y),
                             static_cast<float>(height), m_pxAdjustBlack);
}

}  // namespace barcode
