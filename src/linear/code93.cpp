#include "linear/code93.h"

#include "linear/code93_encoder.h"

namespace barcode {

std::optional<SymbolDrawing> Code93::Layout(const std::string& text, const DrawContext& context) const {
  return PlainDrawing(EncodeCode93(text), text, context);
}

}  // namespace barcode
