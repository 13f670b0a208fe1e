#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/barcode_base_1d.h"

namespace barcode {

// Interleaved 2 of 5 (ISO/IEC 16390).
class ITF : public BarcodeBase1D {
 public:
  explicit ITF(std::string_view format) : BarcodeBase1D(format, "[ITF] ") {}

 protected:
  std::optional<SymbolDrawing> Layout(const std::string& text, const DrawContext& context) const override;
};

}  // namespace barcode
