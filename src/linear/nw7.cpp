#include "linear/nw7.h"

#include "linear/nw7_encoder.h"

namespace barcode {

std::optional<SymbolDrawing> NW7::Layout(const std::string& text, const DrawContext& context) const {
  return PlainDrawing(EncodeNw7(text), Nw7DisplayText(text, m_showStartStop), context);
}

}  // namespace barcode
