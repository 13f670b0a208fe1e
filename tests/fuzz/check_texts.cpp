#include <array>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <string>

#include "base/base64.h"
#include "base/number_format.h"
#include "base/numeric.h"
#include "fuzz/checks.h"
#include "fuzz/require.h"
#include "text/input_encoding.h"

namespace barcode::fuzz {
namespace {

std::string TextOf(ByteReader& reader) {
  constexpr std::array<std::string_view, 12> kCharacters = {
      "\xE6\x97\xA5", "\xE3\x82\xA2", "\xEF\xBD\xB1", "\xF0\xA0\xAE\xB7", "\x93\xFA", "\x83\x41",
      "\xB1",         "\xC2\xA5",     "\xE3\x80\x9C", "\x81\x60",         "\xED\x40", "\xFA\x40"};
  std::string text;
  while (!reader.Empty() && text.size() < 200) {
    text += reader.OneIn(3) ? std::string(reader.Of(kCharacters)) : reader.Bytes(6);
  }
  return text;
}

template <class... Arguments>
std::string Printed(const char* format, Arguments... arguments) {
  std::array<char, 512> buffer{};
  (void)std::snprintf(buffer.data(), buffer.size(), format, arguments...);
  return buffer.data();
}

}  // namespace

void CheckInputEncoding(ByteReader& reader) {
  const bool isUtf8 = reader.Flag();
  const std::string text = TextOf(reader);
  const std::string keyword = isUtf8 ? "utf-8" : "shift-jis";
  const std::string converted = ConvertInputEncoding(text, keyword);
  Require(!isUtf8 || !IsValidUtf8(text) || converted == text, "UTF-8 stays UTF-8");
  Require(!isUtf8 || IsValidUtf8(converted), "what is converted to UTF-8 is UTF-8");
  const std::string head = text.substr(0, text.find('\0'));
  const std::string shiftJis = ConvertEncoding(head, CharacterSet::kUtf8, CharacterSet::kShiftJis);
  const std::string utf8 = ConvertEncoding(shiftJis, CharacterSet::kShiftJis, CharacterSet::kUtf8);
  Require(IsValidUtf8(utf8), "Shift-JIS becomes UTF-8");
  Require(ConvertEncoding(utf8, CharacterSet::kUtf8, CharacterSet::kShiftJis) == shiftJis,
          "what became Shift-JIS comes back");
  const std::string fromShiftJis = ConvertEncoding(head, CharacterSet::kShiftJis, CharacterSet::kUtf8);
  Require(IsValidUtf8(fromShiftJis), "any Shift-JIS becomes UTF-8");
}

void CheckNumbers(ByteReader& reader) {
  const auto value = reader.OneIn(4) ? static_cast<double>(reader.Any<int>()) / 64 : reader.Any<double>();
  const int precision = static_cast<int>(reader.Below(18));
  std::string fixed;
  AppendFixed2(fixed, value);
  Require(fixed == Printed("%.2f", value), "two decimals as printf has them");
  std::string general;
  AppendGeneral(general, value, precision);
  Require(general == Printed("%.*g", precision, value), "significant digits as printf has them");
  const auto integer = reader.Any<std::int64_t>();
  std::string decimal;
  AppendInt(decimal, integer);
  Require(decimal == std::to_string(integer), "integers in full");
  const int truncated = TruncToInt(value);
  Require(std::isnan(value) ? truncated == 0
                            : std::abs(value) >= 2147483647.0 || truncated == static_cast<int>(value),
          "truncation is toward zero");
  (void)ToFloat(value);
  (void)ClampToInt(integer);
}

void CheckBase64(ByteReader& reader) {
  constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  const std::string bytes = reader.Rest();
  const std::string encoded =
      Base64Encode(std::span(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()));
  Require(encoded.size() == (bytes.size() + 2) / 3 * 4, "three bytes make four characters");
  std::string decoded;
  std::uint32_t bits = 0;
  int count = 0;
  for (const char character : encoded.substr(0, encoded.find('='))) {
    const std::size_t value = kAlphabet.find(character);
    Require(value != std::string_view::npos, "characters are those of the alphabet");
    bits = (bits << 6U | static_cast<std::uint32_t>(value)) & 0xFFFFU;
    count += 6;
    if (count >= 8) {
      count -= 8;
      decoded += static_cast<char>(bits >> count & 0xFFU);
    }
  }
  Require(decoded == bytes, "base64 reads back");
}

}  // namespace barcode::fuzz
