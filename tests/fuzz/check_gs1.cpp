#include <algorithm>
#include <numeric>
#include <string>

#include "fuzz/checks.h"
#include "fuzz/databar_expanded_decoder.h"
#include "fuzz/require.h"
#include "gs1/databar_14_encoder.h"
#include "gs1/databar_expanded_encoder.h"
#include "gs1/databar_general_field.h"
#include "gs1/databar_limited_encoder.h"
#include "gs1/gs1_128_encoder.h"
#include "gs1/gs1_element_string.h"
#include "gs1/gs1_markers.h"
#include "gs1/payment_form.h"
#include "support/code128_decode.h"

namespace barcode::fuzz {
namespace {

std::string Pieces(ByteReader& reader) {
  constexpr std::array<std::string_view, 16> kPieces = {
      "{FNC1}", "{AI}", "\x1D",  "01",  "0190012345678908", "3103",
      "3202",   "392",  "393",   "10",  "17100312",         "{A{AI}I}",
      "000",    "11",   "{FNC1", "UNIT"};
  constexpr std::array<std::string_view, 6> kAlphabets = {
      "0123456789",      "0123456789",       "0123456789ABCDEF*,-./", "abcXYZ09!\"%&'()*+,-./:;<=>?_ ",
      "0123456789A\x1D", "\x01 A`~\x7F\xE9#"};
  std::string text;
  for (std::size_t count = reader.Below(10); count > 0; --count) {
    text += reader.OneIn(3) ? std::string(reader.Of(kPieces))
                            : InAlphabet(reader.Bytes(24), reader.Of(kAlphabets));
  }
  return text;
}

std::size_t Modules(const RunVector& pattern) {
  return std::accumulate(pattern.begin(), pattern.end(), std::size_t{0});
}

// The bytes of a text that GS1-128 encodes, FNC1 as a byte that it cannot.
std::string Gs1Data(std::string_view text) {
  std::string data;
  while (!text.empty()) {
    if (text.starts_with(kFnc1Marker)) {
      data += '\xF1';
      text.remove_prefix(kFnc1Marker.size());
    } else if (text.starts_with(kAiMarker)) {
      text.remove_prefix(kAiMarker.size());
    } else {
      if (static_cast<unsigned char>(text.front()) < 0x80) {
        data += text.front();
      }
      text.remove_prefix(1);
    }
  }
  return data;
}

std::string GtinOf(std::string_view text) {
  std::string digits = std::string(13 - text.size(), '0') + std::string(text);
  int sum = 0;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    sum += (digits[i] - '0') * (i % 2 == 0 ? 3 : 1);
  }
  return digits + static_cast<char>('0' + (10 - sum % 10) % 10);
}

std::string Digits(ByteReader& reader, std::size_t longest) {
  const bool strays = reader.OneIn(8);
  std::string digits = InAlphabet(reader.Bytes(longest), kDigits);
  return strays ? digits + reader.Bytes(1) : digits;
}

}  // namespace

void CheckGs1_128(ByteReader& reader) {
  const std::string text = reader.OneIn(4) ? reader.Rest() : Pieces(reader);
  Code128Values values = Gs1_128Values(text);
  Require(EncodeGs1_128(text) == ValuesToPattern(values), "the pattern is that of the values");
  Require(Modules(ValuesToPattern(values)) == 11 * (values.size() - 1) + 13, "a value has eleven modules");
  Require(values.size() >= 3 && values.back() == kCode128Stop, "a symbol ends with the stop value");
  values.pop_back();
  const int check = values.back();
  values.pop_back();
  Require(check == CheckValue(values), "the check value is before the stop value");
  // Set A does not hold DEL, and no switch is made for it.
  std::string decoded = test::DecodeCode128(values, "\xF1");
  std::string data = Gs1Data(text);
  std::erase(decoded, '\x7F');
  std::erase(data, '\x7F');
  Require(decoded == data, "GS1-128 reads back");
  (void)Gs1_128DisplayText(text);
}

void CheckDataBar14(ByteReader& reader) {
  constexpr std::array kTypes = {DataBar14Type::kOmnidirectional, DataBar14Type::kStacked,
                                 DataBar14Type::kStackedOmnidirectional};
  const DataBar14Type type = reader.Of(kTypes);
  const std::string text = Digits(reader, 15);
  EncoderLines lines;
  const auto symbol = Accepted([&] { return EncodeDataBar14(text, type, lines); });
  Require(symbol.has_value() == (text.size() <= 13 && IsMadeOf(text, kDigits)),
          "DataBar takes up to 13 digits");
  if (!symbol) {
    return;
  }
  Require(symbol->digits == GtinOf(text), "DataBar shows the whole GTIN");
  Require(symbol->type == type && symbol->rows.size() == 2 * static_cast<std::size_t>(type) + 1,
          "each form has its number of rows");
  for (const StackedRow& row : symbol->rows) {
    Require(Modules(row.widths) == (symbol->rows.size() == 1 ? 96 : 50), "each form has its width");
  }
}

void CheckDataBarLimited(ByteReader& reader) {
  std::string text = Digits(reader, 15);
  if (text.size() == 13 && reader.Flag()) {
    text.front() = reader.Flag() ? '0' : '1';
  }
  const auto symbol = Accepted([&] { return EncodeDataBarLimited(text); });
  const bool isValid = text.size() >= 8 && text.size() <= 13 && IsMadeOf(text, kDigits) &&
                       (text.size() < 13 || text.front() <= '1');
  Require(symbol.has_value() == isValid,
          "DataBar Limited takes 8 to 13 digits, the first of thirteen 0 or 1");
  if (symbol) {
    Require(symbol->digits == GtinOf(text), "DataBar Limited shows the whole GTIN");
    Require(Modules(symbol->widths) == 74 && symbol->widths.front() == 0, "DataBar Limited has 74 modules");
  }
}

void CheckDataBarExpanded(ByteReader& reader) {
  const std::size_t pairsPerRow = reader.Below(11);
  const std::string input = Pieces(reader);
  const std::string text = ReadElementString(input).text;
  bool isTooLong = false;
  std::optional<DataBarExpandedSymbol> symbol;
  try {
    symbol = EncodeDataBarExpanded(input, pairsPerRow);
  } catch (const std::length_error&) {
    isTooLong = true;
  } catch (const std::invalid_argument&) {
    Require(!IsGeneralFieldText(text), "DataBar Expanded takes its characters");
    return;
  }
  Require(IsGeneralFieldText(text), "DataBar Expanded takes no other characters");
  Require(!isTooLong || text.size() > 30, "a short text is not too long");
  if (isTooLong) {
    return;
  }
  Require(symbol.has_value() == !text.empty(), "there is a symbol when there are data");
  if (!symbol) {
    return;
  }
  const BitText bits = DataBarExpandedBits(text, pairsPerRow);
  const auto decoded = Accepted([&] { return DecodeExpandedBits(bits); });
  Require(decoded.has_value(), "DataBar Expanded decodes");
  // The check digit of a GTIN in front is not encoded.
  std::string expected = text;
  constexpr std::size_t kGtinEnd = 16;
  if (text.starts_with("01") && text.size() >= kGtinEnd && IsMadeOf(text.substr(0, kGtinEnd), kDigits)) {
    expected = "01" + GtinOf(text.substr(2, 13)) + text.substr(kGtinEnd);
  }
  Require(*decoded == expected, "DataBar Expanded reads back");
  Require(symbol->rows.size() % 4 == 1, "three separators stand between two rows");
  for (const StackedRow& row : symbol->rows) {
    Require(Modules(row.widths) == Modules(symbol->rows.front().widths), "all rows are equally wide");
  }
}

void CheckElementString(ByteReader& reader) {
  const Gs1ElementString elements = ReadElementString(reader.OneIn(4) ? reader.Rest() : Pieces(reader));
  Require(!elements.text.starts_with(kGs1Separator) && !elements.text.ends_with(kGs1Separator),
          "no separator stands at an end");
  Require(elements.text.find(kAiMarker) == std::string::npos, "no marker is left");
  Require(std::ranges::is_sorted(elements.markedAis) &&
              (elements.markedAis.empty() || elements.markedAis.back() <= elements.text.size()),
          "marks are ascending positions");
  std::string data = elements.text;
  std::string shown = HumanReadable(elements);
  for (std::string* const text : {&data, &shown}) {
    std::erase_if(*text, [](char character) {
      return character == '(' || character == ')' || character == kGs1Separator;
    });
  }
  Require(data == shown, "people see the data, with parentheses");
}

void CheckPaymentForm(ByteReader& reader) {
  std::string digits = InAlphabet(reader.Rest(), kDigits);
  digits.resize(std::min<std::size_t>(digits.size(), 45));
  const bool padded = digits.size() % 2 == 0;
  if (padded) {
    digits.resize(43, '0');
  }
  const std::string text = digits.front() == '7' ? std::string(kFnc1Marker) + digits : digits;
  const auto code = Accepted([&] { return NormalizePaymentCode(text); });
  Require(code.has_value() || digits.size() != 43, "43 digits are completed");
  Require(!code || (code->size() == 44 && code->starts_with(digits)), "a slip has 44 digits");
  if (code) {
    const auto lines = PaymentFormLines(*code);
    std::string shown = lines[0] + lines[1];
    std::erase_if(shown,
                  [](char character) { return character == '(' || character == ')' || character == '-'; });
    Require(shown == *code, "people see all digits");
  }
}

}  // namespace barcode::fuzz
