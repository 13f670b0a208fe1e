#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

// What the data of each application identifier (AI) consists of, by the GS1 General Specifications.
namespace barcode {

enum class Gs1Characters : std::uint8_t {
  kDigits,
  k82,  // letters, digits and !"%&'()*+,-./:;<=>?_
  k39,  // capital letters, digits and #-/
  k64,  // letters, digits and -_, with = at the end
};

// What a component holds beyond characters of its set.
enum class Gs1Check : std::uint8_t {
  kNone,
  kCheckDigit,      // modulo 10, its last digit
  kCheckPair,       // modulo 1021, its last two characters; begins with a company prefix
  kCompanyPrefix,   // begins with a GS1 Company Prefix: at least four digits
  kMonthOrDay,      // YYMMDD, where the day 00 leaves the day open
  kDay,             // YYMMDD
  kLastDay,         // YYMMDD, not before the date in front of it
  kLongDay,         // YYYYMMDD
  kHour,            // HH
  kMinute,          // MM of an hour, or SS of a minute
  kTime,            // HHMM
  kTimeIfAny,       // HHMM; 9999 says nothing of the time
  kCountry,         // three digits of ISO 3166-1
  kCountryIfAny,    // the same; 999 is none in particular
  kCountryLetters,  // two letters of ISO 3166-1
  kPieceOfTotal,    // two digits each
  kYesNo,           // 1 or 0
  kLatitude,        // degrees and 90, times ten million
  kLongitude,       // degrees and 180, times ten million
  kZero,            // 0
  kWinding,         // 0, 1 or 9
  kSex,             // ISO/IEC 5218: 0, 1, 2 or 9
  kMinus,           // -
  kIban,            // ISO 13616
  kPercentCodes,    // % only in front of two hexadecimal digits
  kNoLeadingZero,   // 0 in front only where it is alone
  kBirthSequence,   // 1/2: the first of two
  kImporterIndex,   // no =
};

struct Gs1Component {
  Gs1Characters characters = Gs1Characters::kDigits;
  std::uint8_t minLength = 0;
  std::uint8_t maxLength = 0;
  Gs1Check check = Gs1Check::kNone;
  bool optional = false;  // the data may end in front of it
};

// An AI, or several that differ in their last digits and have the same data: all from first to last, or,
// where the last digit places the decimal point, these stems with the digits 0 to lastDecimal behind them.
struct Gs1ApplicationIdentifier {
  static constexpr std::size_t kMaxComponents = 5;
  static constexpr char kNoDecimal = '\0';

  std::string_view first;
  std::string_view last;
  char lastDecimal = kNoDecimal;
  std::array<Gs1Component, kMaxComponents> components{};
  std::size_t componentCount = 0;

  constexpr std::span<const Gs1Component> Components() const { return {components.data(), componentCount}; }
  constexpr std::size_t AiLength() const { return first.size() + (lastDecimal == kNoDecimal ? 0 : 1); }
  constexpr std::size_t MinLength() const;
  constexpr std::size_t MaxLength() const;
};

constexpr std::size_t Gs1ApplicationIdentifier::MinLength() const {
  std::size_t length = 0;
  for (const Gs1Component& component : Components()) {
    length += component.optional ? 0 : component.minLength;
  }
  return length;
}

constexpr std::size_t Gs1ApplicationIdentifier::MaxLength() const {
  std::size_t length = 0;
  for (const Gs1Component& component : Components()) {
    length += component.maxLength;
  }
  return length;
}

// All of them, ascending.
std::span<const Gs1ApplicationIdentifier> Gs1ApplicationIdentifiers();

// The AI with these digits; nullptr where there is none.
const Gs1ApplicationIdentifier* FindGs1ApplicationIdentifier(std::string_view digits);

// The number of digits of the AI that this text begins with, as its first two tell; 0 where there is none.
std::size_t Gs1AiLengthAt(std::string_view text);

// The length of the data of an AI for which the standard predefines it; 0 for the others, whose data ends at
// FNC1 or with the text.
std::size_t Gs1PredefinedDataLength(std::string_view ai);

bool IsGs1Character(Gs1Characters characters, char c);

}  // namespace barcode
