#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/run_vector.h"
#include "core/barcode_base_1d.h"
#include "layout/guard_bar_layout.h"
#include "linear/ean_upc_encoder.h"

namespace barcode {

// What distinguishes the EAN and UPC symbologies.
struct RetailSymbology {
  std::string_view tag;
  const GuardBarStyle& style;
  std::string (*complete)(std::string_view text);  // the full code, which is also the text
  RunVector (*encode)(std::string_view code);
};

// EAN and UPC symbols: the extended layout, with long guard bars and the digits grouped between them, or the
// plain linear one.
class GuardBarSymbology : public BarcodeBase1D {
 public:
  void SetExtendedGuard(bool extended) { m_extendedGuard = extended; }

 protected:
  GuardBarSymbology(std::string_view format, const RetailSymbology& symbology)
      : BarcodeBase1D(format, symbology.tag), m_symbology(symbology) {}

  std::optional<SymbolDrawing> Layout(const std::string& text, const DrawContext& context) const override;

 private:
  RetailSymbology m_symbology;
  bool m_extendedGuard = true;
};

}  // namespace barcode
