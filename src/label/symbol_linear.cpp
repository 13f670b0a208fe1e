#include <cstddef>
#include <string>
#include <utility>

#include "base/ascii.h"
#include "base/line.h"
#include "label/symbol_families.h"
#include "linear/code128_encoder.h"
#include "linear/code39_encoder.h"
#include "linear/code39_tables.h"
#include "linear/code93_encoder.h"
#include "linear/code93_tables.h"
#include "linear/itf_encoder.h"
#include "linear/nw7_encoder.h"
#include "linear/two_of_five_encoder.h"
#include "linear/yubin_customer_encoder.h"

namespace barcode::label {
namespace {

Symbol LinearSymbolOf(RunVector pattern, std::string text, std::string line) {
  Symbol symbol;
  symbol.modules = LinearSymbol{.pattern = std::move(pattern)};
  symbol.text = std::move(text);
  symbol.lines.push_back(std::move(line));
  return symbol;
}

Symbol PlainSymbolOf(RunVector pattern, const SymbolText& text) {
  return LinearSymbolOf(std::move(pattern), std::string(text.Bytes()), std::string(text.Bytes()));
}

bool IsUpper(char character) {
  return character >= 'A' && character <= 'Z';
}

// ---- Code 93 ----

// The shift characters make a pair with the letter behind them; readers refuse all else.
void RequireCode93Shifts(const SymbolText& text) {
  constexpr std::string_view kShifts = "<>?!";
  constexpr char kSymbolShift = '?';  // "(/)" in the standard: it has the letters A to O and Z
  const std::string_view bytes = text.Bytes();
  for (std::size_t pos = bytes.find_first_of(kShifts); pos != std::string_view::npos;
       pos = bytes.find_first_of(kShifts, pos + 1)) {
    const char next = pos + 1 < bytes.size() ? ToUpper(bytes[pos + 1]) : '\0';
    const bool isSymbol = bytes[pos] == kSymbolShift;
    if (!IsUpper(next) || (isSymbol && next > 'O' && next != 'Z')) {
      text.Refuse(Line("A Code 93 shift character stands in front of a letter, ",
                       isSymbol ? "A to O or Z" : "A to Z", "; leave out ", text.CharacterAt(pos),
                       " or put such a letter behind it."));
    }
  }
}

// ---- Code 128 ----

void RequireCode128Characters(const SymbolText& text, Code128Mode mode) {
  constexpr std::string_view kOtherSets = "choose code_mode AUTO";
  const auto isHeldBy = [](Code128Set set) {
    return [set](char c) { return CharValue(set, std::string_view(&c, 1), 0, Code128Rule::kStandard) >= 0; };
  };
  const std::string_view bytes = text.Bytes();
  switch (mode) {
    case Code128Mode::kAuto:
      text.RequireCharacters([](char c) { return static_cast<unsigned char>(c) < 0x80; },
                             {"Code 128 takes ASCII characters"});
      return;
    case Code128Mode::kA:
      text.RequireCharacters(isHeldBy(Code128Set::kA),
                             {"Set A of Code 128 takes ASCII characters up to \"_\"", kOtherSets});
      return;
    case Code128Mode::kB:
      text.RequireCharacters(isHeldBy(Code128Set::kB),
                             {"Set B of Code 128 takes ASCII characters from the space on", kOtherSets});
      return;
    case Code128Mode::kC:
      text.RequireCharacters(IsDigit, {"Set C of Code 128 takes the digits 0 to 9", kOtherSets});
      break;
  }
  if (bytes.size() % 2 != 0) {
    text.Refuse(Line("Set C of Code 128 takes pairs of digits and the text has ", bytes.size(),
                     "; put a zero in front or choose code_mode AUTO."));
  }
}

// ---- NW-7 ----

void RequireNw7Characters(const SymbolText& text) {
  const std::string_view bytes = text.Bytes();
  const bool starts = IsNw7StartStop(bytes.front());
  const bool stops = IsNw7StartStop(bytes.back());
  if (starts != stops || (starts && bytes.size() == 1)) {
    text.Refuse("NW-7 has a start and a stop character, each A to D; give both or leave both out.");
  }
  if (starts && bytes.size() == 2) {
    text.Refuse(
        "Between start and stop character NW-7 has at least one other; give a digit or one of - $ : / . +.");
  }
  const auto isData = [](char c) {
    return IsDigit(c) || std::string_view("-$:/.+").find(c) != std::string_view::npos;
  };
  text.RequireCharacters(isData,
                         {"Between start and stop character NW-7 takes the digits 0 to 9 and - $ : / . +"},
                         starts ? 1 : 0, bytes.size() - (stops ? 1 : 0));
}

// ---- Postal code ----

bool IsYubinCharacter(char character) {
  return IsDigit(character) || character == '-' || IsUpper(ToUpper(character));
}

void RequireYubinPositions(const SymbolText& text) {
  constexpr std::size_t kPositions = 20;
  std::size_t positions = 0;
  for (const char character : text.Bytes()) {
    positions += IsUpper(ToUpper(character)) ? 2 : 1;
  }
  if (positions > kPositions) {
    text.RefuseLength(Line("The postal code has ", kPositions,
                           " positions, of which a letter takes two, and the text takes ", positions,
                           "; shorten it."));
  }
}

}  // namespace

// Where lower case counts as upper case, upper case is shown: what stands below the bars is what they say.
Symbol MakeCode39(const SymbolText& text, const Request& request) {
  const std::string_view bytes = text.Bytes();
  if (const std::size_t star = bytes.find('*'); star != std::string_view::npos) {
    text.Refuse(Line("Code 39 sets its start and stop character * by itself; leave out ",
                     text.CharacterAt(star), '.'));
  }
  text.RequireCharacters([](char c) { return kCode39Characters.find(ToUpper(c)) != std::string_view::npos; },
                         {"Code 39 takes letters, digits, the space and - . $ / + %"});
  const std::string upper = ToUpper(bytes);
  return LinearSymbolOf(EncodeCode39(upper), upper,
                        Code39DisplayText(upper, request.showStartStop.value_or(true)));
}

Symbol MakeCode93(const SymbolText& text) {
  const std::string_view bytes = text.Bytes();
  text.RequireCharacters(
      [](char c) { return kCode93Values[static_cast<unsigned char>(ToUpper(c))] >= 0; },
      {"Code 93 takes letters, digits, the space, - . $ / + % and for the shift characters < > ? !"});
  RequireCode93Shifts(text);
  const std::string upper = ToUpper(bytes);
  return LinearSymbolOf(EncodeCode93(upper), upper, upper);
}

Symbol MakeCode128(const SymbolText& text, const Request& request) {
  const Code128Mode mode = KeywordOr(kCode128ModeKeywords, request.codeMode, Code128Mode::kAuto);
  RequireCode128Characters(text, mode);
  return PlainSymbolOf(EncodeCode128(text.Bytes(), mode, Code128Rule::kStandard), text);
}

Symbol MakeNw7(const SymbolText& text, const Request& request) {
  RequireNw7Characters(text);
  const std::string upper = ToUpper(text.Bytes());
  return LinearSymbolOf(EncodeNw7(upper), Nw7FramedText(upper),
                        Nw7DisplayText(upper, request.showStartStop.value_or(true)));
}

Symbol MakeMatrix2of5(const SymbolText& text) {
  text.RequireDigits("Matrix 2 of 5");
  return PlainSymbolOf(EncodeMatrix2of5(text.Bytes(), TwoOfFiveRule::kBarsAndSpaces), text);
}

Symbol MakeNec2of5(const SymbolText& text) {
  text.RequireDigits("NEC 2 of 5");
  return PlainSymbolOf(EncodeNec2of5(text.Bytes(), TwoOfFiveRule::kBarsAndSpaces), text);
}

Symbol MakeItf(const SymbolText& text) {
  text.RequireDigits("ITF");
  return LinearSymbolOf(EncodeItf(text.Bytes()), ItfDisplayText(text.Bytes()), ItfDisplayText(text.Bytes()));
}

Symbol MakeYubinCustomer(const SymbolText& text) {
  text.RequireCharacters(IsYubinCharacter, {"The postal code takes digits, the hyphen and letters"});
  RequireYubinPositions(text);
  Symbol symbol;
  symbol.modules = FourStateBars{EncodeYubinCustomer(text.Bytes()).bars};
  symbol.text = ToUpper(text.Bytes());
  return symbol;
}

}  // namespace barcode::label
