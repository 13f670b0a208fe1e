#include "gs1/payment_form_layout.h"

#include <algorithm>
#include <array>
#include <string>

#include "base/numeric.h"
#include "gs1/gs1_128_encoder.h"
#include "gs1/gs1_markers.h"
#include "gs1/payment_form.h"
#include "layout/linear_layout.h"
#include "layout/text_layout.h"
#include "text/text_bands.h"

namespace barcode {
namespace {

constexpr float kMinBarHeight = 10.0F;

}  // namespace

Drawing LayoutPaymentForm(std::string_view text, const Box& box, const LinearOptions& options, PixelGrid grid,
                          const TextMeasure& measure) {
  const std::string digits = NormalizePaymentCode(text);
  const auto measureSample = [&](int size) { return measure(std::string(kPaymentSampleLine), size); };
  const PaymentTextSize sample =
      FitPaymentText(box.width, TextSize(box.height, options.text.fontScale), measureSample);
  Drawing drawing;
  drawing.barHeight = std::max(
      static_cast<float>(std::int64_t{box.height} - std::int64_t{2} * sample.lineHeight), kMinBarHeight);

  const RunVector pattern = EncodeGs1_128(std::string(kFnc1Marker) + digits);
  const std::array<std::string, 2> lines = PaymentFormLines(digits);
  const auto line = measure(lines[0], sample.fontSize);
  const int lineHeight = line ? line->height : sample.fontSize;

  const ElementScale scale = ScaleFor(static_cast<float>(box.width), TotalModules(pattern), options);
  drawing.drawnWidth =
      AddBars(drawing, pattern, scale,
              {static_cast<float>(box.x), static_cast<float>(box.y), 0.0F, drawing.barHeight});
  if (!options.text.show) {
    return drawing;
  }
  // Lines that are spread evenly run across the bars, others are centred in the box.
  const std::int64_t lineWidth =
      options.text.evenSpacing ? std::int64_t{TruncToInt(drawing.drawnWidth)} : std::int64_t{box.width};
  std::int64_t top = std::int64_t{box.y} + TruncToInt(drawing.barHeight);
  for (const std::string& digitsLine : lines) {
    const TextBox room{.top = static_cast<double>(top)};
    drawing.texts.push_back(
        LayoutTextLine(digitsLine, box.x, lineWidth, sample.fontSize, room, options.text, grid));
    top += lineHeight;
  }
  return drawing;
}

}  // namespace barcode
