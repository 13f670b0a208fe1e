#include "core/barcode_base_1d.h"

#include <algorithm>

#include "base/number_format.h"
#include "base/numeric.h"
#include "core/diagnostics.h"
#include "core/font.h"
#include "core/rect_painter.h"
#include "core/text_painter.h"
#include "text/text_bands.h"
#include "text/text_spacing.h"

namespace barcode {

BarcodeBase1D::BarcodeBase1D(std::string_view format) : BarcodeBase(format) {
  InitTextRendering();
}

void BarcodeBase1D::LayoutBarHeight(std::uint32_t /*width*/, std::uint32_t height, int lines) {
  m_barHeight = static_cast<float>(height);
  if (m_showText) {
    constexpr int kMinGap = 2;
    const std::int64_t textRows = lines == 1 ? 1 : std::int64_t{lines} + 2;
    const std::int64_t gap = std::max(ScaledTextGap(height, kTextGapBands, m_textGap), kMinGap);
    m_barHeight = static_cast<float>(height - textRows * TextSize(height, m_textFontScale) - gap);
  }
  m_barHeight = std::max(m_barHeight, 1.0F);
}

void BarcodeBase1D::DrawText(std::string_view text, int x, int y, int barsWidth, std::uint32_t height) {
  if (!IsTextRenderingReady() || !m_showText || text.empty() || m_canvas == nullptr) {
    return;
  }
  const int size = TextSize(height, m_textFontScale);
  TextPainter painter(*m_canvas, size, m_foreColor);
  if (!painter.IsOpen()) {
    ErrorLine("TTF_OpenFont error: ", SDL_GetError());
    return;
  }
  const TextBox box{.top = std::int64_t{y} + height - size, .bottom = std::int64_t{y} + height};
  DrawTextLine(painter, text, x, barsWidth, size, box);
}

void BarcodeBase1D::DrawTextLine(TextPainter& painter, std::string_view text, int x, int width, int size,
                                 const TextBox& box) const {
  if (m_textEvenSpacing) {
    painter.DrawSpaced(text, EvenSpacing::Across(x, width, text.size(), size, m_textMarginScale), box);
  } else {
    painter.DrawCentred(text, x, width, box);
  }
}

void BarcodeBase1D::DrawSvgText(std::string_view text, int x, int y, int barsWidth, std::uint32_t height) {
  if (!m_showText || text.empty()) {
    return;
  }
  const int size = TextSize(height, m_textFontScale);
  SvgTextLine(text, x, barsWidth, size, static_cast<double>(std::int64_t{y} + height - size));
}

void BarcodeBase1D::SvgTextLine(std::string_view text, int x, int width, int size, double top) {
  if (!m_textEvenSpacing) {
    const std::int64_t centre = std::int64_t{x} + width / 2;
    SvgText(static_cast<double>(centre), top, text, size, m_foreColor, "middle");
    return;
  }
  const auto spacing = EvenSpacing::Across(x, width, text.size(), size, m_textMarginScale);
  for (std::size_t i = 0; i < text.size(); ++i) {
    SvgText(static_cast<double>(spacing.Centre(i)), top, text.substr(i, 1), size, m_foreColor, "middle");
  }
}

bool BarcodeBase1D::DrawLinear(std::string_view tag, int x, int y, std::uint32_t width, std::uint32_t height,
                               const MakeSymbol& makeSymbol) {
  return Reported(tag, [&] {
    if (!HasPreparedCanvas(x, y, width, height)) {
      return false;
    }
    LayoutBarHeight(width, height, 1);
    FillBackground();
    const LinearSymbol symbol = makeSymbol();
    RectPainter painter(*m_canvas, m_foreColor);
    const float drawnWidth =
        LayoutBars(symbol.pattern, ScaleFor(width, TotalModules(symbol.pattern)), static_cast<float>(x),
                   static_cast<float>(y), m_barHeight, [&](const RectF& bar) { painter.Fill(bar); });
    painter.Flush();
    DrawText(symbol.displayText, x, y, TruncToInt(drawnWidth), height);
    PresentCanvas();
    PrintSizeReport(width, height, drawnWidth);
    return true;
  });
}

bool BarcodeBase1D::DrawLinearSvg(std::string_view tag, int x, int y, std::uint32_t width,
                                  std::uint32_t height, const MakeSymbol& makeSymbol) {
  return Reported(tag, [&] {
    LayoutBarHeight(width, height, 1);
    const LinearSymbol symbol = makeSymbol();
    BeginSvgDocument(width, height);
    const float drawnWidth =
        LayoutBars(symbol.pattern, ScaleFor(width, TotalModules(symbol.pattern)), static_cast<float>(x),
                   static_cast<float>(y), m_barHeight,
                   [&](const RectF& bar) { SvgRect(bar.x, bar.y, bar.width, bar.height, m_foreColor); });
    DrawSvgText(symbol.displayText, x, y, TruncToInt(drawnWidth), height);
    EndSvg();
    return true;
  });
}

bool BarcodeBase1D::HasPreparedCanvas(int x, int y, std::uint32_t width, std::uint32_t height) {
  return PrepareCanvas(x, y, width, height) && m_canvas != nullptr;
}

void BarcodeBase1D::BeginSvgDocument(std::uint32_t width, std::uint32_t height) {
  BeginSvg(width, height);
  SvgRect(0, 0, width, height, m_backColor);
}

ElementScale BarcodeBase1D::ScaleFor(std::uint32_t width, std::uint64_t modules) const {
  return {ModuleWidth(static_cast<float>(width), modules, m_fitWidth), m_pxAdjustBlack, m_pxAdjustWhite};
}

void BarcodeBase1D::PrintSizeReport(std::uint32_t width, std::uint32_t height, float drawnWidth) const {
  std::string report = "指定サイズ: width=";
  AppendInt(report, width);
  report += ", height=";
  AppendInt(report, height);
  report += "\n実際の描画サイズ: width=";
  AppendGeneral(report, drawnWidth);
  if (m_surface != nullptr) {
    report += "\nサーフェスサイズ: width=";
    AppendInt(report, m_surface->w);
    report += ", height=";
    AppendInt(report, m_surface->h);
  }
  PrintLine(report);
}

}  // namespace barcode
