#include "label/symbol_text.h"

#include <cstdint>

#include "base/ascii.h"
#include "base/line.h"
#include "base/utf8.h"
#include "label/error.h"

namespace barcode::label {
namespace {

// In capitals, with at least `digits` digits.
std::string Hexadecimal(std::uint32_t value, std::size_t digits) {
  std::string text;
  for (; value != 0 || text.size() < digits; value >>= 4U) {
    text.insert(text.begin(), "0123456789ABCDEF"[value & 0xFU]);
  }
  return text;
}

std::string CharacterName(char32_t character) {
  constexpr std::size_t kDigits = 4;
  if (character > ' ' && character < 0x7F && character != '"') {
    return Line("the character \"", static_cast<char>(character), '"');
  }
  return "the character U+" + Hexadecimal(character, kDigits);
}

// Characters of a text in UTF-8.
std::size_t CountCharacters(std::string_view text) {
  std::size_t count = 0;
  VisitUtf8(text, [&count](char32_t) { ++count; });
  return count;
}

}  // namespace

std::string ShownText(std::string_view bytes) {
  std::string shown;
  shown.reserve(bytes.size());
  VisitUtf8(bytes, [&shown](char32_t character) { AppendUtf8(shown, character); });
  return shown;
}

SymbolText::SymbolText(const Request& request)
    : m_field(request.textBytes ? kRawField : kTextField),
      m_bytes(request.textBytes ? std::string_view(*request.textBytes)
              : request.text    ? std::string_view(*request.text)
                                : std::string_view()) {}

std::string SymbolText::CharacterAt(std::size_t offset) const {
  const Utf8Character character = FirstUtf8Character(m_bytes.substr(offset));
  if (IsRaw() && character.codePoint >= 0x80) {
    const auto byte = static_cast<std::uint8_t>(m_bytes[offset]);
    return Line("the byte 0x", Hexadecimal(byte, 2), " at position ", offset + 1);
  }
  const std::size_t before = IsRaw() ? offset : CountCharacters(m_bytes.substr(0, offset));
  return Line(CharacterName(character.codePoint), " at position ", before + 1);
}

void SymbolText::Refuse(const std::string& message) const {
  throw LabelError(ErrorCode::kBadText, m_field, message);
}

void SymbolText::RefuseLength(const std::string& message) const {
  throw LabelError(ErrorCode::kTooLong, m_field, message);
}

void SymbolText::RefuseCharacter(const CharacterRule& rule, std::size_t offset) const {
  Refuse(Line(rule.rule, "; replace ", CharacterAt(offset), rule.alternative.empty() ? "" : " or ",
              rule.alternative, '.'));
}

void SymbolText::RequireDigits(std::string_view symbology, std::size_t from) const {
  const std::string_view digits = m_bytes.substr(std::min(from, m_bytes.size()));
  if (!AllDigits(digits)) {
    RequireCharacters(IsDigit, {Line(symbology, " takes the digits 0 to 9")}, from);
  }
}

void SymbolText::RequireCheckDigit(char expected) const {
  if (m_bytes.back() != expected) {
    Refuse(Line("The check digit is ", m_bytes.back(), " but must be ", expected,
                "; correct it or leave it out."));
  }
}

}  // namespace barcode::label
