#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/number_format.h"

namespace barcode {

// Lines and documents are put together from pieces: texts, characters, whole numbers, and reals in one of
// these forms.

// "%.2f".
struct Fixed2 {
  double value;
};

// "%.<precision>g"; a plain float or double is written with a precision of 6.
struct General {
  double value;
  int precision;
};

// With at most so many decimals (AppendDecimal).
struct Decimal {
  double value;
  int decimals;
};

inline void AppendPiece(std::string& out, std::string_view text) {
  out += text;
}

inline void AppendPiece(std::string& out, char character) {
  out += character;
}

template <std::integral Integer>
void AppendPiece(std::string& out, Integer value) {
  AppendInt(out, static_cast<std::int64_t>(value));
}

template <std::floating_point Real>
void AppendPiece(std::string& out, Real value) {
  AppendGeneral(out, static_cast<double>(value));
}

inline void AppendPiece(std::string& out, const Fixed2& number) {
  AppendFixed2(out, number.value);
}

inline void AppendPiece(std::string& out, const General& number) {
  AppendGeneral(out, number.value, number.precision);
}

inline void AppendPiece(std::string& out, const Decimal& number) {
  AppendDecimal(out, number.value, number.decimals);
}

// Appends the pieces, one behind the other.
template <class... Pieces>
void AppendPieces(std::string& out, const Pieces&... pieces) {
  (AppendPiece(out, pieces), ...);
}

// The pieces as one text, without a line break.
template <class... Pieces>
std::string Line(const Pieces&... pieces) {
  std::string line;
  AppendPieces(line, pieces...);
  return line;
}

}  // namespace barcode
