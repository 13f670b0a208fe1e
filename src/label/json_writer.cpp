#include "label/json_writer.h"

#include <array>
#include <cstddef>

#include "base/utf8.h"

namespace barcode::label {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

constexpr bool IsPlain(char c) {
  return c >= ' ' && c != '"' && c != '\\' && static_cast<unsigned char>(c) < 0x80;
}

void AppendEscaped(std::string& out, char c) {
  switch (c) {
    case '"':
      out += "\\\"";
      return;
    case '\\':
      out += "\\\\";
      return;
    case '\n':
      out += "\\n";
      return;
    default: {
      constexpr std::string_view kHexadecimal = "0123456789abcdef";
      const auto code = static_cast<unsigned char>(c);
      AppendPieces(out, "\\u00", kHexadecimal[code >> 4U], kHexadecimal[code & 0xFU]);
    }
  }
}

}  // namespace

void AppendJsonString(std::string& out, std::string_view text) {
  out += '"';
  while (!text.empty()) {
    std::size_t plain = 0;
    while (plain < text.size() && IsPlain(text[plain])) {
      ++plain;
    }
    out += text.substr(0, plain);
    text.remove_prefix(plain);
    if (text.empty()) {
      break;
    }
    const Utf8Character character = FirstUtf8Character(text);
    if (!character.valid) {
      out += kReplacement;
    } else if (character.length > 1) {
      out += text.substr(0, character.length);
    } else {
      AppendEscaped(out, text.front());
    }
    text.remove_prefix(character.length);
  }
  out += '"';
}

}  // namespace barcode::label
