#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/barcode_base_1d.h"
#include "gs1/databar_expanded_encoder.h"

namespace barcode {

// GS1 DataBar Expanded and Expanded Stacked (ISO/IEC 24724): a GS1 element string.
class GS1DataBarExpanded : public BarcodeBase1D {
 public:
  explicit GS1DataBarExpanded(std::string_view format) : BarcodeBase1D(format, "[GS1 DataBar Expanded] ") {}

  // "UNSTACKED" or "STACKED"; other words change nothing.
  void SetSymbolType(std::string_view keyword);
  void SetStacked(bool stacked) { m_stacked = stacked; }
  // Segment pairs per row of the stacked form; counts as 2 unless it is 1 to 10.
  void SetPairsPerRow(std::int32_t pairs) { m_pairsPerRow = pairs; }

 protected:
  // Nothing for a text without any data: the draw is refused without a message.
  std::optional<SymbolDrawing> Layout(const std::string& text, const DrawContext& context) const override;

 private:
  std::size_t PairsPerRow() const;
  SymbolDrawing OneRowDrawing(const DataBarExpandedSymbol& symbol, const DrawContext& context) const;
  SymbolDrawing StackedDrawing(const DataBarExpandedSymbol& symbol, const DrawContext& context) const;

  bool m_stacked = false;
  std::int32_t m_pairsPerRow = 0;
};

}  // namespace barcode
