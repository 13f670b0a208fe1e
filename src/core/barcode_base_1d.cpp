#include "core/barcode_base_1d.h"

#include <utility>

#include "core/font.h"
#include "core/rect_painter.h"
#include "core/text_painter.h"
#include "layout/linear_layout.h"

namespace barcode {
namespace {

void WriteText(SvgWriter& document, const TextRun& run, const Colour& colour) {
  if (!run.spacing) {
    const std::string_view anchor = run.anchor == TextAnchor::kStart ? "start" : "middle";
    document.SvgText(run.x, run.box.top, run.text, run.size, colour, anchor);
    return;
  }
  const std::string_view text = run.text;
  for (std::size_t i = 0; i < text.size(); ++i) {
    document.SvgText(static_cast<double>(run.spacing->Centre(i)), run.box.top, text.substr(i, 1), run.size,
                     colour, "middle");
  }
}

std::size_t CountElements(const Drawing& drawing) {
  std::size_t elements = drawing.bars.size();
  for (const TextRun& run : drawing.texts) {
    elements += 2 * (run.spacing ? run.text.size() : 1);
  }
  return elements;
}

}  // namespace

BarcodeBase1D::BarcodeBase1D(std::string_view format, std::string_view tag)
    : BarcodeBase(format), m_tag(tag) {
  InitTextRendering();
}

std::optional<Box> BarcodeBase1D::DrawnBox(const std::string& /*text*/, const Box& box) const {
  return box;
}

LinearOptions BarcodeBase1D::Options() const {
  return {.text = {.show = m_showText,
                   .fontScale = m_textFontScale,
                   .marginScale = m_textMarginScale,
                   .gap = m_textGap,
                   .evenSpacing = m_textEvenSpacing},
          .fitWidth = m_fitWidth,
          .pxAdjustBlack = m_pxAdjustBlack,
          .pxAdjustWhite = m_pxAdjustWhite};
}

SymbolDrawing BarcodeBase1D::PlainDrawing(const RunVector& pattern, std::string displayText,
                                          const DrawContext& context) const {
  return {LayoutLinear(pattern, std::move(displayText), context.box, Options(), context.grid), {}};
}

BarcodeBase1D::DrawKind BarcodeBase1D::KindOf(const std::string& text) const {
  DrawKind kind{.tag = m_tag};
  kind.layout = [this, &text](const DrawContext& context) { return Layout(text, context); };
  return kind;
}

bool BarcodeBase1D::Draw(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) {
  const std::optional<Box> box = DrawnBox(text, {x, y, width, height});
  return box && DrawInFormat(KindOf(text), *box);
}

bool BarcodeBase1D::DrawSvg(const std::string& text, int x, int y, std::uint32_t width,
                            std::uint32_t height) {
  const std::optional<Box> box = DrawnBox(text, {x, y, width, height});
  return box && DrawVector(KindOf(text), *box);
}

bool BarcodeBase1D::DrawInFormat(const DrawKind& kind, const Box& box) {
  return IsSvgOutput() ? DrawVector(kind, box) : DrawRaster(kind, box);
}

// With an unknown format the canvas of an earlier draw is drawn into; without one the draw fails.
bool BarcodeBase1D::DrawRaster(const DrawKind& kind, const Box& box) {
  return Reported(kind.tag, [&] {
    if (!PrepareCanvas(box.x, box.y, box.width, box.height) || m_canvas.Renderer() == nullptr) {
      return false;
    }
    m_canvas.Fill(m_backColor);
    std::optional<SymbolDrawing> symbol;
    {
      TextPainter texts(*m_canvas.Renderer(), m_foreColor, kind.fontError);
      const TextMeasure measure = [&texts](const std::string& text, int size) {
        return texts.Measure(text, size);
      };
      symbol = kind.layout({box, PixelGrid::kWhole, measure});
      if (!symbol) {
        return false;
      }
      PaintRaster(symbol->drawing, texts);
    }
    m_canvas.Present();
    m_barHeight = symbol->drawing.barHeight;
    if (symbol->report.empty()) {
      PrintSizeReport(box, symbol->drawing.drawnWidth);
    } else {
      PrintLine(symbol->report);
    }
    return true;
  });
}

void BarcodeBase1D::PaintRaster(const Drawing& drawing, TextPainter& texts) {
  if (m_canvas.IsVisible()) {
    RectPainter bars(*m_canvas.Renderer(), m_foreColor);
    for (const RectF& bar : drawing.bars) {
      bars.Fill(bar);
    }
    bars.Flush();
  }
  for (const TextRun& run : drawing.texts) {
    texts.Draw(run);
  }
}

// The earlier document stays until the new one is whole.
bool BarcodeBase1D::DrawVector(const DrawKind& kind, const Box& box) {
  return Reported(kind.tag, [&] {
    const TextMeasure unknown = [](const std::string&, int) { return std::nullopt; };
    std::optional<SymbolDrawing> symbol = kind.layout({box, PixelGrid::kFractional, unknown});
    if (!symbol) {
      return false;
    }
    SvgWriter document;
    document.BeginSvg(box.width, box.height);
    document.Reserve(CountElements(symbol->drawing) + 2);
    document.SvgRect(0, 0, box.width, box.height, m_backColor);
    for (const RectF& bar : symbol->drawing.bars) {
      document.SvgRect(bar.x, bar.y, bar.width, bar.height, m_foreColor);
    }
    for (const TextRun& run : symbol->drawing.texts) {
      WriteText(document, run, m_foreColor);
    }
    document.EndSvg();
    if (!symbol->report.empty()) {
      symbol->report += '\n';
    }
    m_svgStream = std::move(document);
    m_barHeight = symbol->drawing.barHeight;
    Print(symbol->report);
    return true;
  });
}

void BarcodeBase1D::PrintSizeReport(const Box& box, float drawnWidth) const {
  std::string report = Line("指定サイズ: width=", box.width, ", height=", box.height,
                            "\n実際の描画サイズ: width=", drawnWidth);
  if (const SDL_Surface* const surface = m_canvas.Surface()) {
    AppendPieces(report, "\nサーフェスサイズ: width=", surface->w, ", height=", surface->h);
  }
  PrintLine(report);
}

}  // namespace barcode
