#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// UTF-8, taken apart and put together.
namespace barcode {

// What stands for bytes that are no character.
inline constexpr char32_t kReplacementCharacter = 0xFFFD;

constexpr bool IsSurrogate(std::uint32_t value) {
  return value >= 0xD800 && value <= 0xDFFF;
}

// One sequence at the front of a text: its length and, when it is well-formed in shape, its value.
struct Utf8Sequence {
  std::size_t length = 1;
  bool complete = false;
  std::uint32_t value = 0;

  // A character, in its shortest form.
  constexpr bool IsScalarValue() const {
    constexpr std::array<std::uint32_t, 5> kSmallest = {0, 0, 0x80, 0x800, 0x10000};
    return complete && value >= kSmallest[length] && value <= 0x10FFFF && !IsSurrogate(value);
  }
};

// Continuation bytes that a lead byte announces; -1 for a byte that cannot lead.
constexpr int Utf8ContinuationCount(std::uint8_t lead) {
  if (lead < 0x80) {
    return 0;
  }
  if ((lead & 0xE0U) == 0xC0) {
    return 1;
  }
  if ((lead & 0xF0U) == 0xE0) {
    return 2;
  }
  return (lead & 0xF8U) == 0xF0 ? 3 : -1;
}

// bytes: not empty.
constexpr Utf8Sequence ReadUtf8Sequence(std::string_view bytes) {
  const auto lead = static_cast<std::uint8_t>(bytes.front());
  const int count = Utf8ContinuationCount(lead);
  if (count < 0) {
    return {};
  }
  Utf8Sequence sequence{.length = 1, .complete = true, .value = count == 0 ? lead : lead & (0x3FU >> count)};
  for (int i = 0; i < count; ++i) {
    const auto byte =
        sequence.length < bytes.size() ? static_cast<std::uint8_t>(bytes[sequence.length]) : std::uint8_t{0};
    if ((byte & 0xC0U) != 0x80) {
      sequence.complete = false;
      return sequence;
    }
    sequence.value = sequence.value << 6U | (byte & 0x3FU);
    ++sequence.length;
  }
  return sequence;
}

// The character at the front of a text: its code point, U+FFFD where the bytes are none, and how many bytes
// it takes.
struct Utf8Character {
  char32_t codePoint = kReplacementCharacter;
  std::size_t length = 1;
  bool valid = false;
};

// text: not empty.
constexpr Utf8Character FirstUtf8Character(std::string_view text) {
  if (const auto lead = static_cast<std::uint8_t>(text.front()); lead < 0x80) {
    return {lead, 1, true};
  }
  const Utf8Sequence sequence = ReadUtf8Sequence(text);
  const bool valid = sequence.IsScalarValue();
  return {valid ? static_cast<char32_t>(sequence.value) : kReplacementCharacter, sequence.length, valid};
}

// Takes the first character off a text that is not empty; U+FFFD where the bytes are none.
constexpr char32_t TakeCharacter(std::string_view& text) {
  const Utf8Character character = FirstUtf8Character(text);
  text.remove_prefix(character.length);
  return character.codePoint;
}

// Calls visit(codePoint) for each character of a text.
template <class Visit>
constexpr void VisitUtf8(std::string_view text, Visit visit) {
  while (!text.empty()) {
    visit(TakeCharacter(text));
  }
}

// Whether all of it is well-formed.
constexpr bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    const Utf8Character character = FirstUtf8Character(text);
    if (!character.valid) {
      return false;
    }
    text.remove_prefix(character.length);
  }
  return true;
}

inline void AppendUtf8(std::string& out, std::uint32_t value) {
  const auto push = [&out](std::uint32_t byte) { out.push_back(static_cast<char>(byte)); };
  if (value < 0x80) {
    push(value);
  } else if (value < 0x800) {
    push(0xC0U | value >> 6U);
    push(0x80U | (value & 0x3FU));
  } else if (value < 0x10000) {
    push(0xE0U | value >> 12U);
    push(0x80U | (value >> 6U & 0x3FU));
    push(0x80U | (value & 0x3FU));
  } else {
    push(0xF0U | value >> 18U);
    push(0x80U | (value >> 12U & 0x3FU));
    push(0x80U | (value >> 6U & 0x3FU));
    push(0x80U | (value & 0x3FU));
  }
}

}  // namespace barcode
