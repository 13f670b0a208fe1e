#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/barcode_base_1d.h"

namespace barcode {

// Matrix 2 of 5; the text as given is shown.
class Matrix2of5 : public BarcodeBase1D {
 public:
  explicit Matrix2of5(std::string_view format) : BarcodeBase1D(format, "[Matrix2of5] ") {}

 protected:
  std::optional<SymbolDrawing> Layout(const std::string& text, const DrawContext& context) const override;
};

}  // namespace barcode
