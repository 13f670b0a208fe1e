#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/barcode_base_1d.h"

namespace barcode {

// Code 93 (AIM USS Code 93); the text as given is shown.
class Code93 : public BarcodeBase1D {
 public:
  explicit Code93(std::string_view format) : BarcodeBase1D(format, "[Code93] ") {}

 protected:
  std::optional<SymbolDrawing> Layout(const std::string& text, const DrawContext& context) const override;
};

}  // namespace barcode
