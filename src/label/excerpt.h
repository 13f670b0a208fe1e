#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "base/utf8.h"

namespace barcode::label {

// A caller's text, shortened: its first bytes, in whole characters, with an ellipsis for the rest.
inline std::string Excerpt(std::string_view text) {
  constexpr std::size_t kLongest = 60;
  constexpr std::string_view kEllipsis = "\xE2\x80\xA6";
  std::size_t length = 0;
  while (length < text.size()) {
    const std::size_t next = length + FirstUtf8Character(text.substr(length)).length;
    if (next > kLongest) {
      return std::string(text.substr(0, length)).append(kEllipsis);
    }
    length = next;
  }
  return std::string(text);
}

// The same inside a message. Control characters become U+FFFD: a zero byte would end the message, a line feed
// its line.
inline std::string ExcerptForMessage(std::string_view text) {
  std::string excerpt;
  for (const char character : Excerpt(text)) {
    if (static_cast<unsigned char>(character) < ' ') {
      AppendUtf8(excerpt, kReplacementCharacter);
    } else {
      excerpt += character;
    }
  }
  return excerpt;
}

}  // namespace barcode::label
