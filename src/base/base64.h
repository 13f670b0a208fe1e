#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace barcode {

// Standard alphabet, "=" padding, no line breaks (RFC 4648).
std::string Base64Encode(std::span<const std::uint8_t> bytes);

// Appends the encoding to a text that already holds something, a data URI's head for example.
void AppendBase64(std::string& out, std::span<const std::uint8_t> bytes);

// The bytes of an encoding; nothing for a text that Base64Encode never makes: other characters, line breaks,
// missing padding, bits behind the last byte.
std::optional<std::string> Base64Decode(std::string_view text);

}  // namespace barcode
