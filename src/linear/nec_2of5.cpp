#include "linear/nec_2of5.h"

#include "linear/two_of_five_encoder.h"

namespace barcode {

std::optional<SymbolDrawing> NEC2of5::Layout(const std::string& text, const DrawContext& context) const {
  return PlainDrawing(EncodeNec2of5(text), text, context);
}

}  // namespace barcode
