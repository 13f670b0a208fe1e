#pragma once

#include <cstddef>
#include <functional>
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
  void RequireCharacters(const std::function<bool(char)>& isAllowed, const CharacterRule& rule,
                         std::size_t from = 0, std::size_t end = std::string_view::npos) const;
  void RequireDigits(std::string_view symbology, std::size_t from = 0) const;
  // Refuses a text whose last digit is another one.
  void RequireCheckDigit(char expected) const;

 private:
  static constexpr std::string_view kTextField = "text";
  static constexpr std::string_view kRawField = "text_base64";

  std::string_view m_field;
  std::string_view m_bytes;
};

}  // namespace barcode::label
