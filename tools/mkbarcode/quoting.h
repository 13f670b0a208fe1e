#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace barcode::tool {

// The parts, one behind the other.
std::string Concat(std::initializer_list<std::string_view> parts);

// The text as HTML content or as a double-quoted attribute value.
std::string HtmlEscaped(std::string_view text);

// The text as one word of a POSIX shell command, quoted only where the shell would change it.
std::string ShellQuoted(std::string_view text);

// The text as a C string literal, quotes included; bytes from 0x80 (UTF-8) stand as they are.
std::string CLiteral(std::string_view text);

}  // namespace barcode::tool
