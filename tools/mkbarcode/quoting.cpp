#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

bool IsPlainInShell(char c) {
  const bool isAlphanumeric = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
  return isAlphanumeric || std::string_view("%+,-./:=@_").find(c) != std::string_view::npos;
}

// Three octal digits, so that a digit behind the escape cannot be taken for a part of it.
std::string OctalEscape(unsigned char byte) {
  return {'\\', static_cast<char>('0' + byte / 64), static_cast<char>('0' + byte / 8 % 8),
          static_cast<char>('0' + byte % 8)};
}

}  // namespace

std::string Concat(std::initializer_list<std::string_view> parts) {
  std::string text;
  for (const std::string_view part : parts) {
    text += part;
  }
  return text;
}

std::string HtmlEscaped(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      case '\'':
        escaped += "&#39;";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

std::string ShellQuoted(std::string_view text) {
  bool isPlain = !text.empty();
  for (const char c : text) {
    isPlain = isPlain && IsPlainInShell(c);
  }
  if (isPlain) {
    return std::string(text);
  }
  std::string quoted = "'";
  for (const char c : text) {
    if (c == '\'') {
      quoted += "'\\''";
    } else {
      quoted += c;
    }
  }
  quoted += '\'';
  return quoted;
}

std::string CLiteral(std::string_view text) {
  std::string literal = "\"";
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      literal += '\\';
      literal += c;
    } else if (byte < 0x20 || byte == 0x7F) {
      literal += OctalEscape(byte);
    } else {
      literal += c;
    }
  }
  literal += '"';
  return literal;
}

}  // namespace barcode::tool
