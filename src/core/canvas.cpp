#include "core/canvas.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <span>

#include "core/diagnostics.h"
#include "core/png_writer.h"
#include "core/sdl_error.h"

namespace barcode {
namespace {

constexpr int kBitsPerPixel = 32;
constexpr Uint32 kPixelFormat = SDL_PIXELFORMAT_ABGR8888;  // bytes R, G, B, A in memory

// Pixels above this many bytes are refused before anything is allocated.
constexpr std::uint64_t kMaxSurfaceBytes = 0x7FFF'FFFF;

SurfacePtr CreateSurface(std::uint32_t width, std::uint32_t height) {
  const bool isNegative = static_cast<int>(width) < 0 || static_cast<int>(height) < 0;
  if (!isNegative && std::uint64_t{width} * height > kMaxSurfaceBytes / (kBitsPerPixel / 8)) {
    SDL_OutOfMemory();
    return nullptr;
  }
  // SDL takes ints: sizes above their range arrive as negative numbers, which it refuses in its own words.
  return SurfacePtr(SDL_CreateRGBSurfaceWithFormat(0, static_cast<int>(width), static_cast<int>(height),
                                                   kBitsPerPixel, kPixelFormat));
}

// Writes the pixels directly: many times faster than clearing through the renderer. The renderer's queue must
// be empty.
void FillSurface(SDL_Surface& surface, const Colour& colour) {
  const auto pixel = std::bit_cast<std::uint32_t>(colour);
  auto* row = static_cast<std::uint8_t*>(surface.pixels);
  for (int y = 0; y < surface.h; ++y, row += surface.pitch) {
    const std::span pixels(reinterpret_cast<std::uint32_t*>(row), static_cast<std::size_t>(surface.w));
    std::fill(pixels.begin(), pixels.end(), pixel);
  }
}

}  // namespace

bool Canvas::Prepare(std::uint32_t width, std::uint32_t height, const Colour& background) {
  Release();
  m_surface = CreateSurface(width, height);
  if (m_surface == nullptr) {
    ErrorLine("サーフェス作成に失敗: ", SdlError());
    return false;
  }
  m_renderer.reset(SDL_CreateSoftwareRenderer(m_surface.get()));
  if (m_renderer == nullptr) {
    ErrorLine("レンダラー作成に失敗: ", SdlError());
    m_surface.reset();
    return false;
  }
  // Bars and modules are stored as they are; only text is blended.
  SDL_SetRenderDrawBlendMode(m_renderer.get(), SDL_BLENDMODE_NONE);
  FillSurface(*m_surface, background);
  return true;
}

void Canvas::Fill(const Colour& colour) {
  if (m_surface == nullptr) {
    return;
  }
  Present();
  FillSurface(*m_surface, colour);
}

void Canvas::Present() {
  if (m_renderer != nullptr) {
    SDL_RenderPresent(m_renderer.get());
  }
}

void Canvas::Release() {
  m_renderer.reset();
  m_surface.reset();
}

std::vector<std::uint8_t> Canvas::Encode() {
  Present();
  return SaveSurfaceToMemory(m_surface.get());
}

}  // namespace barcode
