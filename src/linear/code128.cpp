#include "linear/code128.h"

namespace barcode {

void Code128::SetCodeMode(std::string_view keyword) {
  m_codeMode = FindKeyword(kCode128ModeKeywords, keyword).value_or(m_codeMode);
}

std::optional<SymbolDrawing> Code128::Layout(const std::string& text, const DrawContext& context) const {
  return PlainDrawing(EncodeCode128(text, m_codeMode), text, context);
}

}  // namespace barcode
