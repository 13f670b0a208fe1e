#pragma once

#include <SDL.h>

#include <array>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <string_view>

#include "base/colour.h"
#include "core/font.h"
#include "core/sdl_ptr.h"
#include "text/text_spacing.h"

namespace barcode {

// Draws text onto a renderer with the embedded font at one size in pixels, anti-aliased and blended. Holds
// the font library for its lifetime. What cannot be rendered is reported on standard error and left out; what
// lies wholly outside the canvas costs nothing.
// An image much larger than the canvas (and than any sensible text) counts as one that cannot be rendered.
class TextPainter {
 public:
  TextPainter(SDL_Renderer& canvas, int size, const Colour& colour);

  // False when the font could not be opened; SDL_GetError() has the reason. Nothing may be drawn then.
  bool IsOpen() const { return m_font != nullptr; }

  // Size of a text in pixels; false on failure.
  bool Measure(const std::string& text, int& width, int& height) const;

  // The text in one piece, its left edge or its centre at x.
  void DrawAt(std::string_view text, std::int64_t left, const TextBox& box);
  void DrawAround(std::string_view text, std::int64_t centre, const TextBox& box);

  // The text in one piece, centred in `width` pixels from x: left edge x + (width - text width) / 2.
  void DrawCentred(std::string_view text, int x, int width, const TextBox& box);

  // Each byte alone, around its centre.
  void DrawSpaced(std::string_view text, const EvenSpacing& spacing, const TextBox& box);

 private:
  struct Image {
    TexturePtr texture;
    int width = 0;
    int height = 0;
    bool failed = false;
  };

  // Turns the width of an image into its left edge.
  template <class LeftEdge>
  void DrawImage(std::string_view text, LeftEdge leftEdge, const TextBox& box);
  Image Render(const std::string& text) const;
  // True when the image of the text is not so large that it is refused.
  bool IsWithinBounds(const std::string& text) const;
  // The font library's rendering; null, with SDL_GetError() set, on failure.
  SurfacePtr RenderSurface(const std::string& text) const;
  const Image& RenderByte(char byte);
  void Copy(const Image& image, std::int64_t left, const TextBox& box) const;

  FontLibraryLock m_lock;
  SDL_Renderer& m_canvas;
  Colour m_colour;
  int m_size;
  int m_canvasWidth = 0;
  int m_canvasHeight = 0;
  std::shared_ptr<TTF_Font> m_font;
  // Images of single bytes already rendered, for lines that repeat them; the memory is bounded by the font
  // size.
  std::array<Image, std::numeric_limits<unsigned char>::max() + 1> m_bytes;
  Image m_uncached;
};

}  // namespace barcode
