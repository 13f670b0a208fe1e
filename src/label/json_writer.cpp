#include "label/json_writer.h"

#include <cstddef>

#include "base/utf8.h"

namespace barcode::label {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

constexpr bool IsPlain(char c) {
  return c >= ' ' && c != '"' && c != '\\' && static_cast<unsigned char>(c) < 0x80;
}

void AddEscaped(TextWriter& out, char c) {
  switch (c) {
    case '"':
      out.Add("\\\"");
      return;
    case '\\':
      out.Add("\\\\");
      return;
    case '\n':
      out.Add("\\n");
      return;
    default: {
      constexpr std::string_view kHexadecimal = "0123456789abcdef";
      const auto code = static_cast<unsigned char>(c);
      out.Add("\\u00", kHexadecimal[code >> 4U], kHexadecimal[code & 0xFU]);
    }
  }
}

}  // namespace

void AddJsonString(TextWriter& out, std::string_view text) {
  out.Add('"');
  while (!text.empty()) {
    std::size_t plain = 0;
    while (plain < text.size() && IsPlain(text[plain])) {
      ++plain;
    }
    out.Add(text.substr(0, plain));
    text.remove_prefix(plain);
    if (text.empty()) {
      break;
    }
    const Utf8Character character = FirstUtf8Character(text);
    if (!character.valid) {
      out.Add(kReplacement);
    } else if (character.length > 1) {
      out.Add(text.substr(0, character.length));
    } else {
      AddEscaped(out, text.front());
    }
    text.remove_prefix(character.length);
  }
  out.Add('"');
}

}  // namespace barcode::label
