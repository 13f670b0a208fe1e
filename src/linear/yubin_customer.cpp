#include "linear/yubin_customer.h"

#include "base/line.h"
#include "layout/four_state_layout.h"
#include "linear/yubin_customer_encoder.h"

namespace barcode {

std::optional<Box> YubinCustomer::DrawnBox(const std::string& text, const Box& box) const {
  // Negative heights of a host arrive with the sign bit set.
  if (text.empty() || static_cast<std::int32_t>(box.height) < 1) {
    return std::nullopt;
  }
  const int width = FourStateImageWidth(static_cast<float>(box.height));
  return Box{box.x, box.y, static_cast<std::uint32_t>(width), box.height};
}

std::optional<SymbolDrawing> YubinCustomer::Layout(const std::string& text,
                                                   const DrawContext& context) const {
  const FourStateSymbol symbol = EncodeYubinCustomer(text);
  return SymbolDrawing{
      LayoutFourState(symbol.bars, context.box, Options().pxAdjustBlack),
      Line("YubinCustomer: ", text, " (h=", context.box.height, ", CD=", symbol.checkValue, ")")};
}

}  // namespace barcode
