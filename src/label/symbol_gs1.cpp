#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "base/ascii.h"
#include "base/gs1_check_digit.h"
#include "base/line.h"
#include "gs1/databar_14_encoder.h"
#include "gs1/databar_expanded_encoder.h"
#include "gs1/databar_general_field.h"
#include "gs1/databar_limited_encoder.h"
#include "gs1/gs1_128_encoder.h"
#include "gs1/gs1_markers.h"
#include "gs1/gs1_syntax.h"
#include "gs1/payment_form.h"
#include "label/symbol_families.h"

namespace barcode::label {
namespace {

// ---- Rows ----

// A row without the elements of no modules that divide a long run; one may stand in front.
RunVector WholeRuns(const RunVector& widths) {
  RunVector runs;
  for (std::size_t i = 0; i < widths.size(); ++i) {
    if (widths[i] == 0 && i > 0 && i + 1 < widths.size()) {
      runs.back() += widths[++i];
    } else {
      runs.push_back(widths[i]);
    }
  }
  return runs;
}

StackedSymbol StackedSymbolOf(const std::vector<StackedRow>& rows, int defaultHeight) {
  StackedSymbol stacked{.rows = {}, .defaultHeight = defaultHeight};
  for (const auto& [widths, height] : rows) {
    stacked.rows.push_back({WholeRuns(widths), height});
  }
  return stacked;
}

// ---- Element strings ----

// No element string that fits a symbol has more bytes, markers and parentheses included.
constexpr std::size_t kMostElementStringBytes = 1'000;

struct ElementText {
  std::string forEncoder;  // with kGs1Separator
  std::vector<Gs1Element> elements;
};

ElementText ElementsOf(const SymbolText& text, std::string_view tooLong) {
  if (text.Bytes().size() > kMostElementStringBytes) {
    text.RefuseLength(std::string(tooLong));
  }
  try {
    ElementText result{.forEncoder = {}, .elements = ParseGs1Elements(text.Bytes())};
    result.forEncoder = Gs1ElementsForEncoder(result.elements);
    return result;
  } catch (const Gs1SyntaxError& error) {
    text.Refuse(ShownText(error.what()));
  }
}

Symbol ElementSymbolOf(const std::vector<Gs1Element>& elements) {
  Symbol symbol;
  symbol.text = Gs1ElementsForPeople(elements);
  symbol.lines.push_back(symbol.text);
  for (std::string& sentence : Gs1MissingPartners(elements)) {
    symbol.warnings.push_back({ErrorCode::kGs1Association, std::move(sentence)});
  }
  return symbol;
}

// ---- GS1-128 ----

RunVector Gs1_128Pattern(std::string_view elements) {
  std::string text(kFnc1Marker);
  for (const char character : elements) {
    if (character == kGs1Separator) {
      text += kFnc1Marker;
    } else {
      text += character;
    }
  }
  return EncodeGs1_128(text, Gs1_128Rule::kFewestValues);
}

// The digits of a payment slip's code: AI 91 and 42 digits, the last of which is the check digit.
std::string PaymentDigits(const SymbolText& text) {
  constexpr std::string_view kAi = "91";
  constexpr std::string_view kAiForPeople = "(91)";
  constexpr std::size_t kDigits = 44;
  const std::string_view bytes = text.Bytes();
  std::size_t from = bytes.starts_with(kFnc1Marker) ? kFnc1Marker.size() : 0;
  std::string digits;
  if (bytes.substr(from).starts_with(kAiForPeople)) {
    digits = kAi;
    from += kAiForPeople.size();
  }
  text.RequireDigits("A payment slip's code", from);
  digits += bytes.substr(from);
  const auto message = [&digits](std::string_view remedy) {
    return Line("A payment slip's code has 43 digits, or 44 with the check digit, and here are ",
                digits.size(), remedy);
  };
  if (digits.size() > kDigits) {
    text.RefuseLength(message("; shorten it."));
  }
  if (digits.size() < kDigits - 1) {
    text.Refuse(message("; add what is missing."));
  }
  if (!digits.starts_with(kAi)) {
    text.Refuse("A payment slip's code begins with its application identifier 91; put it in front.");
  }
  if (digits.size() == kDigits) {
    text.RequireCheckDigit(Gs1CheckDigit(std::string_view(digits).substr(0, kDigits - 1)));
  }
  return NormalizePaymentCode(digits);
}

Symbol PaymentSymbol(const SymbolText& text) {
  const std::string digits = PaymentDigits(text);
  Symbol symbol;
  symbol.modules = LinearSymbol{.pattern = Gs1_128Pattern(digits)};
  symbol.text = Line('(', digits.substr(0, 2), ')', digits.substr(2));
  for (std::string& line : PaymentFormLines(digits)) {
    symbol.lines.push_back(std::move(line));
  }
  return symbol;
}

// ---- DataBar with a GTIN ----

constexpr std::size_t kGtinDigits = 14;

// The digits of a text as the encoders take them, without the check digit. fewest: digits without one.
std::string_view GtinWithoutCheckDigit(const SymbolText& text, std::string_view name, std::size_t fewest) {
  constexpr std::string_view kGtinAi = "(01)";
  const bool hasAi = text.Bytes().starts_with(kGtinAi);
  const std::size_t from = hasAi ? kGtinAi.size() : 0;
  text.RequireDigits(name, from);
  const std::string_view digits = text.Bytes().substr(from);
  const std::size_t least = hasAi ? kGtinDigits : fewest;
  const auto message = [&](std::string_view remedy) {
    return hasAi ? Line("Behind (01) ", name, " takes the ", kGtinDigits, " digits of a GTIN, and here are ",
                        digits.size(), remedy)
                 : Line(name, " takes ", fewest, " to ", kGtinDigits - 1,
                        " digits of a GTIN without its check digit, or ", kGtinDigits,
                        " with it, and the text has ", digits.size(), remedy);
  };
  if (digits.size() > kGtinDigits) {
    text.RefuseLength(message("; shorten it."));
  }
  if (digits.size() < least) {
    text.Refuse(message("; add what is missing."));
  }
  if (digits.size() == kGtinDigits) {
    text.RequireCheckDigit(Gs1CheckDigit(digits.substr(0, kGtinDigits - 1)));
  }
  return digits.substr(0, kGtinDigits - 1);
}

void ShowGtin(Symbol& symbol, std::string_view digits) {
  symbol.text = Line("(01)", digits);
  symbol.lines.push_back(symbol.text);
}

DataBar14Type DataBar14TypeOf(const Request& request) {
  if (request.form == Form::kStacked) {
    return DataBar14Type::kStacked;
  }
  return request.form == Form::kStackedOmnidirectional ? DataBar14Type::kStackedOmnidirectional
                                                       : DataBar14Type::kOmnidirectional;
}

// The rows in the standard's heights, ISO/IEC 24724: 5 + 1 + 7, and 33 + 1 + 1 + 1 + 33 modules.
constexpr int kStackedHeight = 13;
constexpr int kStackedOmnidirectionalHeight = 69;

// ---- DataBar Expanded ----

constexpr int kExpandedRowHeight = 34;

void RequireGeneralFieldText(const SymbolText& text, const std::vector<Gs1Element>& elements) {
  for (const auto& [ai, data] : elements) {
    for (const char& character : data) {
      if (!IsGeneralFieldText(std::string_view(&character, 1))) {
        text.Refuse(Line("DataBar Expanded has no character \"", character, "\", which the data of (", ai,
                         ") holds; leave it out or use GS1-128."));
      }
    }
  }
}

int StackedExpandedHeight(const std::vector<StackedRow>& rows) {
  int height = 0;
  for (const StackedRow& row : rows) {
    height += row.height.value_or(kExpandedRowHeight);
  }
  return height;
}

}  // namespace

Symbol MakeGs1_128(const SymbolText& text, const Request& request) {
  constexpr std::size_t kMostCharacters = 48;
  constexpr std::string_view kTooLong =
      "GS1-128 holds 48 characters, application identifiers and the FNC1 between fields included; shorten "
      "the text.";
  if (request.form == Form::kPayment) {
    return PaymentSymbol(text);
  }
  const ElementText elementText = ElementsOf(text, kTooLong);
  if (elementText.forEncoder.size() > kMostCharacters) {
    text.RefuseLength(std::string(kTooLong));
  }
  Symbol symbol = ElementSymbolOf(elementText.elements);
  symbol.modules = LinearSymbol{.pattern = Gs1_128Pattern(elementText.forEncoder)};
  return symbol;
}

Symbol MakeDataBar14(const SymbolText& text, const Request& request) {
  const std::string_view digits = GtinWithoutCheckDigit(text, "DataBar", 1);
  const DataBar14Type type = DataBar14TypeOf(request);
  const DataBar14Symbol encoded = EncodeDataBar14(digits, type, DataBar14Start::kSpace);
  Symbol symbol;
  if (type == DataBar14Type::kOmnidirectional) {
    symbol.modules = LinearSymbol{.pattern = encoded.rows.front().widths};
  } else {
    symbol.modules = StackedSymbolOf(
        encoded.rows, type == DataBar14Type::kStacked ? kStackedHeight : kStackedOmnidirectionalHeight);
  }
  ShowGtin(symbol, encoded.digits);
  return symbol;
}

Symbol MakeDataBarLimited(const SymbolText& text) {
  const std::string_view digits = GtinWithoutCheckDigit(text, "DataBar Limited", 8);
  if (digits.size() == kGtinDigits - 1 && digits.front() > '1') {
    text.Refuse(Line("DataBar Limited takes a GTIN whose first digit is 0 or 1, and here it is ",
                     digits.front(), "; use DataBar instead."));
  }
  const DataBarLimitedSymbol encoded = EncodeDataBarLimited(digits);
  Symbol symbol;
  symbol.modules = LinearSymbol{.pattern = encoded.widths};
  ShowGtin(symbol, encoded.digits);
  return symbol;
}

Symbol MakeDataBarExpanded(const SymbolText& text, const Request& request) {
  constexpr int kDefaultPairs = 2;
  constexpr std::string_view kTooLong =
      "DataBar Expanded holds at most 74 digits or 41 other characters, application identifiers included; "
      "shorten the text.";
  const bool isStacked = request.form == Form::kStacked;
  const auto pairs = static_cast<std::size_t>(request.pairsPerRow.value_or(kDefaultPairs));
  const ElementText elementText = ElementsOf(text, kTooLong);
  RequireGeneralFieldText(text, elementText.elements);
  Symbol symbol = ElementSymbolOf(elementText.elements);
  try {
    const auto encoded = EncodeDataBarExpanded(elementText.forEncoder, isStacked ? pairs : kUnstacked);
    const std::vector<StackedRow>& rows = encoded.value().rows;
    if (isStacked) {
      symbol.modules = StackedSymbolOf(rows, StackedExpandedHeight(rows));
    } else {
      symbol.modules = LinearSymbol{.pattern = WholeRuns(rows.front().widths)};
    }
  } catch (const std::length_error&) {
    text.RefuseLength(std::string(kTooLong));
  }
  return symbol;
}

}  // namespace barcode::label
