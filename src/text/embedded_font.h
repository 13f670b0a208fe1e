#pragma once

#include <cstdint>
#include <span>

namespace barcode {

// The embedded TrueType file, Roboto Condensed Regular (generated at build time).
std::span<const std::uint8_t> EmbeddedRobotoFont();

}  // namespace barcode
