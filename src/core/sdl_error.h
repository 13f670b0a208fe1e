#pragma once

#include <SDL.h>

#include <string_view>

namespace barcode {

// SDL's words for its last failure on this thread. SDL has none when there was no memory for them.
inline std::string_view SdlError() {
  const char* const words = SDL_GetError();
  return words == nullptr ? "Out of memory" : words;
}

}  // namespace barcode
