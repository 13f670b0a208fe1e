#pragma once

#include <SDL.h>

#include <array>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/colour.h"
#include "core/font.h"
#include "core/sdl_ptr.h"
#include "layout/drawing.h"

namespace barcode {

// Draws the texts of one drawing onto a renderer with the embedded font, anti-aliased and blended. Nothing is
// opened before the first text is measured or drawn; from then on the font library is held. What cannot be
// rendered is reported on standard error and left out; what lies wholly outside the canvas costs nothing.
// An image larger than any sensible text counts as one that cannot be rendered.
class TextPainter {
 public:
  // fontError: what stands before the reason when a font cannot be opened.
  TextPainter(SDL_Renderer& canvas, const Colour& colour, std::string_view fontError);

  // Size of a text in pixels; nothing when text cannot be drawn at that size. Throws std::bad_alloc when
  // memory is exhausted.
  std::optional<TextExtent> Measure(const std::string& text, int size);

  // Draws nothing when text cannot be drawn at all, or not at that size.
  void Draw(const TextRun& run);

 private:
  struct Image {
    TexturePtr texture;
    int width = 0;
    int height = 0;
    bool failed = false;
  };

  // The font of one size with the images of single bytes already rendered, for lines that repeat them; their
  // memory is bounded by the font size.
  struct Face {
    int size = 0;
    std::shared_ptr<TTF_Font> font;  // null when it could not be opened
    bool isSpoiled = false;          // it ran out of memory: not to be used again
    std::array<Image, std::numeric_limits<unsigned char>::max() + 1> bytes;
    Image uncached;
  };

  // True when the font of that size is at hand in m_face; tried, and reported, once for each size in turn.
  bool Open(int size);

  void DrawPiece(const TextRun& run);
  void DrawSpaced(const TextRun& run);

  // Draws an image of the text, its left edge where leftEdge(width of the image) says.
  template <class LeftEdge>
  void DrawImage(std::string_view text, LeftEdge leftEdge, const TextBox& box);
  Image Render(const std::string& text);
  // True when the image of the text is not so large that it is refused.
  bool IsWithinBounds(const std::string& text);
  // The font library's rendering; null, with SDL's words set, on failure.
  SurfacePtr RenderSurface(const std::string& text);
  std::optional<TextExtent> MeasureOpen(const std::string& text);
  // Uses the open font; false when it ran out of memory, which may have spoiled it.
  template <class Use>
  bool UseFont(Use use);
  const Image& RenderByte(char byte);
  void Copy(const Image& image, std::int64_t left, const TextBox& box) const;

  SDL_Renderer& m_canvas;
  Colour m_colour;
  std::string_view m_fontError;
  int m_canvasWidth = 0;
  int m_canvasHeight = 0;
  std::optional<FontLibraryLock> m_lock;
  std::unique_ptr<Face> m_face;
};

}  // namespace barcode
