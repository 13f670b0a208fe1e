#include "label/text_writer.h"

#include <algorithm>
#include <charconv>

#include "base/utf8.h"

namespace barcode::label {

char* TextWriter::WriteLongInteger(char* out, std::int64_t value) {
  const bool isNegative = value < 0;
  const std::uint64_t size =
      isNegative ? -static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
  if (size < 1000) {
    const auto small = static_cast<unsigned>(size);
    *out = '-';
    out += isNegative ? 1 : 0;
    *out = static_cast<char>('0' + small / 100);
    out += small >= 100 ? 1 : 0;
    *out = static_cast<char>('0' + small / 10 % 10);
    out += small >= 10 ? 1 : 0;
    *out = static_cast<char>('0' + small % 10);
    return out + 1;
  }
  return std::to_chars(out, out + kLongestInteger, value).ptr;
}

void TextWriter::Grow(std::size_t size) {
  const std::size_t written = Size();
  m_text.resize(std::max(2 * m_text.size(), written + size));
  Resume(written);
}

void AddUtf8(TextWriter& out, char32_t character) {
  std::string text;
  AppendUtf8(text, character);
  out.Add(std::string_view(text));
}

}  // namespace barcode::label
