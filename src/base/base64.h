#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace barcode {

// Standard alphabet, "=" padding, no line breaks (RFC 4648).
std::string Base64Encode(std::span<const std::uint8_t> bytes);

// Appends the encoding to a text that already holds something, a data URI's head for example.
void AppendBase64(std::string& out, std::span<const std::uint8_t> bytes);

}  // namespace barcode
