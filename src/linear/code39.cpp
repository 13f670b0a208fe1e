#include "linear/code39.h"

#include "linear/code39_encoder.h"

namespace barcode {

std::optional<SymbolDrawing> Code39::Layout(const std::string& text, const DrawContext& context) const {
  return PlainDrawing(EncodeCode39(text), Code39DisplayText(text, m_showStartStop), context);
}

}  // namespace barcode
