#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace barcode {

inline constexpr char32_t kReplacementCharacter = 0xFFFD;

// One character of a UTF-8 text: its code point and how many bytes it takes.
struct Utf8Character {
  char32_t codePoint = kReplacementCharacter;
  std::size_t length = 1;
  bool valid = false;
};

// The character at the front of a text of at least one byte. What is not well-formed (stray and missing
// continuation bytes, overlong forms, surrogates, values above U+10FFFF) is one byte that counts as U+FFFD.
constexpr Utf8Character FirstUtf8Character(std::string_view text) {
  const auto byte = [text](std::size_t index) { return static_cast<std::uint8_t>(text[index]); };
  const std::uint8_t lead = byte(0);
  if (lead < 0x80) {
    return {lead, 1, true};
  }
  const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  if (lead < 0xC2 || lead > 0xF4 || text.size() < length) {
    return {};
  }
  char32_t codePoint = lead & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0U) != 0x80) {
      return {};
    }
    codePoint = codePoint << 6 | (byte(i) & 0x3FU);
  }
  constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
  if (codePoint < kSmallest[length] || codePoint > 0x10FFFF || (codePoint >= 0xD800 && codePoint < 0xE000)) {
    return {};
  }
  return {codePoint, length, true};
}

// Calls visit(codePoint) for each character of a UTF-8 text.
template <class Visit>
constexpr void VisitUtf8(std::string_view text, Visit visit) {
  while (!text.empty()) {
    const Utf8Character character = FirstUtf8Character(text);
    visit(character.codePoint);
    text.remove_prefix(character.length);
  }
}

}  // namespace barcode
