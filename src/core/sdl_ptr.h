#pragma once

#include <SDL.h>

#include <memory>

namespace barcode {

// Owners of SDL objects.
template <auto Free>
struct SdlDeleter {
  template <class T>
  void operator()(T* object) const {
    Free(object);
  }
};

using SurfacePtr = std::unique_ptr<SDL_Surface, SdlDeleter<SDL_FreeSurface>>;
using RendererPtr = std::unique_ptr<SDL_Renderer, SdlDeleter<SDL_DestroyRenderer>>;
using TexturePtr = std::unique_ptr<SDL_Texture, SdlDeleter<SDL_DestroyTexture>>;
using RwopsPtr = std::unique_ptr<SDL_RWops, SdlDeleter<SDL_RWclose>>;

}  // namespace barcode
