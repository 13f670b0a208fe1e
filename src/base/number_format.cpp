#include "base/number_format.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>

#include "base/numeric.h"

namespace barcode {
namespace {

// Below this bound value * 100 is off by less than 2e-5, far from deciding a rounding that is not a near tie.
constexpr double kFastBound = 1e9;
constexpr double kTieMargin = 1e-3;

template <class... Args>
void AppendChars(std::string& out, Args... args) {
  std::array<char, kLongestFixed2> buffer;
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), args...);
  out.append(buffer.data(), result.ptr);
}

// Rounded hundredths, when their rounding is beyond doubt.
bool RoundedHundredths(double value, std::uint64_t& hundredths) {
  if (!(value >= 0.0 && value < kFastBound) || std::signbit(value)) {
    return false;
  }
  if (const auto pixels = static_cast<std::uint64_t>(value); static_cast<double>(pixels) == value) {
    hundredths = pixels * 100;
    return true;
  }
  const double scaled = value * 100.0;
  const auto whole = static_cast<std::uint64_t>(scaled);
  const double rest = scaled - static_cast<double>(whole);
  if (std::fabs(rest - 0.5) < kTieMargin) {
    return false;
  }
  hundredths = whole + (rest > 0.5 ? 1 : 0);
  return true;
}

}  // namespace

void AppendInt(std::string& out, std::int64_t value) {
  AppendChars(out, value);
}

char* WriteFixed2(char* out, double value) {
  std::uint64_t hundredths = 0;
  if (!RoundedHundredths(value, hundredths)) {
    return std::to_chars(out, out + kLongestFixed2, value, std::chars_format::fixed, 2).ptr;
  }
  out = std::to_chars(out, out + kLongestFixed2, hundredths / 100).ptr;
  const auto decimals = static_cast<unsigned>(hundredths % 100);
  *out++ = '.';
  *out++ = static_cast<char>('0' + decimals / 10);
  *out++ = static_cast<char>('0' + decimals % 10);
  return out;
}

void AppendFixed2(std::string& out, double value) {
  std::array<char, kLongestFixed2> buffer;
  out.append(buffer.data(), WriteFixed2(buffer.data(), value));
}

void AppendGeneral(std::string& out, double value, int precision) {
  AppendChars(out, value, std::chars_format::general, precision);
}

std::string_view WriteDecimal(DecimalRoom& room, double value, int decimals) {
  std::int64_t scale = 1;
  for (int i = 0; i < decimals; ++i) {
    scale *= 10;
  }
  char* out = room.data();
  const std::int64_t scaled = RoundToInt64(std::fabs(value) * static_cast<double>(scale));
  if (value < 0 && scaled != 0) {
    *out++ = '-';
  }
  if (scaled >= scale || scaled == 0) {
    out = std::to_chars(out, room.data() + room.size(), scaled / scale).ptr;
  }
  if (std::int64_t rest = scaled % scale; rest != 0) {
    *out++ = '.';
    for (; rest != 0; rest = rest * 10 % scale) {
      *out++ = static_cast<char>('0' + rest * 10 / scale);
    }
  }
  return {room.data(), out};
}

void AppendDecimal(std::string& out, double value, int decimals) {
  DecimalRoom room{};
  out += WriteDecimal(room, value, decimals);
}

}  // namespace barcode
