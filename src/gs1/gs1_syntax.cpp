#include "gs1/gs1_syntax.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "base/ascii.h"
#include "base/line.h"
#include "gs1/gs1_application_identifiers.h"
#include "gs1/gs1_associations.h"
#include "gs1/gs1_element_check.h"
#include "gs1/gs1_element_string.h"
#include "gs1/gs1_markers.h"

namespace barcode {
namespace {

// No symbol holds half as much: what is longer is not looked at.
constexpr std::size_t kMaxTextLength = 4000;

[[noreturn]] void RefuseUnknown(std::string_view ai) {
  const std::size_t length = Gs1AiLengthAt(ai);
  if (ai.size() < length) {
    throw Gs1SyntaxError(Line("The application identifiers that begin with ", ai.substr(0, 2), " have ",
                              length, " digits, and here are ", ai.size(), "."));
  }
  throw Gs1SyntaxError(Line("The application identifier ", ai, " does not exist."));
}

// What stands where an AI has to begin.
[[noreturn]] void RefuseNoAi(const std::vector<Gs1Element>& before) {
  if (before.empty()) {
    throw Gs1SyntaxError("The text has to begin with an application identifier, as in (01)04912345678904.");
  }
  throw Gs1SyntaxError(Line("The application identifier ", before.back().ai, " is followed by what is no ",
                            "application identifier: its data may be too long, or an FNC1 too much."));
}

// FNC1 in either form at the beginning of the text; empty where there is none.
std::string_view Fnc1At(std::string_view text) {
  if (text.starts_with(kFnc1Marker)) {
    return text.substr(0, kFnc1Marker.size());
  }
  return text.substr(0, text.starts_with(kGs1Separator) ? 1 : 0);
}

// ---- With parentheses ----
//
// "(", the digits of an AI that exists and ")" always begin an element, wherever they stand; so does FNC1,
// which may stand between elements and at both ends and says nothing here. Everything else up to there is
// data, parentheses included, for they are characters of the standard's set: "(10)A(B)(21)7(05)" is the
// batch "A(B)" with the serial number "7(05)", since there is no AI 05. Data that holds the number of an AI
// in parentheses can be written without parentheses around the AIs only.

constexpr std::size_t kMaxAiLength = 4;

// The digits in "(…)" at the beginning of the text where an AI could stand; empty where none could.
std::string_view DigitsInParentheses(std::string_view text) {
  if (!text.starts_with('(')) {
    return {};
  }
  const std::size_t end = text.substr(0, kMaxAiLength + 2).find(')');
  const std::string_view digits = text.substr(1, end == std::string_view::npos ? 0 : end - 1);
  return digits.size() >= 2 && AllDigits(digits) ? digits : std::string_view();
}

// The length of the data at the beginning of the text.
std::size_t DataLengthAt(std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '(' && text[i] != kFnc1Marker.front() && text[i] != kGs1Separator) {
      continue;
    }
    const std::string_view rest = text.substr(i);
    if (!Fnc1At(rest).empty() || FindGs1ApplicationIdentifier(DigitsInParentheses(rest)) != nullptr) {
      return i;
    }
  }
  return text.size();
}

// Where the data is no good, a number in parentheses within it has been meant as an AI.
void CheckWithParentheses(const Gs1Element& element) {
  try {
    CheckGs1Element(element);
  } catch (const Gs1SyntaxError&) {
    const std::string_view data = element.data;
    for (std::size_t at = data.find('('); at != std::string_view::npos; at = data.find('(', at + 1)) {
      const std::string_view digits = DigitsInParentheses(data.substr(at));
      if (!digits.empty()) {
        RefuseUnknown(digits);
      }
    }
    throw;
  }
}

std::vector<Gs1Element> ParseWithParentheses(std::string_view text) {
  std::vector<Gs1Element> elements;
  while (!text.empty()) {
    const std::string_view digits = DigitsInParentheses(text);
    if (digits.empty()) {
      RefuseNoAi(elements);
    }
    if (FindGs1ApplicationIdentifier(digits) == nullptr) {
      RefuseUnknown(digits);
    }
    text.remove_prefix(digits.size() + 2);
    const std::size_t length = DataLengthAt(text);
    elements.push_back({std::string(digits), std::string(text.substr(0, length))});
    CheckWithParentheses(elements.back());
    text.remove_prefix(length);
    text.remove_prefix(Fnc1At(text).size());
  }
  return elements;
}

// ---- Without parentheses ----
//
// Data of predefined length ends by itself, other data at FNC1, at a place where "{AI}" says that the next AI
// begins, or with the text.

// The digits of the AI that the field begins with.
std::string_view TakeAi(std::string_view field, const std::vector<Gs1Element>& before) {
  const auto notDigit = std::find_if_not(field.begin(), field.end(), IsDigit);
  const std::string_view digits = {field.begin(), notDigit};
  if (digits.size() < 2) {
    RefuseNoAi(before);
  }
  const std::size_t length = Gs1AiLengthAt(digits);
  const std::string_view ai = digits.substr(0, std::max(length, std::size_t{2}));
  if (FindGs1ApplicationIdentifier(ai) == nullptr) {
    RefuseUnknown(ai);
  }
  return ai;
}

void CheckWithoutParentheses(const Gs1Element& element) {
  const std::size_t max = FindGs1ApplicationIdentifier(element.ai)->MaxLength();
  if (element.data.size() > max) {
    throw Gs1SyntaxError(Line("The application identifier ", element.ai, " takes at most ", max,
                              max == 1 ? " character, but " : " characters, but ", element.data.size(),
                              " are given: an FNC1 may be missing behind its data."));
  }
  CheckGs1Element(element);
}

std::vector<Gs1Element> ParseWithoutParentheses(const Gs1ElementString& input) {
  const std::string_view text = input.text;
  std::vector<Gs1Element> elements;
  auto mark = input.markedAis.begin();
  for (std::size_t begin = 0; begin < text.size();) {
    mark = std::upper_bound(mark, input.markedAis.end(), begin);
    const std::size_t fieldEnd = std::min(
        {text.find(kGs1Separator, begin), text.size(), mark == input.markedAis.end() ? text.size() : *mark});
    const std::string_view field = text.substr(begin, fieldEnd - begin);
    const std::string_view ai = TakeAi(field, elements);
    const std::size_t predefined = Gs1PredefinedDataLength(ai);
    const std::string_view data =
        field.substr(ai.size(), predefined == 0 ? std::string_view::npos : predefined);
    elements.push_back({std::string(ai), std::string(data)});
    CheckWithoutParentheses(elements.back());
    begin += ai.size() + data.size();
    begin += begin < text.size() && text[begin] == kGs1Separator ? 1 : 0;
  }
  return elements;
}

std::vector<Gs1Element> Parse(std::string_view text) {
  const std::string_view behindFnc1 = text.substr(Fnc1At(text).size());
  return behindFnc1.starts_with('(') ? ParseWithParentheses(behindFnc1)
                                     : ParseWithoutParentheses(ReadElementString(text));
}

}  // namespace

std::vector<Gs1Element> ParseGs1Elements(std::string_view text) {
  if (text.size() > kMaxTextLength) {
    throw Gs1SyntaxError(Line("The text has ", text.size(), " characters, but element strings have at most ",
                              kMaxTextLength, "."));
  }
  std::vector<Gs1Element> elements = Parse(text);
  if (elements.empty()) {
    throw Gs1SyntaxError(
        "The text is empty: write an application identifier and its data, as in (01)04912345678904.");
  }
  CheckGs1Pairs(elements);
  return elements;
}

std::string Gs1ElementsForPeople(const std::vector<Gs1Element>& elements) {
  std::string text;
  for (const Gs1Element& element : elements) {
    AppendPieces(text, '(', element.ai, ')', element.data);
  }
  return text;
}

std::string Gs1ElementsForEncoder(const std::vector<Gs1Element>& elements) {
  std::string text;
  bool separate = false;
  for (const Gs1Element& element : elements) {
    if (separate) {
      text += kGs1Separator;
    }
    AppendPieces(text, element.ai, element.data);
    separate = Gs1PredefinedDataLength(element.ai) == 0;
  }
  return text;
}

}  // namespace barcode
