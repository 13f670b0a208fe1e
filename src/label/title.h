#pragma once

#include <string_view>

#include "base/utf8.h"

namespace barcode::label {

// Whether documents may hold the character: XML forbids the control characters but three, and U+FFFE and
// U+FFFF.
constexpr bool IsDocumentCharacter(char32_t character) {
  if (character < 0x20) {
    return character == '\t' || character == '\n' || character == '\r';
  }
  return character != 0xFFFE && character != 0xFFFF;
}

// Takes the first character off a title that is not empty; U+FFFD for bytes that are none and for characters
// that documents may not hold.
constexpr char32_t TakeDocumentCharacter(std::string_view& title) {
  const char32_t character = TakeCharacter(title);
  return IsDocumentCharacter(character) ? character : kReplacementCharacter;
}

}  // namespace barcode::label
