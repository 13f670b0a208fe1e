#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/barcode_base_1d.h"
#include "linear/code128_encoder.h"

namespace barcode {

// Code 128 (ISO/IEC 15417) with a fixed code set or, by default, the code sets that take the fewest values.
class Code128 : public BarcodeBase1D {
 public:
  explicit Code128(std::string_view format) : BarcodeBase1D(format, "[Code128] ") {}

  // By the keyword "A", "B", "C" or "AUTO"; any other one changes nothing.
  void SetCodeMode(std::string_view keyword);

 protected:
  std::optional<SymbolDrawing> Layout(const std::string& text, const DrawContext& context) const override;

 private:
  Code128Mode m_codeMode = Code128Mode::kAuto;
};

}  // namespace barcode
