#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "base/utf8.h"

namespace barcode::label {

// A caller's text inside a message: its first bytes, in whole characters, with an ellipsis for the rest.
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

}  // namespace barcode::label
