#include "gs1/gs1_128.h"

#include "core/font.h"
#include "gs1/gs1_128_encoder.h"
#include "gs1/payment_form_layout.h"

namespace barcode {

std::optional<SymbolDrawing> GS1_128::Layout(const std::string& text, const DrawContext& context) const {
  return PlainDrawing(EncodeGs1_128(text), Gs1_128DisplayText(text), context);
}

// The form is laid out by the size of its text in the embedded font, in SVG too.
bool GS1_128::DrawConvenience(const std::string& text, std::uint32_t width, std::uint32_t height) {
  const DrawKind form{
      .tag = "[GS1-128 Convenience] ",
      .fontError = "OpenEmbeddedRobotoFont error: ",
      .layout = [&](const DrawContext& context) -> std::optional<SymbolDrawing> {
        return SymbolDrawing{LayoutPaymentForm(text, context.box, Options(), context.grid, MeasureText), {}};
      }};
  return DrawInFormat(form, {0, 0, width, height});
}

}  // namespace barcode
