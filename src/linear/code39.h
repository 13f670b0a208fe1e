#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/barcode_base_1d.h"

namespace barcode {

// Code 39 (ISO/IEC 16388).
class Code39 : public BarcodeBase1D {
 public:
  explicit Code39(std::string_view format) : BarcodeBase1D(format, "[Code39] ") {}

  // The "*" frame in the human-readable text; the bars always have it.
  void SetShowStartStop(bool show) { m_showStartStop = show; }

 protected:
  std::optional<SymbolDrawing> Layout(const std::string& text, const DrawContext& context) const override;

 private:
  bool m_showStartStop = true;
};

}  // namespace barcode
