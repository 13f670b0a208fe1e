#pragma once

#include <string>
#include <string_view>

#include "gs1/databar_14_diagnostics.h"
#include "gs1/databar_14_encoder.h"
#include "gs1/databar_base.h"

namespace barcode {

// GS1 DataBar Omnidirectional, Stacked and Stacked Omnidirectional (ISO/IEC 24724): a GTIN given without its
// check digit.
class GS1DataBar14 : public DataBarBase {
 public:
  static constexpr std::string_view kTag = "[GS1 DataBar] ";

  using DataBarBase::DataBarBase;

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

  bool Draw(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) override;
  bool DrawSvg(const std::string& text, int x, int y, std::uint32_t width, std::uint32_t height) override;

 private:
  // Encodes and writes the encoder's diagnostics. Throws on bad text.
  DataBar14Symbol EncodeSymbol(const std::string& text) const;
  LinearSymbol OneRowSymbol(const std::string& text) const;
  DataBarDrawing StackedDrawing(const std::string& text, const Box& box, bool report) const;

  DataBar14Type m_symbolType = DataBar14Type::kOmnidirectional;
};

}  // namespace barcode
