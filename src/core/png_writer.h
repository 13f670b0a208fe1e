#pragma once

#include <SDL.h>

#include <cstdint>
#include <vector>

namespace barcode {

// The surface as a PNG file in memory. Reports every step on standard output; empty when there is no surface
// or the encoder fails.
std::vector<std::uint8_t> SaveSurfaceToMemory(SDL_Surface* surface);

}  // namespace barcode
