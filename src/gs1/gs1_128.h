#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/barcode_base_1d.h"

namespace barcode {

// GS1-128: Code 128 with FNC1 and application identifiers, both marked in the text; and the payment form of
// convenience stores.
class GS1_128 : public BarcodeBase1D {
 public:
  explicit GS1_128(std::string_view format) : BarcodeBase1D(format, "[GS1-128] ") {}

  // Draws the payment form: 44 digits, or 43 without their check digit, with two lines of text.
  bool DrawConvenience(const std::string& text, std::uint32_t width, std::uint32_t height);

 protected:
  // Accepts every text.
  std::optional<SymbolDrawing> Layout(const std::string& text, const DrawContext& context) const override;
};

}  // namespace barcode
