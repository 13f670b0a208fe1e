#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "base/line.h"
#include "gs1/gs1_application_identifiers.h"
#include "gs1/gs1_associations.h"
#include "gs1/gs1_syntax.h"
#include "support/random_text.h"

// Random element strings that keep the rules of the GS1 General Specifications. Check digits, codes and the
// places of FNC1 are worked out here once more, apart from the library's.
namespace barcode::test {

struct Gs1Text {
  std::vector<Gs1Element> elements;
  std::string text;     // with parentheses
  std::string decoded;  // as a reader tells it: without parentheses, FNC1 between elements as 0x1D
};

// The characters of data in set 82. "#" is in set 39 only, for component and part numbers (8010).
inline constexpr std::string_view kGs1Characters =
    "!\"%&'()*+,-./0123456789:;<=>?ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz";

// Every application identifier.
inline std::vector<std::string> AllGs1Ais() {
  std::vector<std::string> ais;
  for (const Gs1ApplicationIdentifier& row : Gs1ApplicationIdentifiers()) {
    for (int stem = std::stoi(std::string(row.first)); stem <= std::stoi(std::string(row.last)); ++stem) {
      std::string ai = std::to_string(stem);
      ai.insert(0, row.first.size() - ai.size(), '0');
      if (row.lastDecimal == Gs1ApplicationIdentifier::kNoDecimal) {
        ais.push_back(ai);
        continue;
      }
      for (char decimal = '0'; decimal <= row.lastDecimal; ++decimal) {
        ais.push_back(ai + decimal);
      }
    }
  }
  return ais;
}

// Makes data of one AI after the other.
class Gs1Data {
 public:
  // alphabet: the characters that data may consist of, all digits and capital letters among them.
  Gs1Data(RandomText& random, std::string_view alphabet) : m_random(random), m_alphabet(alphabet) {}

  // Valid data for the AI, of at most maxLength characters; empty where it needs more.
  std::string Of(const Gs1ApplicationIdentifier& ai, std::size_t maxLength) {
    std::string data;
    for (const Gs1Component& component : ai.Components()) {
      const std::size_t room = maxLength - data.size();
      if (component.optional && (room < component.minLength || m_random.Number(0, 2) == 0)) {
        return data;
      }
      if (room < component.minLength) {
        return {};
      }
      const std::size_t longest = std::min<std::size_t>(component.maxLength, room);
      const int length = m_random.Number(component.minLength, static_cast<int>(longest));
      data += Component(component, static_cast<std::size_t>(length), data);
    }
    return data;
  }

 private:
  std::string Component(const Gs1Component& component, std::size_t length, const std::string& before) {
    switch (component.check) {
      case Gs1Check::kNone:
        return Characters(component.characters, length);
      case Gs1Check::kCheckDigit:
        return WithCheckDigit(Digits(length - 1));
      case Gs1Check::kCheckPair:
        return WithCheckPair(Digits(4) + Characters(component.characters, length - 6));
      case Gs1Check::kCompanyPrefix:
        return Digits(4) + Characters(component.characters, length - 4);
      case Gs1Check::kMonthOrDay:
        return Date(0);
      case Gs1Check::kDay:
        return Date(1);
      case Gs1Check::kLastDay:
        return m_random.Number(0, 1) == 0 ? before : YearsAfter(before);
      case Gs1Check::kLongDay:
        return m_random.Number(0, 4) == 0 ? "20" + Date(1) : TwoDigits(17, 21) + OrdinaryDate(1);
      case Gs1Check::kHour:
        return TwoDigits(0, 23);
      case Gs1Check::kMinute:
        return TwoDigits(0, 59);
      case Gs1Check::kTime:
        return TwoDigits(0, 23) + TwoDigits(0, 59);
      case Gs1Check::kTimeIfAny:
        return m_random.Number(0, 4) == 0 ? "9999" : TwoDigits(0, 23) + TwoDigits(0, 59);
      case Gs1Check::kCountry:
        return OneOf({"004", "036", "392", "756", "840", "894"});
      case Gs1Check::kCountryIfAny:
        return OneOf({"004", "392", "894", "999"});
      case Gs1Check::kCountryLetters:
        return OneOf({"AD", "AF", "JP", "US", "ZM", "ZW"});
      case Gs1Check::kPieceOfTotal:
        return PieceOfTotal();
      case Gs1Check::kYesNo:
        return m_random.Of("01", 1, 1);
      case Gs1Check::kLatitude:
        return m_random.Number(0, 9) == 0 ? "1800000000" : TwoDigits(0, 17) + Digits(8);
      case Gs1Check::kLongitude:
        return m_random.Number(0, 9) == 0 ? "3600000000" : TwoDigits(0, 35) + Digits(8);
      case Gs1Check::kZero:
        return "0";
      case Gs1Check::kWinding:
        return m_random.Of("019", 1, 1);
      case Gs1Check::kSex:
        return m_random.Of("0129", 1, 1);
      case Gs1Check::kMinus:
        return "-";
      case Gs1Check::kIban:
        return Iban(length);
      case Gs1Check::kPercentCodes:
        return PercentCodes(component.characters, length);
      case Gs1Check::kNoLeadingZero:
        return length == 1 ? Digits(1) : m_random.Of("123456789", 1, 1) + Digits(length - 1);
      case Gs1Check::kBirthSequence:
        return BirthSequence();
      case Gs1Check::kImporterIndex:
        return m_random.Of("0123456789ABCXYZ", 1, 1);
    }
    throw std::logic_error("a check without data");
  }

  std::string Digits(std::size_t length) {
    return m_random.Digits(static_cast<int>(length), static_cast<int>(length));
  }

  std::string TwoDigits(int low, int high) {
    const int number = m_random.Number(low, high);
    return {static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
  }

  std::string OneOf(const std::vector<std::string>& texts) {
    return texts[static_cast<std::size_t>(m_random.Number(0, static_cast<int>(texts.size()) - 1))];
  }

  std::string Characters(Gs1Characters set, std::size_t length, std::string_view without = "") {
    std::string characters;
    for (const char c : m_alphabet) {
      if (IsOf(set, c) && without.find(c) == std::string_view::npos) {
        characters += c;
      }
    }
    return m_random.Of(characters, static_cast<int>(length), static_cast<int>(length));
  }

  static bool IsOf(Gs1Characters set, char c) {
    constexpr std::string_view kDigitsAndCapitals = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    constexpr std::string_view kSmall = "abcdefghijklmnopqrstuvwxyz";
    const auto in = [c](std::string_view characters) { return characters.find(c) != std::string_view::npos; };
    switch (set) {
      case Gs1Characters::kDigits:
        return in("0123456789");
      case Gs1Characters::k82:
        return in(kGs1Characters);
      case Gs1Characters::k39:
        return in(kDigitsAndCapitals) || in("#-/");
      case Gs1Characters::k64:
        return in(kDigitsAndCapitals) || in(kSmall) || in("-_");
    }
    return false;
  }

  static std::string WithCheckDigit(const std::string& digits) {
    int sum = 0;
    for (std::size_t i = 0; i < digits.size(); ++i) {
      sum += (digits[i] - '0') * ((digits.size() - i) % 2 == 1 ? 3 : 1);
    }
    return digits + std::to_string((10 - sum % 10) % 10);
  }

  static std::string WithCheckPair(const std::string& text) {
    constexpr std::string_view kPairCharacters = "23456789ABCDEFGHJKLMNPQRSTUVWXYZ";
    int prime = 1;
    std::size_t sum = 0;
    for (auto c = text.rbegin(); c != text.rend(); ++c) {
      do {
        ++prime;
      } while (!IsPrime(prime));
      sum += static_cast<std::size_t>(prime) * kGs1Characters.find(*c);
    }
    return text + kPairCharacters[sum % 1021 / 32] + kPairCharacters[sum % 1021 % 32];
  }

  static bool IsPrime(int number) {
    for (int divisor = 2; divisor < number; ++divisor) {
      if (number % divisor == 0) {
        return false;
      }
    }
    return number > 1;
  }

  // Now and then the 29th of February.
  std::string Date(int firstDay) {
    if (m_random.Number(0, 9) == 0) {
      return OneOf({"000229", "240229", "960229"});
    }
    return OrdinaryDate(firstDay);
  }

  std::string OrdinaryDate(int firstDay) {
    return TwoDigits(0, 99) + TwoDigits(1, 12) + TwoDigits(firstDay, 28);
  }

  // YYMMDD some years later.
  std::string YearsAfter(const std::string& date) {
    const int year = (std::stoi(date.substr(0, 2)) + m_random.Number(1, 49)) % 100;
    return TwoDigits(year, year) + TwoDigits(1, 12) + TwoDigits(1, 28);
  }

  std::string PieceOfTotal() {
    const int total = m_random.Number(1, 99);
    return TwoDigits(1, total) + TwoDigits(total, total);
  }

  std::string BirthSequence() {
    const int total = m_random.Number(1, 9);
    return std::to_string(m_random.Number(1, total)) + "/" + std::to_string(total);
  }

  std::string Iban(std::size_t length) {
    const std::string country = m_random.Of("ABCDEFGHIJKLMNOPQRSTUVWXYZ", 2, 2);
    const std::string account = m_random.Of("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ",
                                            static_cast<int>(length) - 4, static_cast<int>(length) - 4);
    for (int check = 2; check <= 98; ++check) {
      const std::string digits = TwoDigits(check, check);
      if (IbanRemainder(Line(account, country, digits)) == 1) {
        return Line(country, digits, account);
      }
    }
    throw std::logic_error("an IBAN without check digits");
  }

  static int IbanRemainder(const std::string& turned) {
    int remainder = 0;
    for (const char c : turned) {
      const std::string digits = c >= 'A' ? std::to_string(c - 'A' + 10) : std::string(1, c);
      for (const char digit : digits) {
        remainder = (remainder * 10 + (digit - '0')) % 97;
      }
    }
    return remainder;
  }

  std::string PercentCodes(Gs1Characters set, std::size_t length) {
    std::string text = Characters(set, length, "%");
    if (length >= 3 && m_alphabet.find('%') != std::string_view::npos) {
      text.replace(static_cast<std::size_t>(m_random.Number(0, static_cast<int>(length) - 3)), 3,
                   OneOf({"%20", "%2F", "%E3"}));
    }
    return text;
  }

  RandomText& m_random;
  std::string_view m_alphabet;
};

// Whether "(", digits and ")" stand in the data, which would be read as the next element.
inline bool HoldsParenthesizedNumber(std::string_view data) {
  for (std::size_t at = data.find('('); at != std::string_view::npos; at = data.find('(', at + 1)) {
    const std::size_t end = data.find_first_not_of("0123456789", at + 1);
    if (end != std::string_view::npos && end > at + 1 && data[end] == ')') {
      return true;
    }
  }
  return false;
}

inline bool IsValidTogether(const std::vector<Gs1Element>& elements) {
  try {
    CheckGs1Pairs(elements);
    return true;
  } catch (const Gs1SyntaxError&) {
    return false;
  }
}

// With FNC1 behind all but the last, where the standard does not predefine the length.
inline std::string DecodedGs1(const std::vector<Gs1Element>& elements) {
  constexpr std::array<std::string_view, 22> kPredefined = {"00", "01", "02", "03", "04", "11", "12", "13",
                                                            "14", "15", "16", "17", "18", "19", "20", "31",
                                                            "32", "33", "34", "35", "36", "41"};
  std::string decoded;
  for (std::size_t i = 0; i < elements.size(); ++i) {
    decoded += elements[i].ai + elements[i].data;
    const std::string firstDigits = elements[i].ai.substr(0, 2);
    const bool predefined =
        std::find(kPredefined.begin(), kPredefined.end(), firstDigits) != kPredefined.end();
    if (i + 1 < elements.size() && !predefined) {
      decoded += '\x1D';
    }
  }
  return decoded;
}

inline Gs1Text MakeGs1Text(const std::vector<Gs1Element>& elements) {
  Gs1Text result{elements, "", DecodedGs1(elements)};
  for (const auto& [ai, data] : elements) {
    AppendPieces(result.text, '(', ai, ')', data);
  }
  return result;
}

// One to six elements, of any AIs that do not exclude each other. maxLength: of the decoded string, at least
// 4. alphabet: as in Gs1Data. Partners that the standard wants beside an AI may be missing.
inline Gs1Text RandomGs1Text(RandomText& random, std::size_t maxLength,
                             std::string_view alphabet = kGs1Characters) {
  static const std::vector<std::string> ais = AllGs1Ais();
  Gs1Data data(random, alphabet);
  std::vector<Gs1Element> elements;
  const int tries = random.Number(1, 6);
  for (int i = 0; i < tries || elements.empty(); ++i) {
    const std::string& ai = ais[static_cast<std::size_t>(random.Number(0, static_cast<int>(ais.size()) - 1))];
    const std::size_t used = elements.empty() ? 0 : DecodedGs1(elements).size() + 1;
    if (used + ai.size() >= maxLength) {
      continue;
    }
    const Gs1ApplicationIdentifier& rule = *FindGs1ApplicationIdentifier(ai);
    elements.push_back({ai, data.Of(rule, maxLength - used - ai.size())});
    if (elements.back().data.empty() || HoldsParenthesizedNumber(elements.back().data) ||
        !IsValidTogether(elements)) {
      elements.pop_back();
    }
  }
  return MakeGs1Text(elements);
}

}  // namespace barcode::test
