#include "label_proof/own_decoders.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <set>
#include <string_view>
#include <vector>

#include "label_proof/picture.h"

namespace barcode::test {
namespace {

// Readings of each turn of a picture, by a decoder of upright symbols.
template <class Decoder>
std::optional<std::string> DecodeTurned(const GreyImage& image, Decoder decode) {
  std::set<std::string> readings;
  for (int quarters = 0; quarters < 4; ++quarters) {
    const std::optional<std::string> reading = decode(DarkPixels(Turned(image, quarters)));
    if (reading) {
      readings.insert(*reading);
    }
  }
  if (readings.size() != 1) {
    return std::nullopt;
  }
  return *readings.begin();
}

// ---- 2 of 5 ----

// A row's elements from the first bar to the last, 'N' narrow and 'W' wide; "" when they are no two widths or
// the quiet zones are too small.
std::string Elements(const std::vector<int>& runs) {
  constexpr int kQuietModules = 10;
  // Light, bar, ..., bar, light.
  if (runs.size() < 9 || runs.size() % 2 == 0) {
    return {};
  }
  int pitch = runs[1] + runs[2];
  int narrowBar = runs[1];
  for (std::size_t i = 1; i + 2 < runs.size(); ++i) {
    pitch = std::min(pitch, runs[i] + runs[i + 1]);
    narrowBar = i % 2 == 1 ? std::min(narrowBar, runs[i]) : narrowBar;
  }
  // Ink that spreads makes bars wider and spaces narrower by as much: a narrow bar and a narrow space
  // together are two modules.
  const double module = pitch / 2.0;
  const double spread = narrowBar - module;
  if (runs.front() < kQuietModules * module || runs.back() + spread + 0.5 < kQuietModules * module) {
    return {};
  }
  std::string elements;
  for (std::size_t i = 1; i + 1 < runs.size(); ++i) {
    const double width = (runs[i] - (i % 2 == 1 ? spread : -spread)) / module;
    if (width > 0.7 && width < 1.3) {
      elements += 'N';
    } else if (width > 1.8 && width < 3.3) {
      elements += 'W';
    } else {
      return {};
    }
  }
  return elements;
}

struct TwoOfFive {
  std::array<std::string_view, 10> digits;  // bar, space, bar, space, bar
  std::string_view start;                   // up to and with the space in front of the first digit
  std::string_view stop;                    // from the first bar behind the last digit's space
};

constexpr TwoOfFive kMatrix = {
    {"NNWWN", "WNNNW", "NWNNW", "WWNNN", "NNWNW", "WNWNN", "NWWNN", "NNNWW", "WNNWN", "NWNWN"},
    "WNNNNN",
    "WNNNN"};
constexpr TwoOfFive kNec = {
    {"WWNNN", "NNNWW", "NNWNW", "NNWWN", "NWNNW", "NWNWN", "NWWNN", "WNNNW", "WNNWN", "WNWNN"},
    "WNWN",
    "NWW"};

std::optional<std::string> DigitsOf(std::string_view elements, const TwoOfFive& symbology) {
  constexpr std::size_t kPerDigit = 6;  // with the narrow space behind it
  const std::size_t frame = symbology.start.size() + symbology.stop.size();
  if (elements.size() < frame + kPerDigit || (elements.size() - frame) % kPerDigit != 0 ||
      !elements.starts_with(symbology.start) || !elements.ends_with(symbology.stop)) {
    return std::nullopt;
  }
  elements.remove_prefix(symbology.start.size());
  elements.remove_suffix(symbology.stop.size());
  std::string text;
  for (; !elements.empty(); elements.remove_prefix(kPerDigit)) {
    const auto digit = std::ranges::find(symbology.digits, elements.substr(0, kPerDigit - 1));
    if (digit == symbology.digits.end() || elements[kPerDigit - 1] != 'N') {
      return std::nullopt;
    }
    text += static_cast<char>('0' + (digit - symbology.digits.begin()));
  }
  return text;
}

// Several rows have to agree.
std::optional<std::string> DecodeTwoOfFive(const DarkPixels& pixels, const TwoOfFive& symbology) {
  constexpr int kRows = 5;
  int rows = 0;
  std::optional<std::string> reading;
  for (int y = 0; y < pixels.Height(); ++y) {
    const std::optional<std::string> text = DigitsOf(Elements(pixels.Runs(y)), symbology);
    if (!text) {
      continue;
    }
    if (reading && *reading != *text) {
      return std::nullopt;
    }
    reading = text;
    ++rows;
  }
  return rows >= kRows ? reading : std::nullopt;
}

// ---- The postal barcode ----

// Three bars each: 1 long, 2 upper semi-long, 3 lower semi-long, 4 timing. Digits, hyphen, CC1 to CC8; the
// index is the value in the check sum.
constexpr std::array<std::string_view, 19> kPostalCodes = {"144", "114", "132", "312", "123", "141", "321",
                                                           "213", "231", "411", "414", "324", "342", "234",
                                                           "432", "243", "423", "441", "111"};
constexpr std::size_t kBars = 67;
constexpr std::size_t kHyphen = 10;
constexpr std::size_t kCc3 = 13;
constexpr std::size_t kCc4 = 14;

std::optional<std::string> PostalText(std::string_view bars) {
  if (!bars.starts_with("13") || !bars.ends_with("31")) {
    return std::nullopt;
  }
  bars.remove_prefix(2);
  bars.remove_suffix(2);
  std::vector<std::size_t> values;
  std::size_t sum = 0;
  for (; !bars.empty(); bars.remove_prefix(3)) {
    const auto code = std::ranges::find(kPostalCodes, bars.substr(0, 3));
    if (code == kPostalCodes.end()) {
      return std::nullopt;
    }
    values.push_back(static_cast<std::size_t>(code - kPostalCodes.begin()));
    sum += values.back();
  }
  if (sum % kPostalCodes.size() != 0) {
    return std::nullopt;
  }
  values.pop_back();
  while (!values.empty() && values.back() == kCc4) {
    values.pop_back();
  }
  std::string text;
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (values[i] <= kHyphen) {
      text += values[i] == kHyphen ? '-' : static_cast<char>('0' + values[i]);
      continue;
    }
    // CC1, CC2 and CC3 stand before a digit and make it a letter of the first, second or third ten.
    if (values[i] > kCc3 || i + 1 == values.size() || values[i + 1] >= kHyphen) {
      return std::nullopt;
    }
    text += static_cast<char>('A' + 10 * (values[i] - kHyphen - 1) + values[i + 1]);
    ++i;
  }
  return text;
}

struct Bar {
  int left;
  int width;
};

// The 67 bars of a row that crosses every one of them, at even distances with quiet zones; nothing for any
// other row.
std::vector<Bar> PostalBars(const std::vector<int>& runs) {
  constexpr int kQuietModules = 4;
  if (runs.size() != 2 * kBars + 1) {
    return {};
  }
  std::vector<Bar> bars;
  int x = 0;
  for (std::size_t i = 0; i + 1 < runs.size(); i += 2) {
    x += runs[i];
    bars.push_back({x, runs[i + 1]});
    x += runs[i + 1];
  }
  const int pitch = bars[1].left - bars[0].left;
  for (std::size_t i = 1; i < bars.size(); ++i) {
    if (bars[i].left - bars[i - 1].left != pitch) {
      return {};
    }
  }
  const int quiet = kQuietModules * pitch / 2;
  const bool isQuiet = runs.front() >= quiet && runs.back() + bars[0].width >= quiet + pitch / 2;
  return isQuiet ? bars : std::vector<Bar>();
}

// Rows of ink from a row on, upwards or downwards.
int InkFrom(const DarkPixels& pixels, int x, int y, int step) {
  int rows = 0;
  while (y >= 0 && y < pixels.Height() && pixels.At(x, y)) {
    ++rows;
    y += step;
  }
  return rows;
}

std::optional<std::string> DecodePostalUpright(const DarkPixels& pixels) {
  int top = 0;
  std::vector<Bar> bars;
  for (; top < pixels.Height() && bars.empty(); ++top) {
    bars = PostalBars(pixels.Runs(top));
  }
  if (bars.empty()) {
    return std::nullopt;
  }
  --top;
  int bottom = top + 1;
  while (bottom < pixels.Height() && pixels.SameRows(top, bottom)) {
    ++bottom;
  }
  // Each third of a long bar is as high as the pitch: two modules.
  const int third = bars[1].left - bars[0].left;
  if (bottom - top != third) {
    return std::nullopt;
  }
  std::string types;
  for (const auto& [left, width] : bars) {
    const int middle = left + width / 2;
    const int above = InkFrom(pixels, middle, top - 1, -1);
    const int below = InkFrom(pixels, middle, bottom, 1);
    if ((above != 0 && above != third) || (below != 0 && below != third)) {
      return std::nullopt;
    }
    types += above != 0 ? (below != 0 ? '1' : '2') : (below != 0 ? '3' : '4');
  }
  return PostalText(types);
}

}  // namespace

std::optional<std::string> DecodeMatrix2of5(const GreyImage& image) {
  return DecodeTurned(image, [](const DarkPixels& pixels) { return DecodeTwoOfFive(pixels, kMatrix); });
}

std::optional<std::string> DecodeNec2of5(const GreyImage& image) {
  return DecodeTurned(image, [](const DarkPixels& pixels) { return DecodeTwoOfFive(pixels, kNec); });
}

std::optional<std::string> DecodePostal(const GreyImage& image) {
  return DecodeTurned(image, DecodePostalUpright);
}

}  // namespace barcode::test
