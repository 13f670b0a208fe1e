#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/barcode_base_1d.h"

namespace barcode {

// NEC 2 of 5; the text as given is shown.
class NEC2of5 : public BarcodeBase1D {
 public:
  explicit NEC2of5(std::string_view format) : BarcodeBase1D(format, "[NEC2of5] ") {}

 protected:
  std::optional<SymbolDrawing> Layout(const std::string& text, const DrawContext& context) const override;
};

}  // namespace barcode
