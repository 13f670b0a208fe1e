#pragma once

#include <SDL.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

#include "base/colour.h"
#include "core/sdl_ptr.h"

namespace barcode {

// The raster picture of an object: a surface of 32-bit RGBA pixels and the renderer that draws into it.
class Canvas {
 public:
  Canvas() = default;
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;
  ~Canvas() { Release(); }

  // A new surface of width x height, filled with the background, and its renderer; an earlier one is released
  // first. False, with a line on standard error, when SDL fails; there is no picture then.
  bool Prepare(std::uint32_t width, std::uint32_t height, const Colour& background);

  // Fills the whole surface.
  void Fill(const Colour& colour);

  // False when nobody can ever see the pixels: a box without any, or one with a side that no PNG file has.
  // Nothing needs to be painted then.
  bool IsVisible() const;

  // Executes what is queued on the renderer. Throws std::runtime_error when SDL cannot, as all that present
  // do.
  void Present();

  void Release();

  // The picture as a PNG file; empty when there is none. Presents it first.
  std::vector<std::uint8_t> Encode();

  // Null when there is no picture.
  SDL_Renderer* Renderer() const { return m_renderer.get(); }
  SDL_Surface* Surface() const { return m_surface.get(); }

 private:
  struct Free {
    void operator()(std::uint8_t* memory) const { std::free(memory); }  // NOLINT: of calloc
  };

  // Null, with SDL's words set, on failure.
  SurfacePtr CreateSurface(std::uint32_t width, std::uint32_t height);

  std::unique_ptr<std::uint8_t[], Free> m_pixels;  // NOLINT: no array class takes memory as it comes
  SurfacePtr m_surface;
  RendererPtr m_renderer;  // draws into the surface and goes first
};

}  // namespace barcode
