#pragma once

#include <optional>
#include <string>

#include "base/keywords.h"
#include "label/symbol.h"
#include "label/symbol_text.h"

// The symbols of EncodeSymbol (symbol.h), one function for each type. The text is not empty and not longer
// than kMostTextBytes. They throw LabelError, and what their encoders throw.
namespace barcode::label {

// symbol_linear.cpp
Symbol MakeCode39(const SymbolText& text, const Request& request);
Symbol MakeCode93(const SymbolText& text);
Symbol MakeCode128(const SymbolText& text, const Request& request);
Symbol MakeNw7(const SymbolText& text, const Request& request);
Symbol MakeMatrix2of5(const SymbolText& text);
Symbol MakeNec2of5(const SymbolText& text);
Symbol MakeItf(const SymbolText& text);
Symbol MakeYubinCustomer(const SymbolText& text);

// symbol_retail.cpp
Symbol MakeJan13(const SymbolText& text);
Symbol MakeJan8(const SymbolText& text);
Symbol MakeUpcA(const SymbolText& text);
Symbol MakeUpcE(const SymbolText& text);

// symbol_gs1.cpp
Symbol MakeGs1_128(const SymbolText& text, const Request& request);
Symbol MakeDataBar14(const SymbolText& text, const Request& request);
Symbol MakeDataBarLimited(const SymbolText& text);
Symbol MakeDataBarExpanded(const SymbolText& text, const Request& request);

// symbol_matrix.cpp
Symbol MakeQr(const SymbolText& text, const Request& request);
Symbol MakeDataMatrix(const SymbolText& text, const Request& request);
Symbol MakePdf417(const SymbolText& text, const Request& request);

// The value of a word of a request, or `otherwise` where none was given.
template <class Value, std::size_t Size>
Value KeywordOr(const Keywords<Value, Size>& keywords, const std::optional<std::string>& word,
                Value otherwise) {
  return word ? FindKeyword(keywords, *word).value_or(otherwise) : otherwise;
}

}  // namespace barcode::label
