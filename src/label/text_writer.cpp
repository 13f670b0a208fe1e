#include "label/text_writer.h"

#include <algorithm>
#include <charconv>

#include "base/utf8.h"

namespace barcode::label {

char* TextWriter::WriteLongInteger(char* out, std::int64_t value) {
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
