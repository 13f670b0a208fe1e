#include "gs1/gs1_application_identifiers.h"

#include <algorithm>
#include <initializer_list>

#include "base/ascii.h"
#include "gs1/gs1_ai_tables.h"

namespace barcode {
namespace {

// ---- Components ----

constexpr Gs1Component N(std::uint8_t length, Gs1Check check = Gs1Check::kNone) {
  return {Gs1Characters::kDigits, length, length, check, false};
}

constexpr Gs1Component UpToN(std::uint8_t length, Gs1Check check = Gs1Check::kNone) {
  return {Gs1Characters::kDigits, 1, length, check, false};
}

constexpr Gs1Component X(std::uint8_t length, Gs1Check check = Gs1Check::kNone) {
  return {Gs1Characters::k82, length, length, check, false};
}

constexpr Gs1Component UpToX(std::uint8_t length, Gs1Check check = Gs1Check::kNone) {
  return {Gs1Characters::k82, 1, length, check, false};
}

constexpr Gs1Component Optional(Gs1Component component) {
  component.optional = true;
  return component;
}

// GMN and HIDRI: a company prefix of at least four digits and two check characters.
constexpr Gs1Component kModelNumber = {Gs1Characters::k82, 6, 25, Gs1Check::kCheckPair, false};
constexpr Gs1Component kPartNumber = {Gs1Characters::k39, 4, 30, Gs1Check::kCompanyPrefix, false};
constexpr Gs1Component kSignature = {Gs1Characters::k64, 1, 90, Gs1Check::kNone, false};
constexpr Gs1Component kImporter = {Gs1Characters::k64, 1, 1, Gs1Check::kImporterIndex, false};
constexpr Gs1Component kCompanyKey = {Gs1Characters::k82, 4, 30, Gs1Check::kCompanyPrefix, false};
constexpr Gs1Component kBankAccount = {Gs1Characters::k82, 5, 34, Gs1Check::kIban, false};

// ---- Rows ----

using Components = std::initializer_list<Gs1Component>;

// The AIs from first to last.
constexpr Gs1ApplicationIdentifier Range(std::string_view first, std::string_view last,
                                         Components components) {
  Gs1ApplicationIdentifier row{first, last};
  for (const Gs1Component& component : components) {
    row.components[row.componentCount++] = component;
  }
  return row;
}

constexpr Gs1ApplicationIdentifier One(std::string_view ai, Components components) {
  return Range(ai, ai, components);
}

// The AIs that begin with stems from first to last and end with a digit from 0 to lastDecimal.
constexpr Gs1ApplicationIdentifier Decimals(std::string_view first, std::string_view last, char lastDecimal,
                                            Components components) {
  Gs1ApplicationIdentifier row = Range(first, last, components);
  row.lastDecimal = lastDecimal;
  return row;
}

using enum Gs1Check;

constexpr auto kRows = std::to_array<Gs1ApplicationIdentifier>({
    One("00", {N(18, kCheckDigit)}),
    Range("01", "03", {N(14, kCheckDigit)}),
    One("10", {UpToX(20)}),
    Range("11", "13", {N(6, kMonthOrDay)}),
    Range("15", "17", {N(6, kMonthOrDay)}),
    One("20", {N(2)}),
    Range("21", "22", {UpToX(20)}),
    One("235", {UpToX(28)}),
    Range("240", "241", {UpToX(30)}),
    One("242", {UpToN(6)}),
    One("243", {UpToX(20)}),
    Range("250", "251", {UpToX(30)}),
    One("253", {N(13, kCheckDigit), Optional(UpToX(17))}),
    One("254", {UpToX(20)}),
    One("255", {N(13, kCheckDigit), Optional(UpToN(12))}),
    One("30", {UpToN(8)}),
    Decimals("310", "316", '5', {N(6)}),
    Decimals("320", "337", '5', {N(6)}),
    Decimals("340", "357", '5', {N(6)}),
    Decimals("360", "369", '5', {N(6)}),
    One("37", {UpToN(8)}),
    Decimals("390", "390", '9', {UpToN(15)}),
    Decimals("391", "391", '9', {N(3), UpToN(15)}),
    Decimals("392", "392", '9', {UpToN(15)}),
    Decimals("393", "393", '9', {N(3), UpToN(15)}),
    Decimals("394", "394", '3', {N(4)}),
    Decimals("395", "395", '5', {N(6)}),
    One("400", {UpToX(30)}),
    One("401", {kCompanyKey}),
    One("402", {N(17, kCheckDigit)}),
    One("403", {UpToX(30)}),
    Range("410", "417", {N(13, kCheckDigit)}),
    One("420", {UpToX(20)}),
    One("421", {N(3, kCountry), UpToX(9)}),
    One("422", {N(3, kCountry)}),
    One("423", {N(3, kCountry), Optional(N(3, kCountry)), Optional(N(3, kCountry)), Optional(N(3, kCountry)),
                Optional(N(3, kCountry))}),
    One("424", {N(3, kCountry)}),
    One("425", {N(3, kCountry), Optional(N(3, kCountry)), Optional(N(3, kCountry)), Optional(N(3, kCountry)),
                Optional(N(3, kCountry))}),
    One("426", {N(3, kCountry)}),
    One("427", {UpToX(3)}),
    Range("4300", "4301", {UpToX(35, kPercentCodes)}),
    Range("4302", "4306", {UpToX(70, kPercentCodes)}),
    One("4307", {X(2, kCountryLetters)}),
    One("4308", {UpToX(30)}),
    One("4309", {N(10, kLatitude), N(10, kLongitude)}),
    Range("4310", "4311", {UpToX(35, kPercentCodes)}),
    Range("4312", "4316", {UpToX(70, kPercentCodes)}),
    One("4317", {X(2, kCountryLetters)}),
    One("4318", {UpToX(20)}),
    One("4319", {UpToX(30)}),
    One("4320", {UpToX(35, kPercentCodes)}),
    Range("4321", "4323", {N(1, kYesNo)}),
    Range("4324", "4325", {N(6, kDay), N(4, kTimeIfAny)}),
    One("4326", {N(6, kDay)}),
    Range("4330", "4333", {N(6), Optional(X(1, kMinus))}),
    One("7001", {N(13)}),
    One("7002", {UpToX(30)}),
    One("7003", {N(6, kDay), N(4, kTime)}),
    One("7004", {UpToN(4)}),
    One("7005", {UpToX(12)}),
    One("7006", {N(6, kDay)}),
    One("7007", {N(6, kDay), Optional(N(6, kLastDay))}),
    One("7008", {UpToX(3)}),
    One("7009", {UpToX(10)}),
    One("7010", {UpToX(2)}),
    One("7011", {N(6, kDay), Optional(N(4, kTime))}),
    Range("7020", "7022", {UpToX(20)}),
    One("7023", {kCompanyKey}),
    Range("7030", "7039", {N(3, kCountryIfAny), UpToX(27)}),
    One("7040", {N(1), X(1), X(1), kImporter}),
    One("7041", {UpToX(4)}),
    Range("710", "717", {UpToX(20)}),
    Range("7230", "7239", {X(2), UpToX(28)}),
    One("7240", {UpToX(20)}),
    One("7241", {N(2)}),
    One("7242", {UpToX(25)}),
    One("7250", {N(8, kLongDay)}),
    One("7251", {N(8, kLongDay), N(4, kTime)}),
    One("7252", {N(1, kSex)}),
    Range("7253", "7254", {UpToX(40, kPercentCodes)}),
    One("7255", {UpToX(10, kPercentCodes)}),
    One("7256", {UpToX(90, kPercentCodes)}),
    One("7257", {UpToX(70, kPercentCodes)}),
    One("7258", {X(3, kBirthSequence)}),
    One("7259", {UpToX(40, kPercentCodes)}),
    One("8001", {N(12), N(1, kWinding), N(1)}),
    One("8002", {UpToX(20)}),
    One("8003", {N(1, kZero), N(13, kCheckDigit), Optional(UpToX(16))}),
    One("8004", {kCompanyKey}),
    One("8005", {N(6)}),
    One("8006", {N(14, kCheckDigit), N(4, kPieceOfTotal)}),
    One("8007", {kBankAccount}),
    One("8008", {N(6, kDay), N(2, kHour), Optional(N(2, kMinute)), Optional(N(2, kMinute))}),
    One("8009", {UpToX(50)}),
    One("8010", {kPartNumber}),
    One("8011", {UpToN(12, kNoLeadingZero)}),
    One("8012", {UpToX(20)}),
    Range("8013", "8014", {kModelNumber}),
    Range("8017", "8018", {N(18, kCheckDigit)}),
    One("8019", {UpToN(10)}),
    One("8020", {UpToX(25)}),
    One("8026", {N(14, kCheckDigit), N(4, kPieceOfTotal)}),
    One("8030", {kSignature}),
    One("8110", {UpToX(70)}),
    One("8111", {N(4)}),
    One("8112", {UpToX(70)}),
    One("8200", {UpToX(70)}),
    One("90", {UpToX(30)}),
    Range("91", "99", {UpToX(90)}),
});

// ---- What holds for every row ----

constexpr bool Ascending(const Gs1ApplicationIdentifier& a, const Gs1ApplicationIdentifier& b) {
  return a.last < b.first;
}

// The stems of a row have one length and share the first two digits' rule.
constexpr bool HasRule(const Gs1ApplicationIdentifier& row) {
  const Gs1AiRule rule = Gs1AiRuleAt(row.first);
  const Gs1AiRule lastRule = Gs1AiRuleAt(row.last);
  const bool sameRule = rule.aiLength == lastRule.aiLength && rule.totalLength == lastRule.totalLength;
  const bool predefined =
      row.MinLength() == row.MaxLength() && row.AiLength() + row.MaxLength() == rule.totalLength;
  return sameRule && row.first.size() == row.last.size() && row.first <= row.last &&
         row.AiLength() == rule.aiLength && (rule.totalLength == 0 || predefined);
}

// Every component takes something, and none that is needed follows one that may be missing.
constexpr bool IsSound(const Gs1ApplicationIdentifier& row) {
  bool optional = false;
  for (const Gs1Component& component : row.Components()) {
    if (component.minLength == 0 || component.minLength > component.maxLength ||
        (optional && !component.optional)) {
      return false;
    }
    optional = component.optional;
  }
  return row.componentCount > 0 && !row.components[0].optional;
}

// Data is taken from left to right: only the last component may vary in length.
constexpr bool IsUnambiguous(const Gs1ApplicationIdentifier& row) {
  return std::all_of(row.Components().begin(), row.Components().end() - 1, [](const Gs1Component& component) {
    return component.minLength == component.maxLength;
  });
}

static_assert(std::adjacent_find(kRows.begin(), kRows.end(), [](const auto& a, const auto& b) {
                return !Ascending(a, b);
              }) == kRows.end());
static_assert(std::all_of(kRows.begin(), kRows.end(), HasRule));
static_assert(std::all_of(kRows.begin(), kRows.end(), IsSound));
static_assert(std::all_of(kRows.begin(), kRows.end(), IsUnambiguous));

// ---- Where they stand ----

struct RowRange {
  std::uint8_t begin = 0;
  std::uint8_t end = 0;
};

// By prefix, the rows that have AIs with it.
constexpr auto kRowRanges = [] {
  std::array<RowRange, kGs1AiPrefixes> ranges{};
  for (std::size_t row = 0; row < kRows.size(); ++row) {
    for (std::size_t prefix = Gs1AiPrefix(kRows[row].first); prefix <= Gs1AiPrefix(kRows[row].last);
         ++prefix) {
      RowRange& range = ranges[prefix];
      range.begin = range.end == 0 ? static_cast<std::uint8_t>(row) : range.begin;
      range.end = static_cast<std::uint8_t>(row + 1);
    }
  }
  return ranges;
}();

constexpr std::span<const Gs1ApplicationIdentifier> RowsAt(std::size_t prefix) {
  const RowRange& range = kRowRanges[prefix];
  return std::span(kRows).subspan(range.begin, std::size_t{range.end} - range.begin);
}

bool IsLetter(char c) {
  return ToUpper(c) >= 'A' && ToUpper(c) <= 'Z';
}

bool IsOneOf(std::string_view characters, char c) {
  return characters.find(c) != std::string_view::npos;
}

}  // namespace

std::span<const Gs1ApplicationIdentifier> Gs1ApplicationIdentifiers() {
  return kRows;
}

const Gs1ApplicationIdentifier* FindGs1ApplicationIdentifier(std::string_view digits) {
  if (digits.empty() || !AllDigits(digits)) {
    return nullptr;
  }
  if (digits.size() < 2) {
    return nullptr;
  }
  // The rows ascend, and none begins as another one does.
  const std::span<const Gs1ApplicationIdentifier> rows = RowsAt(Gs1AiPrefix(digits));
  const auto row = std::partition_point(rows.begin(), rows.end(), [digits](const auto& candidate) {
    return candidate.last < digits.substr(0, candidate.last.size());
  });
  if (row == rows.end() || digits.size() != row->AiLength() ||
      digits.substr(0, row->first.size()) < row->first) {
    return nullptr;
  }
  const bool decimal = row->lastDecimal != Gs1ApplicationIdentifier::kNoDecimal;
  return decimal && digits.back() > row->lastDecimal ? nullptr : &*row;
}

std::size_t Gs1AiLengthAt(std::string_view text) {
  return Gs1AiRuleAt(text).aiLength;
}

std::size_t Gs1PredefinedDataLength(std::string_view ai) {
  const Gs1AiRule rule = Gs1AiRuleAt(ai);
  return rule.totalLength == 0 ? 0 : std::size_t{rule.totalLength} - rule.aiLength;
}

bool IsGs1Character(Gs1Characters characters, char c) {
  switch (characters) {
    case Gs1Characters::kDigits:
      return IsDigit(c);
    case Gs1Characters::k82:
      return IsDigit(c) || IsLetter(c) || IsOneOf("!\"%&'()*+,-./:;<=>?_", c);
    case Gs1Characters::k39:
      return IsDigit(c) || (c >= 'A' && c <= 'Z') || IsOneOf("#-/", c);
    case Gs1Characters::k64:
      return IsDigit(c) || IsLetter(c) || IsOneOf("-_=", c);
  }
  return false;
}

}  // namespace barcode
