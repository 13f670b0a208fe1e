#pragma once

#include <SDL.h>

#include <array>
#include <cstddef>

#include "base/colour.h"
#include "base/geometry.h"

namespace barcode {

// Fills rectangles of one colour on a renderer, in batches; the four bytes of the colour are stored as they
// are, without blending. Rectangles (or parts far outside) that cannot touch the canvas are dropped, so that
// a symbol much larger than its canvas costs no memory. All functions throw std::runtime_error when SDL
// cannot paint: a picture that lacks bars or modules is no picture.
class RectPainter {
 public:
  RectPainter(SDL_Renderer& canvas, const Colour& colour);
  RectPainter(const RectPainter&) = delete;
  RectPainter& operator=(const RectPainter&) = delete;

  void Fill(const RectF& rect);

  // Draws what is pending; the last call of every painter.
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
