#include "core/rect_painter.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "base/line.h"
#include "core/sdl_error.h"

namespace barcode {
namespace {

// The renderer truncates to whole pixels: what begins up to one pixel before the canvas is drawn at its edge.
constexpr float kReach = 1.0F;

// Shortens an extent so that its end is at most `end`, for sizes that no canvas holds.
float Bounded(float begin, float extent, float end) {
  return begin + extent > end ? end - begin : extent;
}

void Check(int result, std::string_view what) {
  if (result != 0) {
    throw std::runtime_error(Line(what, SdlError()));
  }
}

}  // namespace

RectPainter::RectPainter(SDL_Renderer& canvas, const Colour& colour) : m_canvas(canvas), m_colour(colour) {
  int width = 0;
  int height = 0;
  Check(SDL_GetRendererOutputSize(&canvas, &width, &height), "SDL_GetRendererOutputSize error: ");
  m_canvasWidth = static_cast<float>(width);
  m_canvasHeight = static_cast<float>(height);
}

void RectPainter::Fill(const RectF& rect) {
  const bool touches = rect.x < m_canvasWidth && rect.y < m_canvasHeight && rect.x + rect.width > -kReach &&
                       rect.y + rect.height > -kReach;
  if (!touches) {
    return;
  }
  // Within these bounds every later conversion to whole pixels is exact; beyond them nothing can be seen.
  const float left = std::max(rect.x, -m_canvasWidth - 2 * kReach);
  const float top = std::max(rect.y, -m_canvasHeight - 2 * kReach);
  const float width = rect.width - (left - rect.x);
  const float height = rect.height - (top - rect.y);
  if (m_count == m_pending.size()) {
    Flush();
  }
  m_pending[m_count++] = {left, top, Bounded(left, width, 2 * m_canvasWidth + kReach),
                          Bounded(top, height, 2 * m_canvasHeight + kReach)};
}

void RectPainter::Flush() {
  if (m_count == 0) {
    return;
  }
  const int count = static_cast<int>(std::exchange(m_count, 0));
  Check(SDL_SetRenderDrawBlendMode(&m_canvas, SDL_BLENDMODE_NONE), "SDL_SetRenderDrawBlendMode error: ");
  Check(SDL_SetRenderDrawColor(&m_canvas, m_colour.r, m_colour.g, m_colour.b, m_colour.a),
        "SDL_SetRenderDrawColor error: ");
  Check(SDL_RenderFillRectsF(&m_canvas, m_pending.data(), count), "SDL_RenderFillRectsF error: ");
}

}  // namespace barcode
