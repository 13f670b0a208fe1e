#include "core/text_painter.h"

#include <algorithm>

#include "base/numeric.h"
#include "core/diagnostics.h"

namespace barcode {
namespace {

// Larger glyphs are rendered anew each time: few of them fit a canvas, and each takes megabytes.
constexpr int kMaxCachedSize = 128;

// Images of text beyond both bounds are refused: a line of a megabyte, or a font of thousands of pixels in a
// small box, would take gigabytes for what the canvas shows of it.
constexpr std::int64_t kMaxTextPixels = 16'000'000;
constexpr std::int64_t kMaxCanvasShare = 4;

// No glyph of the font is wider than this many times its size.
constexpr std::int64_t kMaxGlyphAspect = 4;

// No line is higher than this many times the size.
constexpr std::int64_t kMaxLineAspect = 2;

}  // namespace

TextPainter::TextPainter(SDL_Renderer& canvas, int size, const Colour& colour)
    : m_canvas(canvas), m_colour(colour), m_size(size), m_font(SizedRobotoFont(size)) {
  SDL_GetRendererOutputSize(&canvas, &m_canvasWidth, &m_canvasHeight);
}

bool TextPainter::Measure(const std::string& text, int& width, int& height) const {
  return TTF_SizeUTF8(m_font.get(), text.c_str(), &width, &height) == 0;
}

template <class LeftEdge>
void TextPainter::DrawImage(std::string_view text, LeftEdge leftEdge, const TextBox& box) {
  if (text.size() == 1) {
    const Image& image = RenderByte(text.front());
    if (!image.failed) {
      Copy(image, leftEdge(image.width), box);
    }
    return;
  }
  const Image image = Render(std::string(text));
  if (!image.failed) {
    Copy(image, leftEdge(image.width), box);
  }
}

void TextPainter::DrawAt(std::string_view text, std::int64_t left, const TextBox& box) {
  DrawImage(
      text, [&](int) { return left; }, box);
}

void TextPainter::DrawAround(std::string_view text, std::int64_t centre, const TextBox& box) {
  DrawImage(
      text, [&](int width) { return centre - width / 2; }, box);
}

void TextPainter::DrawCentred(std::string_view text, int x, int width, const TextBox& box) {
  DrawImage(
      text, [&](int textWidth) { return x + (std::int64_t{width} - textWidth) / 2; }, box);
}

void TextPainter::DrawSpaced(std::string_view text, const EvenSpacing& spacing, const TextBox& box) {
  const std::int64_t reach = kMaxGlyphAspect * m_size;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const std::int64_t centre = spacing.Centre(i);
    if (centre < -reach) {
      continue;
    }
    if (centre > m_canvasWidth + reach) {
      return;
    }
    DrawAround(text.substr(i, 1), centre, box);
  }
}

const TextPainter::Image& TextPainter::RenderByte(char byte) {
  const std::string text(1, byte);
  if (m_size > kMaxCachedSize) {
    m_uncached = Render(text);
    return m_uncached;
  }
  Image& image = m_bytes[static_cast<unsigned char>(byte)];
  // A failure is tried, and reported, at every occurrence.
  if (image.texture == nullptr) {
    image = Render(text);
  }
  return image;
}

bool TextPainter::IsWithinBounds(const std::string& text) const {
  // Measuring costs as much as rendering: a text that is small at any rate is not measured.
  if (m_size <= kMaxCachedSize &&
      static_cast<std::int64_t>(text.size()) * kMaxGlyphAspect * m_size * kMaxLineAspect * m_size <=
          kMaxTextPixels) {
    return true;
  }
  int width = 0;
  int height = 0;
  return !Measure(text, width, height) ||
         std::int64_t{width} * height <=
             std::max(kMaxTextPixels, kMaxCanvasShare * m_canvasWidth * m_canvasHeight);
}

SurfacePtr TextPainter::RenderSurface(const std::string& text) const {
  SDL_ClearError();  // the font library does not always say why it failed; nobody else's words may stand for
                     // it
  SurfacePtr surface;
  if (IsWithinBounds(text)) {
    surface.reset(
        TTF_RenderUTF8_Blended(m_font.get(), text.c_str(), {m_colour.r, m_colour.g, m_colour.b, m_colour.a}));
  }
  if (surface == nullptr && *SDL_GetError() == '\0') {
    SDL_OutOfMemory();
  }
  return surface;
}

TextPainter::Image TextPainter::Render(const std::string& text) const {
  const SurfacePtr surface = RenderSurface(text);
  if (surface == nullptr) {
    ErrorLine("TTF_RenderUTF8_Blended error: ", SDL_GetError());
    return {.texture = nullptr, .failed = true};
  }
  TexturePtr texture(SDL_CreateTextureFromSurface(&m_canvas, surface.get()));
  if (texture == nullptr) {
    ErrorLine("SDL_CreateTextureFromSurface error: ", SDL_GetError());
    return {.texture = nullptr, .failed = true};
  }
  SDL_SetTextureBlendMode(texture.get(), SDL_BLENDMODE_BLEND);
  return {std::move(texture), surface->w, surface->h};
}

void TextPainter::Copy(const Image& image, std::int64_t left, const TextBox& box) const {
  const std::int64_t top = std::min(box.top, box.bottom - image.height);
  if (left >= m_canvasWidth || left + image.width <= 0) {
    return;
  }
  const SDL_Rect target{ClampToInt(left), ClampToInt(top), image.width, image.height};
  SDL_RenderCopy(&m_canvas, image.texture.get(), nullptr, &target);
}

}  // namespace barcode
