#include "faults/interposed.h"

#include <SDL.h>
#include <SDL_image.h>
#include <SDL_ttf.h>
#include <dlfcn.h>
#include <iconv.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <new>

namespace barcode::test {
namespace {

Fault current = Fault::None;
int callsSpared = 0;

// True, with SDL's error text set, when the function is to fail.
bool Fails(Fault fault) {
  if (current != fault || callsSpared-- > 0) {
    return false;
  }
  SDL_SetError("injected");
  return true;
}

// The function that would have been called.
template <class Function>
Function* Real(Function* /*replacement*/, const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

Failing::Failing(Fault fault, int spared) {
  current = fault;
  callsSpared = spared;
}

Failing::~Failing() {
  current = Fault::None;
}

}  // namespace barcode::test

// NOLINTBEGIN: what stands for the allocator has to use one
void* operator new(std::size_t size, const std::nothrow_t& /*nothrow*/) noexcept {
  constexpr std::size_t kLarge = 1'000'000;
  return size >= kLarge && barcode::test::current == barcode::test::Fault::LargeAllocation
             ? nullptr
             : std::malloc(std::max<std::size_t>(size, 1));
}

void* operator new(std::size_t size) {
  void* const memory = operator new(size, std::nothrow);
  if (memory == nullptr) {
    throw std::bad_alloc();
  }
  return memory;
}

void* operator new[](std::size_t size) {
  return operator new(size);
}

void operator delete(void* memory) noexcept {
  std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
  std::free(memory);
}

void operator delete[](void* memory) noexcept {
  std::free(memory);
}

void operator delete[](void* memory, std::size_t /*size*/) noexcept {
  std::free(memory);
}
// NOLINTEND

using barcode::test::Fails;
using barcode::test::Fault;
using barcode::test::Real;

extern "C" {

DECLSPEC SDL_Surface* SDL_CreateRGBSurfaceWithFormat(Uint32 flags, int width, int height, int depth,
                                                     Uint32 format) {
  if (Fails(Fault::CreateSurface)) {
    return nullptr;
  }
  return Real(&SDL_CreateRGBSurfaceWithFormat, "SDL_CreateRGBSurfaceWithFormat")(flags, width, height, depth,
                                                                                 format);
}

DECLSPEC SDL_Surface* SDL_CreateRGBSurfaceWithFormatFrom(void* pixels, int width, int height, int depth,
                                                         int pitch, Uint32 format) {
  if (Fails(Fault::CreateSurface)) {
    return nullptr;
  }
  return Real(&SDL_CreateRGBSurfaceWithFormatFrom, "SDL_CreateRGBSurfaceWithFormatFrom")(
      pixels, width, height, depth, pitch, format);
}

DECLSPEC SDL_Renderer* SDL_CreateSoftwareRenderer(SDL_Surface* surface) {
  if (Fails(Fault::CreateRenderer)) {
    return nullptr;
  }
  return Real(&SDL_CreateSoftwareRenderer, "SDL_CreateSoftwareRenderer")(surface);
}

DECLSPEC SDL_Texture* SDL_CreateTextureFromSurface(SDL_Renderer* renderer, SDL_Surface* surface) {
  if (Fails(Fault::CreateTexture)) {
    return nullptr;
  }
  return Real(&SDL_CreateTextureFromSurface, "SDL_CreateTextureFromSurface")(renderer, surface);
}

DECLSPEC int SDL_SetRenderDrawBlendMode(SDL_Renderer* renderer, SDL_BlendMode mode) {
  if (Fails(Fault::SetDrawBlendMode)) {
    return -1;
  }
  return Real(&SDL_SetRenderDrawBlendMode, "SDL_SetRenderDrawBlendMode")(renderer, mode);
}

DECLSPEC int SDL_SetRenderDrawColor(SDL_Renderer* renderer, Uint8 r, Uint8 g, Uint8 b, Uint8 a) {
  if (Fails(Fault::SetDrawColour)) {
    return -1;
  }
  return Real(&SDL_SetRenderDrawColor, "SDL_SetRenderDrawColor")(renderer, r, g, b, a);
}

DECLSPEC int SDL_RenderFillRectsF(SDL_Renderer* renderer, const SDL_FRect* rects, int count) {
  if (Fails(Fault::FillRects)) {
    return -1;
  }
  return Real(&SDL_RenderFillRectsF, "SDL_RenderFillRectsF")(renderer, rects, count);
}

DECLSPEC int SDL_RenderCopy(SDL_Renderer* renderer, SDL_Texture* texture, const SDL_Rect* source,
                            const SDL_Rect* target) {
  if (Fails(Fault::RenderCopy)) {
    return -1;
  }
  return Real(&SDL_RenderCopy, "SDL_RenderCopy")(renderer, texture, source, target);
}

DECLSPEC int SDL_RenderFlush(SDL_Renderer* renderer) {
  if (Fails(Fault::RenderFlush)) {
    return -1;
  }
  return Real(&SDL_RenderFlush, "SDL_RenderFlush")(renderer);
}

DECLSPEC int SDL_GetRendererOutputSize(SDL_Renderer* renderer, int* width, int* height) {
  if (Fails(Fault::OutputSize)) {
    return -1;
  }
  return Real(&SDL_GetRendererOutputSize, "SDL_GetRendererOutputSize")(renderer, width, height);
}

DECLSPEC int SDL_SetTextureBlendMode(SDL_Texture* texture, SDL_BlendMode mode) {
  if (Fails(Fault::SetTextureBlendMode)) {
    return -1;
  }
  return Real(&SDL_SetTextureBlendMode, "SDL_SetTextureBlendMode")(texture, mode);
}

DECLSPEC SDL_RWops* SDL_RWFromMem(void* memory, int size) {
  if (Fails(Fault::RwFromMem)) {
    return nullptr;
  }
  return Real(&SDL_RWFromMem, "SDL_RWFromMem")(memory, size);
}

DECLSPEC SDL_RWops* SDL_RWFromConstMem(const void* memory, int size) {
  if (Fails(Fault::RwFromConstMem)) {
    return nullptr;
  }
  return Real(&SDL_RWFromConstMem, "SDL_RWFromConstMem")(memory, size);
}

DECLSPEC int IMG_SavePNG_RW(SDL_Surface* surface, SDL_RWops* stream, int freeStream) {
  if (Fails(Fault::SavePng)) {
    return -1;
  }
  return Real(&IMG_SavePNG_RW, "IMG_SavePNG_RW")(surface, stream, freeStream);
}

DECLSPEC int TTF_Init(void) {
  if (Fails(Fault::TtfInit)) {
    return -1;
  }
  return Real(&TTF_Init, "TTF_Init")();
}

DECLSPEC TTF_Font* TTF_OpenFontRW(SDL_RWops* stream, int freeStream, int size) {
  if (Fails(Fault::OpenFont)) {
    SDL_RWclose(stream);
    SDL_SetError("injected");
    return nullptr;
  }
  return Real(&TTF_OpenFontRW, "TTF_OpenFontRW")(stream, freeStream, size);
}

DECLSPEC SDL_Surface* TTF_RenderUTF8_Blended(TTF_Font* font, const char* text, SDL_Color colour) {
  if (Fails(Fault::RenderText)) {
    return nullptr;
  }
  return Real(&TTF_RenderUTF8_Blended, "TTF_RenderUTF8_Blended")(font, text, colour);
}

iconv_t iconv_open(const char* to, const char* from) {
  if (Fails(Fault::OpenConverter)) {
    errno = EMFILE;
    return reinterpret_cast<iconv_t>(static_cast<std::intptr_t>(-1));  // NOLINT: as POSIX has it
  }
  return Real(&iconv_open, "iconv_open")(to, from);
}

}  // extern "C"
