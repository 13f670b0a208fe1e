#include "linear/guard_bar_symbology.h"

#include <limits>
#include <utility>

#include "base/numeric.h"
#include "core/diagnostics.h"
#include "core/font.h"
#include "core/rect_painter.h"
#include "core/text_painter.h"

namespace barcode {

bool GuardBarSymbology::Draw(const std::string& text, int x, int y, std::uint32_t width,
                             std::uint32_t height) {
  if (IsSvgOutput()) {
    return DrawSvg(text, x, y, width, height);
  }
  if (!m_extendedGuard) {
    return DrawLinear(m_tag, x, y, width, height, [&] { return Symbol(text); });
  }
  return Reported(m_tag, [&] { return DrawExtended(text, x, y, width, height); });
}

bool GuardBarSymbology::DrawSvg(const std::string& text, int x, int y, std::uint32_t width,
                                std::uint32_t height) {
  if (!m_extendedGuard) {
    return DrawLinearSvg(m_tag, x, y, width, height, [&] { return Symbol(text); });
  }
  return Reported(m_tag, [&] { return DrawExtendedSvg(text, x, y, width, height); });
}

LinearSymbol GuardBarSymbology::Symbol(const std::string& text) const {
  std::string code = CompleteCode(text);
  return {Encode(code), std::move(code)};
}

GuardBarBox GuardBarSymbology::Box(int x, int y, std::uint32_t width, std::uint32_t height) const {
  return {.x = x,
          .y = y,
          .width = width,
          .height = height,
          .barHeight = m_barHeight,
          .showText = m_showText,
          .textEvenSpacing = m_textEvenSpacing,
          .textFontScale = m_textFontScale,
          .textGap = m_textGap,
          .fitWidth = m_fitWidth,
          .pxAdjustBlack = m_pxAdjustBlack,
          .pxAdjustWhite = m_pxAdjustWhite};
}

bool GuardBarSymbology::DrawExtended(const std::string& text, int x, int y, std::uint32_t width,
                                     std::uint32_t height) {
  if (!HasPreparedCanvas(x, y, width, height)) {
    return false;
  }
  LayoutBarHeight(width, height, 1);
  FillBackground();
  const LinearSymbol symbol = Symbol(text);
  const GuardBarBox box = Box(x, y, width, height);
  const GuardBars bars = LayoutGuardBars(m_style, symbol.pattern, box, PixelGrid::kRaster);
  RectPainter painter(*m_canvas, m_foreColor);
  for (const RectF& bar : bars.bars) {
    painter.Fill(bar);
  }
  painter.Flush();
  DrawDigits(bars, symbol.displayText, box);
  PresentCanvas();
  PrintSizeReport(width, height, bars.end - static_cast<float>(x));
  return true;
}

bool GuardBarSymbology::DrawExtendedSvg(const std::string& text, int x, int y, std::uint32_t width,
                                        std::uint32_t height) {
  LayoutBarHeight(width, height, 1);
  const LinearSymbol symbol = Symbol(text);
  BeginSvgDocument(width, height);
  const GuardBarBox box = Box(x, y, width, height);
  const GuardBars bars = LayoutGuardBars(m_style, symbol.pattern, box, PixelGrid::kSvg);
  for (const RectF& bar : bars.bars) {
    SvgRect(bar.x, bar.y, bar.width, bar.height, m_foreColor);
  }
  DrawSvgDigits(bars, symbol.displayText, box);
  EndSvg();
  return true;
}

void GuardBarSymbology::DrawDigits(const GuardBars& bars, std::string_view code, const GuardBarBox& box) {
  if (!m_showText || !IsTextRenderingReady()) {
    return;
  }
  const int size = GuardTextSize(box, PixelGrid::kRaster);
  TextPainter painter(*m_canvas, size, m_foreColor);
  if (!painter.IsOpen()) {
    ErrorLine("TTF_OpenFont error: ", SDL_GetError());
    return;
  }
  int digitWidth = 0;
  int digitHeight = 0;
  if (!painter.Measure("0", digitWidth, digitHeight)) {
    digitWidth = size / 2;
  }
  // The digits stand close under the bars, also where the box ends before they do.
  const TextBox line{.top = TruncToInt(GuardTextTop(m_style, box, PixelGrid::kRaster)),
                     .bottom = std::numeric_limits<std::int64_t>::max()};
  for (const AnchoredText& text : LayoutGuardText(m_style, bars, code, box, digitWidth, PixelGrid::kRaster)) {
    const int x = TruncToInt(text.x);
    if (text.anchor == TextAnchor::kStart) {
      painter.DrawAt(text.text, x, line);
    } else {
      painter.DrawAround(text.text, x, line);
    }
  }
}

void GuardBarSymbology::DrawSvgDigits(const GuardBars& bars, std::string_view code, const GuardBarBox& box) {
  if (!m_showText) {
    return;
  }
  const int size = GuardTextSize(box, PixelGrid::kSvg);
  const double top = GuardTextTop(m_style, box, PixelGrid::kSvg);
  for (const AnchoredText& text :
       LayoutGuardText(m_style, bars, code, box, SvgDigitWidth(size), PixelGrid::kSvg)) {
    SvgText(text.x, top, text.text, size, m_foreColor,
            text.anchor == TextAnchor::kStart ? "start" : "middle");
  }
}

}  // namespace barcode
