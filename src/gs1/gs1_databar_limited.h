#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/barcode_base_1d.h"

namespace barcode {

// GS1 DataBar Limited (ISO/IEC 24724): a GTIN that begins with 0 or 1, given without its check digit.
class GS1DataBarLimited : public BarcodeBase1D {
 public:
  explicit GS1DataBarLimited(std::string_view format) : BarcodeBase1D(format, "[GS1 DataBar Limited] ") {}

 protected:
  std::optional<SymbolDrawing> Layout(const std::string& text, const DrawContext& context) const override;
};

}  // namespace barcode
