#include "label_proof/gs1_content.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "label_proof/content.h"
#include "support/gs1_texts.h"

namespace barcode::test {
namespace {

constexpr std::string_view kSeparator = "\x1D";

// Character set 82 of the General Specifications, without the parentheses.
constexpr std::string_view kCset82 =
    "!\"%&'*+,-./0123456789:;<=>?ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz";

enum class Kind : std::uint8_t { kDigits, kText, kChecked, kDate, kDateWithDay, kDateAndTime };

// shortest and longest: characters of the data.
struct Identifier {
  std::string_view ai;
  Kind kind;
  int shortest;
  int longest;
};

constexpr auto kIdentifiers = std::to_array<Identifier>({
    {"00", Kind::kChecked, 18, 18},  {"01", Kind::kChecked, 14, 14}, {"10", Kind::kText, 1, 20},
    {"11", Kind::kDate, 6, 6},       {"13", Kind::kDate, 6, 6},      {"15", Kind::kDate, 6, 6},
    {"17", Kind::kDate, 6, 6},       {"20", Kind::kDigits, 2, 2},    {"21", Kind::kText, 1, 20},
    {"240", Kind::kText, 1, 30},     {"3103", Kind::kDigits, 6, 6},  {"3202", Kind::kDigits, 6, 6},
    {"3922", Kind::kDigits, 1, 15},  {"400", Kind::kText, 1, 30},    {"410", Kind::kChecked, 13, 13},
    {"412", Kind::kChecked, 13, 13}, {"420", Kind::kText, 1, 20},    {"7003", Kind::kDateAndTime, 10, 10},
    {"8005", Kind::kDigits, 6, 6},   {"90", Kind::kText, 1, 30},     {"91", Kind::kText, 1, 30},
    {"95", Kind::kText, 1, 30},      {"99", Kind::kText, 1, 30},
});

// Identifiers that begin with these have a predefined length: no separator stands behind them.
constexpr std::array<std::string_view, 22> kPredefined = {"00", "01", "02", "03", "04", "11", "12", "13",
                                                          "14", "15", "16", "17", "18", "19", "20", "31",
                                                          "32", "33", "34", "35", "36", "41"};

bool IsPredefined(std::string_view ai) {
  return std::ranges::find(kPredefined, ai.substr(0, 2)) != kPredefined.end();
}

std::string TwoDigits(int number) {
  return {static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
}

std::string Date(RandomText& random, int firstDay) {
  const int month = random.Number(1, 12);
  constexpr std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return random.Digits(2, 2) + TwoDigits(month) +
         TwoDigits(random.Number(firstDay, kDays[static_cast<std::size_t>(month - 1)]));
}

std::string Data(RandomText& random, const Identifier& identifier, int longest) {
  switch (identifier.kind) {
    case Kind::kChecked: {
      const std::string digits = random.Digits(identifier.shortest - 1, identifier.shortest - 1);
      return digits + Gs1CheckDigit(digits);
    }
    case Kind::kDate:
      return Date(random, 0);
    case Kind::kDateWithDay:
      return Date(random, 1);
    case Kind::kDateAndTime:
      return Date(random, 1) + TwoDigits(random.Number(0, 23)) + TwoDigits(random.Number(0, 59));
    case Kind::kDigits:
      return random.Digits(identifier.shortest, longest);
    case Kind::kText:
      break;
  }
  // Digits are what such fields mostly hold, and what changes the encoders' modes.
  return random.Number(0, 2) == 0 ? random.Digits(identifier.shortest, longest)
                                  : random.Of(kCset82, identifier.shortest, longest);
}

struct Element {
  std::string ai;
  std::string data;
};

std::vector<Element> RandomElements(RandomText& random, int mostCharacters) {
  std::vector<Element> elements;
  int left = mostCharacters;
  for (int wanted = random.Number(1, 4); wanted > 0; --wanted) {
    const Identifier& identifier =
        random.Number(0, 3) == 0 && elements.empty()
            ? kIdentifiers[1]
            : kIdentifiers[static_cast<std::size_t>(random.Number(0, kIdentifiers.size() - 1))];
    const bool isTaken =
        std::ranges::any_of(elements, [&](const Element& element) { return element.ai == identifier.ai; });
    const int room = left - static_cast<int>(identifier.ai.size());
    if (isTaken || room < identifier.shortest) {
      continue;
    }
    elements.push_back(
        {std::string(identifier.ai), Data(random, identifier, std::min(room, identifier.longest))});
    // The separator counts too.
    left = room - static_cast<int>(elements.back().data.size()) - 1;
  }
  if (elements.empty()) {
    elements.push_back({"10", random.Of(kCset82, 1, 10)});
  }
  return elements;
}

enum class Way : std::uint8_t { kParentheses, kMarkers, kByte };

}  // namespace

Gs1Content RandomGs1(RandomText& random, int mostCharacters) {
  if (random.Number(0, 2) == 0) {
    // Of every identifier that there is.
    const Gs1Text text = RandomGs1Text(random, static_cast<std::size_t>(mostCharacters));
    return {text.text, text.decoded, text.text};
  }
  const std::vector<Element> elements = RandomElements(random, mostCharacters);
  const Way way =
      random.Number(0, 1) == 0 ? Way::kParentheses : (random.Number(0, 1) == 0 ? Way::kMarkers : Way::kByte);
  Gs1Content content;
  if (way != Way::kParentheses && random.Number(0, 1) == 0) {
    content.typed = "{FNC1}";
  }
  for (const auto& [ai, data] : elements) {
    const bool isLast = &ai == &elements.back().ai;
    const bool separated = !isLast && !IsPredefined(ai);
    const std::string aiInParentheses = "(" + ai + ")";
    content.elements += aiInParentheses + data;
    content.data += ai + data + std::string(separated ? kSeparator : "");
    if (way == Way::kParentheses) {
      content.typed += aiInParentheses + data;
      continue;
    }
    content.typed += random.Number(0, 3) == 0 ? "{AI}" : "";
    content.typed += ai + data;
    if (separated) {
      content.typed += way == Way::kMarkers ? "{FNC1}" : kSeparator;
    }
  }
  return content;
}

}  // namespace barcode::test
