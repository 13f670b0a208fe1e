#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/barcode_base_1d.h"
#include "gs1/databar_14_encoder.h"

namespace barcode {

// GS1 DataBar Omnidirectional, Stacked and Stacked Omnidirectional (ISO/IEC 24724): a GTIN given without its
// check digit.
class GS1DataBar14 : public BarcodeBase1D {
 public:
  explicit GS1DataBar14(std::string_view format) : BarcodeBase1D(format, kTag) {}

  // "OMNIDIRECTIONAL", "STACKED" or "STACKED_OMNIDIRECTIONAL"; other words change nothing.
  void SetSymbolType(std::string_view keyword);
  // The keyword of the current form, a constant.
  const char* SymbolType() const;

  // Encodes without drawing and writes the encoder's diagnostics. False, with a line on standard error, for
  // bad text.
  bool Encode(const std::string& text) const;

  // The check digit of exactly 13 digits as a text of one character. Throws std::invalid_argument.
  static std::string CalculateCheckDigit(std::string_view digits) {
    return CalculateDataBar14CheckDigit(digits);
  }

 protected:
  std::optional<SymbolDrawing> Layout(const std::string& text, const DrawContext& context) const override;

 private:
  static constexpr std::string_view kTag = "[GS1 DataBar] ";

  // Encodes and writes the encoder's diagnostics. Throws on bad text.
  DataBar14Symbol EncodeSymbol(const std::string& text) const;
  SymbolDrawing StackedDrawing(const DataBar14Symbol& symbol, const DrawContext& context) const;

  DataBar14Type m_symbolType = DataBar14Type::kOmnidirectional;
};

}  // namespace barcode
