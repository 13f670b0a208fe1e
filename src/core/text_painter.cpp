#include "core/text_painter.h"

#include <algorithm>
#include <new>

#include "base/numeric.h"
#include "core/diagnostics.h"
#include "core/sdl_error.h"

namespace barcode {
namespace {

// Larger images of text are refused: a line of a megabyte, or a font of thousands of pixels, would take
// gigabytes.
constexpr std::int64_t kMaxTextPixels = 128'000'000;

// No glyph of the font is wider than this many times its size.
constexpr std::int64_t kMaxGlyphAspect = 4;

// No line is higher than this many times the size.
constexpr std::int64_t kMaxLineAspect = 2;

}  // namespace

TextPainter::TextPainter(SDL_Renderer& canvas, const Colour& colour, std::string_view fontError)
    : m_canvas(canvas), m_colour(colour), m_fontError(fontError) {
  SDL_GetRendererOutputSize(&canvas, &m_canvasWidth, &m_canvasHeight);
}

bool TextPainter::Open(int size) {
  if (m_face == nullptr && !IsTextRenderingReady()) {
    return false;
  }
  if (m_face == nullptr || m_face->size != size || m_face->isSpoiled) {
    if (!m_lock) {
      m_lock.emplace();
    }
    m_face = std::make_unique<Face>();
    m_face->size = size;
    m_face->font = SizedRobotoFont(size);
    if (m_face->font == nullptr) {
      ErrorLine(m_fontError, SdlError());
    }
  }
  return m_face->font != nullptr;
}

template <class Use>
bool TextPainter::UseFont(Use use) {
  const FontMemoryWatch watch;
  use();
  if (watch.RanOut()) {
    m_face->isSpoiled = true;
    ForgetSizedFonts();
    return false;
  }
  return true;
}

std::optional<TextExtent> TextPainter::MeasureOpen(const std::string& text) {
  TextExtent extent;
  bool isMeasured = false;
  UseFont([&] {
    isMeasured = TTF_SizeUTF8(m_face->font.get(), text.c_str(), &extent.width, &extent.height) == 0;
  });
  return isMeasured ? std::optional(extent) : std::nullopt;
}

std::optional<TextExtent> TextPainter::Measure(const std::string& text, int size) {
  if (!Open(size)) {
    return std::nullopt;
  }
  const std::optional<TextExtent> extent = MeasureOpen(text);
  if (m_face->isSpoiled) {
    throw std::bad_alloc();
  }
  return extent;
}

void TextPainter::Draw(const TextRun& run) {
  if (!Open(run.size)) {
    return;
  }
  if (run.spacing) {
    DrawSpaced(run);
  } else {
    DrawPiece(run);
  }
}

template <class LeftEdge>
void TextPainter::DrawImage(std::string_view text, LeftEdge leftEdge, const TextBox& box) {
  // After a glyph that found no memory the next one gets a new font.
  if (!Open(m_face->size)) {
    return;
  }
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

void TextPainter::DrawPiece(const TextRun& run) {
  const std::int64_t x = TruncToInt(run.x);
  const auto leftEdge = [&](int imageWidth) -> std::int64_t {
    switch (run.anchor) {
      case TextAnchor::kStart:
        return x;
      case TextAnchor::kMiddle:
        return x - imageWidth / 2;
      case TextAnchor::kWithin:
        break;
    }
    return x + (std::int64_t{TruncToInt(run.width)} - imageWidth) / 2;
  };
  DrawImage(run.text, leftEdge, run.box);
}

void TextPainter::DrawSpaced(const TextRun& run) {
  const std::string_view text = run.text;
  const std::int64_t reach = kMaxGlyphAspect * run.size;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const std::int64_t centre = run.spacing->Centre(i);
    if (centre < -reach) {
      continue;
    }
    if (centre > m_canvasWidth + reach) {
      return;
    }
    DrawImage(
        text.substr(i, 1), [centre](int imageWidth) { return centre - imageWidth / 2; }, run.box);
  }
}

const TextPainter::Image& TextPainter::RenderByte(char byte) {
  const std::string text(1, byte);
  if (m_face->size > kLargestKeptSize) {
    m_face->uncached = Render(text);
    return m_face->uncached;
  }
  Image& image = m_face->bytes[static_cast<unsigned char>(byte)];
  // A failure is tried, and reported, at every occurrence.
  if (image.texture == nullptr) {
    image = Render(text);
  }
  return image;
}

bool TextPainter::IsWithinBounds(const std::string& text) {
  // Measuring costs as much as rendering: a text that is small at any rate is not measured.
  const std::int64_t size = m_face->size;
  if (size <= kLargestKeptSize &&
      static_cast<std::int64_t>(text.size()) * kMaxGlyphAspect * size * kMaxLineAspect * size <=
          kMaxTextPixels) {
    return true;
  }
  const std::optional<TextExtent> extent = MeasureOpen(text);
  return !extent || std::int64_t{extent->width} * extent->height <= kMaxTextPixels;
}

SurfacePtr TextPainter::RenderSurface(const std::string& text) {
  SDL_ClearError();  // the font library does not always say why it failed; nobody else's words may stand for
                     // it
  SurfacePtr surface;
  if (IsWithinBounds(text) && !m_face->isSpoiled) {
    const bool hadMemory = UseFont([&] {
      surface.reset(TTF_RenderUTF8_Blended(m_face->font.get(), text.c_str(),
                                           {m_colour.r, m_colour.g, m_colour.b, m_colour.a}));
    });
    if (!hadMemory) {
      surface.reset();
      SDL_OutOfMemory();
    }
  }
  if (surface == nullptr && SdlError().empty()) {
    SDL_OutOfMemory();
  }
  return surface;
}

TextPainter::Image TextPainter::Render(const std::string& text) {
  const SurfacePtr surface = RenderSurface(text);
  if (surface == nullptr) {
    ErrorLine("TTF_RenderUTF8_Blended error: ", SdlError());
    return {.texture = nullptr, .failed = true};
  }
  TexturePtr texture(SDL_CreateTextureFromSurface(&m_canvas, surface.get()));
  if (texture == nullptr) {
    ErrorLine("SDL_CreateTextureFromSurface error: ", SdlError());
    return {.texture = nullptr, .failed = true};
  }
  if (SDL_SetTextureBlendMode(texture.get(), SDL_BLENDMODE_BLEND) != 0) {
    ErrorLine("SDL_SetTextureBlendMode error: ", SdlError());
    return {.texture = nullptr, .failed = true};
  }
  return {std::move(texture), surface->w, surface->h};
}

void TextPainter::Copy(const Image& image, std::int64_t left, const TextBox& box) const {
  const int top = TruncToInt(std::min(box.top, box.bottom - image.height));
  if (left >= m_canvasWidth || left + image.width <= 0) {
    return;
  }
  const SDL_Rect target{ClampToInt(left), top, image.width, image.height};
  if (SDL_RenderCopy(&m_canvas, image.texture.get(), nullptr, &target) != 0) {
    ErrorLine("SDL_RenderCopy error: ", SdlError());
  }
}

}  // namespace barcode
