#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace barcode::same {

// FNV-1a, 64 bits.
std::uint64_t Hash(std::string_view bytes);

// "hash:length"; "-" for nothing.
std::string Digest(std::string_view bytes);

// In double quotes, everything but printable ASCII escaped; of a text longer than limit the beginning, "..."
// and the digest of the whole.
std::string Quoted(std::string_view text, std::size_t limit);

}  // namespace barcode::same
