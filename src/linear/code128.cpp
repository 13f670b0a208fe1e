#include "linear/code128.h"

#include "base/keywords.h"

namespace barcode {
namespace {

constexpr Keywords<Code128Mode, 4> kModes = {
    {{"A", Code128Mode::kA}, {"B", Code128Mode::kB}, {"C", Code128Mode::kC}, {"AUTO", Code128Mode::kAuto}}};

}  // namespace

void Code128::SetCodeMode(std::string_view keyword) {
  m_codeMode = FindKeyword(kModes, keyword).value_or(m_codeMode);
}

std::optional<SymbolDrawing> Code128::Layout(const std::string& text, const DrawContext& context) const {
  return PlainDrawing(EncodeCode128(text, m_codeMode), text, context);
}

}  // namespace barcode
