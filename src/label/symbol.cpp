#include "label/symbol.h"

#include <exception>
#include <new>

#include "base/line.h"
#include "label/symbol_families.h"
#include "label/symbol_text.h"

namespace barcode::label {
namespace {

Symbol SymbolOf(Type type, const SymbolText& text, const Request& request) {
  switch (type) {
    case Type::kCode39:
      return MakeCode39(text, request);
    case Type::kCode93:
      return MakeCode93(text);
    case Type::kCode128:
      return MakeCode128(text, request);
    case Type::kGs1_128:
      return MakeGs1_128(text, request);
    case Type::kNw7:
      return MakeNw7(text, request);
    case Type::kMatrix2of5:
      return MakeMatrix2of5(text);
    case Type::kNec2of5:
      return MakeNec2of5(text);
    case Type::kJan8:
      return MakeJan8(text);
    case Type::kJan13:
      return MakeJan13(text);
    case Type::kUpcA:
      return MakeUpcA(text);
    case Type::kUpcE:
      return MakeUpcE(text);
    case Type::kItf:
      return MakeItf(text);
    case Type::kDataBar14:
      return MakeDataBar14(text, request);
    case Type::kDataBarLimited:
      return MakeDataBarLimited(text);
    case Type::kDataBarExpanded:
      return MakeDataBarExpanded(text, request);
    case Type::kYubinCustomer:
      return MakeYubinCustomer(text);
    case Type::kQr:
      return MakeQr(text, request);
    case Type::kDataMatrix:
      return MakeDataMatrix(text, request);
    case Type::kPdf417:
      break;
  }
  return MakePdf417(text, request);
}

}  // namespace

Symbol EncodeSymbol(Type type, const Request& request) {
  const SymbolText text(request);
  if (text.Bytes().empty()) {
    text.Refuse("The text is empty; give at least one character.");
  }
  if (text.Bytes().size() > kMostTextBytes) {
    text.RefuseLength(Line("No label takes more than ", kMostTextBytes, " bytes of text; shorten it."));
  }
  try {
    return SymbolOf(type, text, request);
  } catch (const LabelError&) {
    throw;
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception& error) {
    // The texts that the encoders refuse are refused before; this is what is left, a missing converter for
    // one.
    text.Refuse(Line("The text cannot be encoded; the reason is: ", error.what()));
  }
}

}  // namespace barcode::label
