#include "base/number_format.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>

namespace barcode {
namespace {

// Longest "%.2f" of a double: sign, 309 digits, point, two decimals.
constexpr std::size_t kBufferSize = 320;

// Below this bound value * 100 is off by less than 2e-5, far from deciding a rounding that is not a near tie.
constexpr double kFastBound = 1e9;
constexpr double kTieMargin = 1e-3;

template <class... Args>
void AppendChars(std::string& out, Args... args) {
  std::array<char, kBufferSize> buffer;
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), args...);
  out.append(buffer.data(), result.ptr);
}

// Rounded hundredths, when their rounding is beyond doubt.
bool RoundedHundredths(double value, std::uint64_t& hundredths) {
  if (!(value >= 0.0 && value < kFastBound) || std::signbit(value)) {
    return false;
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

void AppendFixed2(std::string& out, double value) {
  std::uint64_t hundredths = 0;
  if (!RoundedHundredths(value, hundredths)) {
    AppendChars(out, value, std::chars_format::fixed, 2);
    return;
  }
  std::array<char, 24> buffer;
  char* const end = buffer.data() + buffer.size();
  char* begin = end;
  const auto decimals = static_cast<unsigned>(hundredths % 100);
  std::uint64_t whole = hundredths / 100;
  *--begin = static_cast<char>('0' + decimals % 10);
  *--begin = static_cast<char>('0' + decimals / 10);
  *--begin = '.';
  do {
    *--begin = static_cast<char>('0' + whole % 10);
    whole /= 10;
  } while (whole != 0);
  out.append(begin, end);
}

void AppendGeneral(std::string& out, double value, int precision) {
  AppendChars(out, value, std::chars_format::general, precision);
}

}  // namespace barcode
