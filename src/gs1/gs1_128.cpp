#include "gs1/gs1_128.h"

#include <algorithm>
#include <array>
#include <limits>

#include "base/numeric.h"
#include "core/diagnostics.h"
#include "core/font.h"
#include "core/rect_painter.h"
#include "core/text_painter.h"
#include "gs1/payment_form.h"
#include "text/text_bands.h"
#include "text/text_spacing.h"

namespace barcode {
namespace {

constexpr std::string_view kConvenienceTag = "[GS1-128 Convenience] ";
constexpr float kMinConvenienceBarHeight = 10.0F;

}  // namespace

struct GS1_128::PaymentForm {
  RunVector pattern;
  std::array<std::string, 2> lines;
  int fontSize = 0;
  std::int64_t lineTop = 0;
  std::int64_t lineHeight = 0;

  std::int64_t LineTop(std::size_t line) const {
    return lineTop + static_cast<std::int64_t>(line) * lineHeight;
  }
};

bool GS1_128::DrawConvenience(const std::string& text, std::uint32_t width, std::uint32_t height) {
  return Reported(kConvenienceTag, [&] {
    return IsSvgOutput() ? DrawConvenienceSvg(text, width, height)
                         : DrawConvenienceRaster(text, width, height);
  });
}

GS1_128::PaymentForm GS1_128::LayoutConvenience(std::string_view text, std::uint32_t width,
                                                std::uint32_t height) {
  const std::string digits = NormalizePaymentCode(text);
  const auto measureSample = [](int size) { return MeasureText(std::string(kPaymentSampleLine), size); };
  const PaymentTextSize sample = FitPaymentText(width, TextSize(height, m_textFontScale), measureSample);
  m_barHeight = std::max(static_cast<float>(std::int64_t{height} - std::int64_t{2} * sample.lineHeight),
                         kMinConvenienceBarHeight);

  PaymentForm form{.pattern = Encode(std::string(kFnc1Marker) + digits),
                   .lines = PaymentFormLines(digits),
                   .fontSize = sample.fontSize,
                   .lineTop = TruncToInt(m_barHeight),
                   .lineHeight = sample.fontSize};
  if (const auto line = MeasureText(form.lines[0], form.fontSize)) {
    form.lineHeight = line->height;
  }
  return form;
}

bool GS1_128::DrawConvenienceRaster(std::string_view text, std::uint32_t width, std::uint32_t height) {
  if (!HasPreparedCanvas(0, 0, width, height)) {
    return false;
  }
  FillBackground();
  const PaymentForm form = LayoutConvenience(text, width, height);
  RectPainter painter(*m_canvas, m_foreColor);
  const float drawnWidth = LayoutBars(form.pattern, ScaleFor(width, TotalModules(form.pattern)), 0.0F, 0.0F,
                                      m_barHeight, [&](const RectF& bar) { painter.Fill(bar); });
  painter.Flush();
  DrawConvenienceText(form, ConvenienceLineWidth(drawnWidth, width));
  PresentCanvas();
  PrintSizeReport(width, height, drawnWidth);
  return true;
}

void GS1_128::DrawConvenienceText(const PaymentForm& form, int lineWidth) {
  if (!m_showText || !IsTextRenderingReady()) {
    return;
  }
  TextPainter painter(*m_canvas, form.fontSize, m_foreColor);
  if (!painter.IsOpen()) {
    ErrorLine("OpenEmbeddedRobotoFont error: ", SDL_GetError());
    return;
  }
  for (std::size_t i = 0; i < form.lines.size(); ++i) {
    // The lines stand under the bars whatever the height of the box: they may run out of it.
    const TextBox box{.top = form.LineTop(i), .bottom = std::numeric_limits<std::int64_t>::max()};
    DrawTextLine(painter, form.lines[i], 0, lineWidth, form.fontSize, box);
  }
}

bool GS1_128::DrawConvenienceSvg(std::string_view text, std::uint32_t width, std::uint32_t height) {
  const PaymentForm form = LayoutConvenience(text, width, height);
  BeginSvgDocument(width, height);
  const float drawnWidth =
      LayoutBars(form.pattern, ScaleFor(width, TotalModules(form.pattern)), 0.0F, 0.0F, m_barHeight,
                 [&](const RectF& bar) { SvgRect(bar.x, bar.y, bar.width, bar.height, m_foreColor); });
  if (m_showText) {
    const int lineWidth = ConvenienceLineWidth(drawnWidth, width);
    for (std::size_t i = 0; i < form.lines.size(); ++i) {
      SvgTextLine(form.lines[i], 0, lineWidth, form.fontSize, static_cast<double>(form.LineTop(i)));
    }
  }
  EndSvg();
  return true;
}

int GS1_128::ConvenienceLineWidth(float drawnWidth, std::uint32_t width) const {
  return m_textEvenSpacing ? TruncToInt(drawnWidth) : ClampToInt(width);
}

}  // namespace barcode
