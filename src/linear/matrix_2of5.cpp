#include "linear/matrix_2of5.h"

#include "linear/two_of_five_encoder.h"

namespace barcode {

std::optional<SymbolDrawing> Matrix2of5::Layout(const std::string& text, const DrawContext& context) const {
  return PlainDrawing(EncodeMatrix2of5(text), text, context);
}

}  // namespace barcode
