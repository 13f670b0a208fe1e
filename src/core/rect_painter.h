#pragma once

#include <SDL.h>

#include <array>
#include <cstddef>

#include "base/colour.h"
#include "base/geometry.h"

namespace barcode {

// Fills rectangles of one colour on a renderer, in batches. Rectangles (or parts far outside) that cannot
// touch the canvas are dropped, so that a symbol much larger than its canvas costs no memory. Flush() or the
// destructor draws what is pending.
class RectPainter {
 public:
  RectPainter(SDL_Renderer& canvas, const Colour& colour);
  ~RectPainter();
  RectPainter(const RectPainter&) = delete;
  RectPainter& operator=(const RectPainter&) = delete;

  void Fill(const RectF& rect);
  void Flush();

 private:
  SDL_Renderer& m_canvas;
  Colour m_colour;
  float m_canvasWidth = 0;
  float m_canvasHeight = 0;
  std::array<SDL_FRect, 256> m_pending;
  std::size_t m_count = 0;
};

}  // namespace barcode
