#include "core/canvas.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <limits>
#include <span>
#include <stdexcept>

#include "base/line.h"
#include "core/diagnostics.h"
#include "core/png_writer.h"
#include "core/sdl_error.h"

namespace barcode {
namespace {

constexpr int kBitsPerPixel = 32;
constexpr int kBytesPerPixel = 4;
constexpr Uint32 kPixelFormat = SDL_PIXELFORMAT_ABGR8888;  // bytes R, G, B, A in memory

// Pixels above this many bytes are refused before anything is allocated.
constexpr std::uint64_t kMaxSurfaceBytes = 0x7FFF'FFFF;

// No PNG file that the encoder writes has a longer side.
constexpr int kMaxPngSide = 1'000'000;

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

// A surface without pixels, of any width or height: SDL itself refuses rows of more than two gigabytes.
SurfacePtr CreateEmptySurface(int columns, int rows) {
  constexpr int kMaxColumns = std::numeric_limits<int>::max() / kBytesPerPixel;
  SurfacePtr surface(
      SDL_CreateRGBSurfaceWithFormat(0, std::min(columns, kMaxColumns), rows, kBitsPerPixel, kPixelFormat));
  if (surface != nullptr) {
    surface->w = columns;
    SDL_SetClipRect(surface.get(), nullptr);
  }
  return surface;
}

}  // namespace

SurfacePtr Canvas::CreateSurface(std::uint32_t width, std::uint32_t height) {
  const int columns = static_cast<int>(width);
  const int rows = static_cast<int>(height);
  // SDL takes ints: sizes above their range arrive as negative numbers, which it refuses in its own words.
  if (columns < 0 || rows < 0) {
    return SurfacePtr(SDL_CreateRGBSurfaceWithFormat(0, columns, rows, kBitsPerPixel, kPixelFormat));
  }
  if (columns == 0 || rows == 0) {
    return CreateEmptySurface(columns, rows);
  }
  const std::uint64_t bytes = std::uint64_t{width} * height * kBytesPerPixel;
  // SDL would clear the pixels once more than needed, and touch those that are never seen.
  if (bytes <= kMaxSurfaceBytes) {
    m_pixels.reset(static_cast<std::uint8_t*>(std::calloc(bytes, 1)));  // NOLINT: see above
  }
  if (m_pixels == nullptr) {
    SDL_OutOfMemory();
    return nullptr;
  }
  return SurfacePtr(SDL_CreateRGBSurfaceWithFormatFrom(m_pixels.get(), columns, rows, kBitsPerPixel,
                                                       columns * kBytesPerPixel, kPixelFormat));
}

bool Canvas::Prepare(std::uint32_t width, std::uint32_t height, const Colour& background) {
  Release();
  m_surface = CreateSurface(width, height);
  if (m_surface == nullptr) {
    ErrorLine("サーフェス作成に失敗: ", SdlError());
    Release();
    return false;
  }
  m_renderer.reset(SDL_CreateSoftwareRenderer(m_surface.get()));
  if (m_renderer == nullptr) {
    ErrorLine("レンダラー作成に失敗: ", SdlError());
    Release();
    return false;
  }
  if (IsVisible()) {
    FillSurface(*m_surface, background);
  }
  return true;
}

void Canvas::Fill(const Colour& colour) {
  if (!IsVisible()) {
    return;
  }
  Present();
  FillSurface(*m_surface, colour);
}

bool Canvas::IsVisible() const {
  return m_surface != nullptr && m_surface->w > 0 && m_surface->h > 0 && m_surface->w <= kMaxPngSide &&
         m_surface->h <= kMaxPngSide;
}

void Canvas::Present() {
  if (m_renderer == nullptr) {
    return;
  }
  // SDL_RenderPresent does the same and tells nobody when it fails.
  if (SDL_RenderFlush(m_renderer.get()) != 0) {
    throw std::runtime_error(Line("SDL_RenderFlush error: ", SdlError()));
  }
  SDL_RenderPresent(m_renderer.get());
}

void Canvas::Release() {
  m_renderer.reset();
  m_surface.reset();
  m_pixels.reset();
}

std::vector<std::uint8_t> Canvas::Encode() {
  Present();
  return SaveSurfaceToMemory(m_surface.get());
}

}  // namespace barcode
