#include <cstddef>
#include <string>
#include <utility>

#include "base/gs1_check_digit.h"
#include "base/line.h"
#include "label/symbol_families.h"
#include "linear/ean_upc_encoder.h"

namespace barcode::label {
namespace {

Symbol RetailSymbolOf(RunVector pattern, const GuardBarStyle& style, std::string code) {
  Symbol symbol;
  symbol.modules = LinearSymbol{.pattern = std::move(pattern), .guard = &style};
  symbol.lines.push_back(code);
  symbol.text = std::move(code);
  return symbol;
}

// The first of the lengths is one digit less than the second, which has the check digit.
void RequireDigitsWithOrWithoutCheck(const SymbolText& text, std::string_view name, std::size_t digits) {
  text.RequireDigits(name);
  const std::size_t size = text.Bytes().size();
  const auto message = [&](std::string_view remedy) {
    return Line(name, " takes ", digits - 1, " digits, or ", digits,
                " with the check digit, and the text has ", size, remedy);
  };
  if (size > digits) {
    text.RefuseLength(message("; shorten it."));
  }
  if (size < digits - 1) {
    text.Refuse(message("; add what is missing."));
  }
  if (size == digits) {
    text.RequireCheckDigit(Gs1CheckDigit(text.Bytes().substr(0, digits - 1)));
  }
}

}  // namespace

Symbol MakeJan13(const SymbolText& text) {
  RequireDigitsWithOrWithoutCheck(text, "JAN-13", 13);
  return RetailSymbolOf(EncodeJan13(text.Bytes()), kJan13Style, CompleteJan13(text.Bytes()));
}

Symbol MakeJan8(const SymbolText& text) {
  RequireDigitsWithOrWithoutCheck(text, "JAN-8", 8);
  return RetailSymbolOf(EncodeJan8(text.Bytes()), kJan8Style, CompleteJan8(text.Bytes()));
}

Symbol MakeUpcA(const SymbolText& text) {
  RequireDigitsWithOrWithoutCheck(text, "UPC-A", 12);
  return RetailSymbolOf(EncodeUpcA(text.Bytes()), kUpcAStyle, CompleteUpcA(text.Bytes()));
}

Symbol MakeUpcE(const SymbolText& text) {
  constexpr std::string_view kLengths =
      "UPC-E takes 6 digits, 7 with the number system in front, or 8 with the check digit too, and the text "
      "has ";
  const std::string_view bytes = text.Bytes();
  text.RequireDigits("UPC-E");
  if (bytes.size() > 8) {
    text.RefuseLength(Line(kLengths, bytes.size(), "; shorten it."));
  }
  if (bytes.size() < 6) {
    text.Refuse(Line(kLengths, bytes.size(), "; add what is missing."));
  }
  if (bytes.size() > 6 && bytes.front() > '1') {
    text.Refuse(Line("The number system of UPC-E is 0 or 1, and the text begins with ", bytes.front(),
                     "; correct it or use UPC-A."));
  }
  if (bytes.size() == 8) {
    text.RequireCheckDigit(Gs1CheckDigit(ExpandUpcE(bytes.substr(0, 7))));
  }
  const std::string code = CompleteUpcE(bytes);
  return RetailSymbolOf(EncodeUpcE(code, UpcEParityRule::kStandard), kUpcEStyle, code);
}

}  // namespace barcode::label
