#include "gs1/gs1_element_check.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "base/ascii.h"
#include "base/gs1_check_digit.h"
#include "base/line.h"
#include "gs1/gs1_application_identifiers.h"
#include "gs1/iso_countries.h"

namespace barcode {
namespace {

// A component of an element's data.
struct Part {
  const Gs1Element& element;
  std::size_t begin = 0;
  std::string_view text;
};

template <class... Pieces>
[[noreturn]] void Refuse(const Gs1Element& element, const Pieces&... pieces) {
  throw Gs1SyntaxError(Line("The application identifier ", element.ai, " ", pieces..., "."));
}

template <class... Pieces>
void Require(bool condition, const Part& part, const Pieces&... pieces) {
  if (!condition) {
    Refuse(part.element, pieces...);
  }
}

// A character as a sentence shows it.
std::string Shown(char c) {
  constexpr std::string_view kHexDigits = "0123456789ABCDEF";
  const auto byte = static_cast<unsigned char>(c);
  if (c == ' ') {
    return "a blank";
  }
  if (byte > 0x20 && byte < 0x7F) {
    return Line("\"", c, "\"");
  }
  return Line("the byte 0x", kHexDigits[byte >> 4U], kHexDigits[byte & 0xFU]);
}

// Of at most nine digits.
int Number(std::string_view digits) {
  int number = 0;
  for (const char digit : digits) {
    number = number * 10 + (digit - '0');
  }
  return number;
}

// ---- Lengths and characters ----

std::string LengthsOf(const Gs1ApplicationIdentifier& rule) {
  const bool digits = std::all_of(
      rule.Components().begin(), rule.Components().end(),
      [](const Gs1Component& component) { return component.characters == Gs1Characters::kDigits; });
  const std::string_view unit = digits ? "digit" : "character";
  const std::size_t max = rule.MaxLength();
  if (rule.MinLength() == max) {
    return Line(max, " ", unit, max == 1 ? "" : "s");
  }
  return Line(rule.MinLength(), " to ", max, " ", unit, "s");
}

std::string_view NameOf(Gs1Characters characters) {
  switch (characters) {
    case Gs1Characters::kDigits:
      return "a digit";
    case Gs1Characters::k82:
      return "a letter, a digit or one of !\"%&'()*+,-./:;<=>?_";
    case Gs1Characters::k39:
      return "a capital letter, a digit, \"#\", \"-\" or \"/\"";
    case Gs1Characters::k64:
      return "a letter, a digit, \"-\", \"_\" or \"=\"";
  }
  return "";
}

// What no AI takes is told before a length that it makes wrong.
void CheckAnyCharacter(const Gs1Element& element) {
  const auto wrong = std::find_if_not(element.data.begin(), element.data.end(), [](char c) {
    return IsGs1Character(Gs1Characters::k82, c) || IsGs1Character(Gs1Characters::k39, c);
  });
  if (wrong != element.data.end()) {
    Refuse(element, "has ", Shown(*wrong), " as character ", wrong - element.data.begin() + 1,
           " of its data, which no application identifier takes");
  }
}

void CheckLength(const Gs1Element& element, const Gs1ApplicationIdentifier& rule) {
  constexpr std::size_t kGtinLength = 14;
  const std::size_t length = element.data.size();
  if (length == 0) {
    Refuse(element, "has no data, but takes ", LengthsOf(rule));
  }
  if (length >= rule.MinLength() && length <= rule.MaxLength()) {
    return;
  }
  const bool shortGtin = rule.MaxLength() == kGtinLength &&
                         rule.Components()[0].check == Gs1Check::kCheckDigit &&
                         (length == 8 || length == 12 || length == 13);
  Refuse(element, "takes ", LengthsOf(rule), ", but ", length, length == 1 ? " is" : " are", " given",
         shortGtin ? "; put zeros in front" : "");
}

void CheckCharacters(const Part& part, Gs1Characters characters) {
  const auto wrong = std::find_if_not(part.text.begin(), part.text.end(),
                                      [characters](char c) { return IsGs1Character(characters, c); });
  if (wrong != part.text.end()) {
    const auto position = part.begin + static_cast<std::size_t>(wrong - part.text.begin()) + 1;
    Refuse(part.element, "takes ", NameOf(characters), " as character ", position, " of its data, not ",
           Shown(*wrong));
  }
}

// ---- Check characters ----

void CheckCheckDigit(const Part& part) {
  const char right = Gs1CheckDigit(part.text.substr(0, part.text.size() - 1));
  Require(part.text.back() == right, part, "has the check digit ", part.text.back(), ", but ", right,
          " would be right");
}

void CheckCompanyPrefix(const Part& part) {
  constexpr std::size_t kShortest = 4;
  Require(AllDigits(part.text.substr(0, kShortest)), part, "begins with a GS1 Company Prefix, so the first ",
          kShortest, " characters of its data have to be digits");
}

// GS1 check character pair: the characters, valued by their places in set 82, weighted with the primes from
// the right, modulo 1021 in base 32.
std::string CheckPairOf(std::string_view text) {
  constexpr std::string_view kValues =
      "!\"%&'()*+,-./0123456789:;<=>?ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz";
  constexpr std::string_view kPairCharacters = "23456789ABCDEFGHJKLMNPQRSTUVWXYZ";
  constexpr std::array<unsigned, 23> kWeights = {2,  3,  5,  7,  11, 13, 17, 19, 23, 29, 31, 37,
                                                 41, 43, 47, 53, 59, 61, 67, 71, 73, 79, 83};
  unsigned sum = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    sum += kWeights[i] * static_cast<unsigned>(kValues.find(text[text.size() - 1 - i]));
  }
  sum %= 1021;
  return {kPairCharacters[sum / 32], kPairCharacters[sum % 32]};
}

void CheckCheckPair(const Part& part) {
  CheckCompanyPrefix(part);
  const std::string_view given = part.text.substr(part.text.size() - 2);
  const std::string right = CheckPairOf(part.text.substr(0, part.text.size() - 2));
  Require(given == right, part, "has the check characters ", given, ", but ", right, " would be right");
}

// The remainder of the account with its first four characters at the end, letters as numbers from 10 on.
unsigned IbanRemainder(std::string_view account, std::string_view checkDigits) {
  const std::string turned = Line(account.substr(4), account.substr(0, 2), checkDigits);
  unsigned remainder = 0;
  for (const char c : turned) {
    const auto value = static_cast<unsigned>(IsDigit(c) ? c - '0' : c - 'A' + 10);
    remainder = (remainder * (value < 10 ? 10 : 100) + value) % 97;
  }
  return remainder;
}

void CheckIban(const Part& part) {
  const auto isLetter = [](char c) { return c >= 'A' && c <= 'Z'; };
  const bool characters =
      std::all_of(part.text.begin(), part.text.end(), [&](char c) { return isLetter(c) || IsDigit(c); });
  Require(characters && isLetter(part.text[0]) && isLetter(part.text[1]) && AllDigits(part.text.substr(2, 2)),
          part, "takes an IBAN: two letters for the country, two check digits, digits and capital letters");
  const unsigned right = 98 - IbanRemainder(part.text, "00");
  Require(static_cast<unsigned>(Number(part.text.substr(2, 2))) == right, part,
          "has an IBAN with the check digits ", part.text.substr(2, 2), ", but ", right < 10 ? "0" : "",
          right, " would be right");
}

// ---- Dates and times ----

// The days of a month; 0 where there is no such month.
int DaysOf(int year, int month) {
  constexpr std::array<int, 13> kDays = {0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  constexpr int kFebruary = 2;
  const bool leapYear = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
  if (month < 1 || month > 12) {
    return 0;
  }
  return kDays[static_cast<std::size_t>(month)] + (month == kFebruary && leapYear ? 1 : 0);
}

// MMDD of a year.
bool IsDate(int year, std::string_view monthAndDay, bool openDay) {
  const int day = Number(monthAndDay.substr(2));
  const int days = DaysOf(year, Number(monthAndDay.substr(0, 2)));
  return days != 0 && day <= days && (day > 0 || openDay);
}

// Two digits of a year are taken as of this century, whatever the clock says: the same text has the same
// answer for ever. Only 2000, a leap year, tells it from the neighbours.
int YearOf(std::string_view date) {
  return 2000 + Number(date.substr(0, 2));
}

void CheckDate(const Part& part, bool openDay) {
  Require(IsDate(YearOf(part.text), part.text.substr(2), openDay), part, "has the impossible date ",
          part.text, ": write year, month and day as YYMMDD",
          openDay ? ", or 00 for the day where only the month is known" : "");
}

// Both dates lie less than fifty years apart, so that the turn of a century between them is no matter.
void CheckLastDay(const Part& part) {
  CheckDate(part, false);
  const std::string_view first = std::string_view(part.element.data).substr(0, part.text.size());
  const int years = (Number(part.text.substr(0, 2)) - Number(first.substr(0, 2)) + 100) % 100;
  Require(years > 0 ? years < 50 : part.text >= first, part, "has the last date ", part.text,
          " before the first, ", first);
}

void CheckLongDay(const Part& part) {
  Require(IsDate(Number(part.text.substr(0, 4)), part.text.substr(4), false), part,
          "has the impossible date ", part.text, ": write year, month and day as YYYYMMDD");
}

void CheckHour(const Part& part) {
  Require(Number(part.text) < 24, part, "has the impossible hour ", part.text, ": write 00 to 23");
}

void CheckMinute(const Part& part) {
  Require(Number(part.text) < 60, part, "has the impossible minute or second ", part.text,
          ": write 00 to 59");
}

bool IsTime(std::string_view text) {
  return Number(text.substr(0, 2)) < 24 && Number(text.substr(2)) < 60;
}

void CheckTime(const Part& part, bool mayBeOpen) {
  Require(IsTime(part.text) || (mayBeOpen && part.text == "9999"), part, "has the impossible time ",
          part.text, ": write hour and minute as HHMM, 0000 to 2359",
          mayBeOpen ? ", or 9999 for no time" : "");
}

// ---- Codes ----

void CheckCountry(const Part& part, bool orNone) {
  Require(IsIsoCountry(Number(part.text)) || (orNone && part.text == "999"), part, "has the country code ",
          part.text, ", which is not in ISO 3166-1: write one such as 392",
          orNone ? ", or 999 for none in particular" : "");
}

void CheckCountryLetters(const Part& part) {
  Require(IsIsoCountry(part.text), part, "has the country code ", part.text,
          ", which is not in ISO 3166-1: write one such as JP");
}

void CheckPieceOfTotal(const Part& part) {
  const int piece = Number(part.text.substr(0, 2));
  Require(piece > 0 && piece <= Number(part.text.substr(2)), part, "has the impossible piece ",
          part.text.substr(0, 2), " of ", part.text.substr(2),
          ": write 01 to 99 for both, the larger one last");
}

void CheckBirthSequence(const Part& part) {
  const char child = part.text[0];
  const char total = part.text[2];
  Require(part.text[1] == '/' && IsDigit(child) && IsDigit(total) && child > '0' && child <= total, part,
          "takes the child's number and that of all, such as 1/2, not ", part.text);
}

void CheckOneOf(const Part& part, std::string_view allowed, std::string_view sentence) {
  Require(allowed.find(part.text[0]) != std::string_view::npos, part, "takes ", sentence, " as character ",
          part.begin + 1, " of its data, not ", Shown(part.text[0]));
}

// Ten digits, compared as texts.
void CheckAngle(const Part& part, std::string_view name, std::string_view most) {
  Require(part.text <= most, part, "has the impossible ", name, " ", part.text, ": write 0000000000 to ",
          most);
}

bool IsHexDigit(char c) {
  return IsDigit(c) || (ToUpper(c) >= 'A' && ToUpper(c) <= 'F');
}

void CheckPercentCodes(const Part& part) {
  for (std::size_t at = part.text.find('%'); at != std::string_view::npos; at = part.text.find('%', at + 1)) {
    const std::string_view code = part.text.substr(at + 1, 2);
    Require(code.size() == 2 && std::all_of(code.begin(), code.end(), IsHexDigit), part,
            "takes \"%\" only in front of two hexadecimal digits: write %25 for the one at character ",
            part.begin + at + 1, " of its data");
  }
}

void CheckContent(const Part& part, Gs1Check check) {
  switch (check) {
    case Gs1Check::kNone:
      return;
    case Gs1Check::kCheckDigit:
      return CheckCheckDigit(part);
    case Gs1Check::kCheckPair:
      return CheckCheckPair(part);
    case Gs1Check::kCompanyPrefix:
      return CheckCompanyPrefix(part);
    case Gs1Check::kMonthOrDay:
      return CheckDate(part, true);
    case Gs1Check::kDay:
      return CheckDate(part, false);
    case Gs1Check::kLastDay:
      return CheckLastDay(part);
    case Gs1Check::kLongDay:
      return CheckLongDay(part);
    case Gs1Check::kHour:
      return CheckHour(part);
    case Gs1Check::kMinute:
      return CheckMinute(part);
    case Gs1Check::kTime:
      return CheckTime(part, false);
    case Gs1Check::kTimeIfAny:
      return CheckTime(part, true);
    case Gs1Check::kCountry:
      return CheckCountry(part, false);
    case Gs1Check::kCountryIfAny:
      return CheckCountry(part, true);
    case Gs1Check::kCountryLetters:
      return CheckCountryLetters(part);
    case Gs1Check::kPieceOfTotal:
      return CheckPieceOfTotal(part);
    case Gs1Check::kYesNo:
      return CheckOneOf(part, "01", "1 for yes or 0 for no");
    case Gs1Check::kLatitude:
      return CheckAngle(part, "latitude", "1800000000");
    case Gs1Check::kLongitude:
      return CheckAngle(part, "longitude", "3600000000");
    case Gs1Check::kZero:
      return CheckOneOf(part, "0", "0");
    case Gs1Check::kWinding:
      return CheckOneOf(part, "019", "the winding direction 0, 1 or 9");
    case Gs1Check::kSex:
      return CheckOneOf(part, "0129", "0, 1, 2 or 9");
    case Gs1Check::kMinus:
      return CheckOneOf(part, "-", "\"-\" or nothing");
    case Gs1Check::kIban:
      return CheckIban(part);
    case Gs1Check::kPercentCodes:
      return CheckPercentCodes(part);
    case Gs1Check::kNoLeadingZero:
      Require(part.text.size() == 1 || part.text[0] != '0', part, "takes a number without zeros in front");
      return;
    case Gs1Check::kBirthSequence:
      return CheckBirthSequence(part);
    case Gs1Check::kImporterIndex:
      Require(part.text != "=", part, "takes a letter, a digit, \"-\" or \"_\" as its last character");
      return;
  }
}

}  // namespace

void CheckGs1Element(const Gs1Element& element) {
  const Gs1ApplicationIdentifier* rule = FindGs1ApplicationIdentifier(element.ai);
  if (rule == nullptr) {
    Refuse(element, "does not exist");
  }
  CheckAnyCharacter(element);
  CheckLength(element, *rule);
  const std::string_view data = element.data;
  std::size_t begin = 0;
  for (const Gs1Component& component : rule->Components()) {
    if (component.optional && begin == data.size()) {
      return;
    }
    const Part part = {element, begin, data.substr(begin, component.maxLength)};
    CheckCharacters(part, component.characters);
    Require(part.text.size() >= component.minLength, part, "takes ", static_cast<int>(component.minLength),
            " characters from character ", begin + 1, " of its data on, but ", part.text.size(),
            part.text.size() == 1 ? " is" : " are", " given");
    CheckContent(part, component.check);
    begin += part.text.size();
  }
}

}  // namespace barcode
