#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "label/request.h"

namespace barcode::label {

// A text in UTF-8, in which U+FFFD stands for bytes that are none.
std::string ShownText(std::string_view bytes);

// What a refused character is told.
struct CharacterRule {
  std::string_view rule;              // "Code 39 takes ..."
  std::string_view alternative = {};  // to replacing it: "choose ..."
};

// The text of a request as a symbology looks at it, and the words in which it is refused.
class SymbolText {
 public:
  explicit SymbolText(const Request& request);

  std::string_view Bytes() const { return m_bytes; }
  // Given as bytes: they are encoded as they are.
  bool IsRaw() const { return m_field == kRawField; }

  std::string Shown() const { return ShownText(m_bytes); }

  // Names a character by its place among the bytes: `the character "a" at position 3`, counted from 1, with
  // its code point where it is no visible ASCII character.
  std::string CharacterAt(std::size_t offset) const;

  // Throw LabelError with one sentence: kBadText and kTooLong.
  [[noreturn]] void Refuse(const std::string& message) const;
  [[noreturn]] void RefuseLength(const std::string& message) const;

  // Refuses the first character between two offsets that is not allowed.
  template <class IsAllowed>
  void RequireCharacters(IsAllowed isAllowed, const CharacterRule& rule, std::size_t from = 0,
                         std::size_t end = std::string_view::npos) const;
  // symbology: the subject of the sentence.
  void RequireDigits(std::string_view symbology, std::size_t from = 0) const;
  // Refuses a text whose last digit is another one.
  void RequireCheckDigit(char expected) const;

 private:
  [[noreturn]] void RefuseCharacter(const CharacterRule& rule, std::size_t offset) const;

  static constexpr std::string_view kTextField = "text";
  static constexpr std::string_view kRawField = "text_base64";

  std::string_view m_field;
  std::string_view m_bytes;
};

template <class IsAllowed>
void SymbolText::RequireCharacters(IsAllowed isAllowed, const CharacterRule& rule, std::size_t from,
                                   std::size_t end) const {
  end = std::min(end, m_bytes.size());
  for (std::size_t offset = from; offset < end; ++offset) {
    if (!isAllowed(m_bytes[offset])) {
      RefuseCharacter(rule, offset);
    }
  }
}

}  // namespace barcode::label
