#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "gs1/databar_base.h"
#include "gs1/databar_expanded_encoder.h"

namespace barcode {

// GS1 DataBar Expanded and Expanded Stacked (ISO/IEC 24724): a GS1 element string.
class GS1DataBarExpanded : public DataBarBase {
 public:
  static constexpr std::string_view kTag = "[GS1 DataBar Expanded] ";

  using DataBarBase::DataBarBase;

  // "UNSTACKED" or "STACKED"; other words change nothing.
  void SetSymbolType(std::string_view keyword);
  void SetStacked(bool stacked) { m_stacked = stacked; }
  // Segment pairs per row of the stacked form; counts as 2 unless it is 1 to 10.
  void SetPairsPerRow(std::int32_t pairs) { m_pairsPerRow = pairs; }

  bool Draw(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) override;
  bool DrawSvg(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) override;

 private:
  std::size_t PairsPerRow() const;
  std::optional<DataBarDrawing> Drawing(const std::string& text, int x, int y, std::uint32_t width,
                                        std::uint32_t height);
  DataBarDrawing OneRowDrawing(const DataBarExpandedSymbol& symbol, int x, int y, std::uint32_t width);
  DataBarDrawing StackedDrawing(const DataBarExpandedSymbol& symbol, int x, int y, std::uint32_t width,
                                std::uint32_t height) const;

  bool m_stacked = false;
  std::int32_t m_pairsPerRow = 0;
};

}  // namespace barcode
