#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace barcode {

// Input text of the two-dimensional symbologies: it arrives as UTF-8 or Shift-JIS and is encoded in the
// character set that the host chose. Shift-JIS is meant as code page 932 defines it. All functions take
// linear time.

// Whether every byte belongs to a sequence of a lead byte and the continuation bytes it announces. Overlong
// forms, surrogates and values above U+10FFFF pass: only the shape is tested.
bool IsValidUtf8(std::string_view bytes);

enum class CharacterSet : std::uint8_t { kUtf8, kShiftJis };

// Converts between the character sets. The input ends at its first NUL. Never fails on bad input, it
// substitutes: U+FFFD for malformed UTF-8, U+30FB for an undefined Shift-JIS code, "?" for each UTF-16 unit
// that Shift-JIS cannot hold. Throws std::runtime_error when the C library offers no converter for CP932 or
// cannot open it; a text of ASCII alone needs none.
std::string ConvertEncoding(std::string_view bytes, CharacterSet from, CharacterSet to);

// The text that a symbol encodes, for the host's `stringEncoding` keyword: Shift-JIS for "shift-jis",
// "Shift-JIS" and "shift_jis", else UTF-8. Text that is in the wanted character set already is returned
// unchanged. Throws as ConvertEncoding does.
std::string ConvertInputEncoding(std::string_view bytes, std::string_view stringEncoding);

}  // namespace barcode
