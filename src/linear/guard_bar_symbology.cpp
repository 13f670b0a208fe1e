#include "linear/guard_bar_symbology.h"

namespace barcode {

std::optional<SymbolDrawing> GuardBarSymbology::Layout(const std::string& text,
                                                       const DrawContext& context) const {
  const std::string code = m_symbology.complete(text);
  const RunVector pattern = m_symbology.encode(code);
  if (!m_extendedGuard) {
    return PlainDrawing(pattern, code, context);
  }
  return SymbolDrawing{LayoutGuardBarSymbol(m_symbology.style, pattern, code, context.box, Options(),
                                            context.grid, context.measure)};
}

}  // namespace barcode
