#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/barcode_base_1d.h"

namespace barcode {

// NW-7, also known as Codabar (EN 798).
class NW7 : public BarcodeBase1D {
 public:
  explicit NW7(std::string_view format) : BarcodeBase1D(format, "[NW7] ") {}

  // Typed start and stop characters in the human-readable text; the bars always have them.
  void SetShowStartStop(bool show) { m_showStartStop = show; }

 protected:
  std::optional<SymbolDrawing> Layout(const std::string& text, const DrawContext& context) const override;

 private:
  bool m_showStartStop = true;
};

}  // namespace barcode
