#include "linear/itf.h"

#include "linear/itf_encoder.h"

namespace barcode {

std::optional<SymbolDrawing> ITF::Layout(const std::string& text, const DrawContext& context) const {
  return PlainDrawing(EncodeItf(text), ItfDisplayText(text), context);
}

}  // namespace barcode
