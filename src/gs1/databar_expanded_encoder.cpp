#include "gs1/databar_expanded_encoder.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <span>
#include <stdexcept>

#include "base/ascii.h"
#include "gs1/databar_characters.h"
#include "gs1/databar_rows.h"
#include "gs1/databar_tables.h"
#include "gs1/gs1_element_string.h"

namespace barcode {
namespace {

constexpr std::size_t kBitsPerCharacter = 12;
constexpr std::size_t kFewestDataCharacters = 3;
constexpr std::size_t kMostDataCharacters = 21;
constexpr std::size_t kMostBits = kMostDataCharacters * kBitsPerCharacter;

// The second bit of the variable length field says whether the symbol has more characters than this.
constexpr std::size_t kLongSymbol = 14;

// ---- Encodation methods ----

// The beginning of the bits, and the text that is left for the general-purpose field. Methods of fixed length
// have neither a length field nor a general-purpose field.
struct Header {
  BitText bits;
  std::size_t lengthField = 0;  // position of its two bits; 0: none
  std::string_view rest;
};

constexpr std::size_t kGtinEnd = 16;  // AI 01 and 14 digits

bool StartsWithGtin(std::string_view text) {
  return text.size() >= kGtinEnd && text.starts_with("01") && AllDigits(text.substr(0, kGtinEnd));
}

std::uint32_t NumberAt(std::string_view text, std::size_t position, std::size_t count) {
  std::uint32_t number = 0;
  std::from_chars(text.data() + position, text.data() + position + count, number);
  return number;
}

// Digits 2 to 13 of the GTIN, three to each ten bits. Its check digit is not sent.
void AppendGtin(BitText& bits, std::string_view text) {
  for (std::size_t position = 3; position < kGtinEnd - 1; position += 3) {
    AppendBits(bits, NumberAt(text, position, 3), 10);
  }
}

// The first bit of every symbol says that no two-dimensional component belongs to it.
Header StartHeader(std::string_view prefix) {
  Header header;
  header.bits.push_back('0');
  header.bits.append(prefix);
  return header;
}

Header StartVariableHeader(std::string_view prefix) {
  Header header = StartHeader(prefix);
  header.lengthField = header.bits.size();
  header.bits += "00";
  return header;
}

// GTIN with a weight in 15 bits: kilograms with three decimals (AI 3103), pounds with two or three (3202,
// 3203).
std::optional<Header> ShortWeightHeader(std::string_view text) {
  constexpr std::size_t kLength = kGtinEnd + 4 + 6;
  if (text.size() != kLength || !AllDigits(text)) {
    return std::nullopt;
  }
  struct Method {
    std::string_view ai;
    std::string_view prefix;
    std::uint32_t largest;
    std::uint32_t offset;
  };
  static constexpr std::array<Method, 3> kMethods = {
      {{"3103", "0100", 32767, 0}, {"3202", "0101", 9999, 0}, {"3203", "0101", 22767, 10000}}};
  const std::uint32_t weight = NumberAt(text, kGtinEnd + 4, 6);
  for (const auto& [ai, prefix, largest, offset] : kMethods) {
    if (text.substr(kGtinEnd, 4) != ai || weight > largest) {
      continue;
    }
    Header header = StartHeader(prefix);
    AppendGtin(header.bits, text);
    AppendBits(header.bits, weight + offset, 15);
    return header;
  }
  return std::nullopt;
}

struct DateField {
  std::uint32_t kind;  // 0 to 3 for AI 11, 13, 15, 17
  std::uint32_t value;
};

// `field`: nothing, or AI and YYMMDD in digits.
std::optional<DateField> ReadDate(std::string_view field) {
  constexpr std::uint32_t kNoDate = 38400;
  if (field.empty()) {
    return DateField{0, kNoDate};
  }
  const std::uint32_t ai = NumberAt(field, 0, 2);
  const std::uint32_t year = NumberAt(field, 2, 2);
  const std::uint32_t month = NumberAt(field, 4, 2);
  const std::uint32_t day = NumberAt(field, 6, 2);
  const bool dateAi = ai == 11 || ai == 13 || ai == 15 || ai == 17;
  if (!dateAi || month < 1 || month > 12 || day > 31) {
    return std::nullopt;
  }
  return DateField{(ai - 11) / 2, (year * 12 + month - 1) * 32 + day};
}

// GTIN with a weight of at most 99999 in kilograms (AI 310x) or pounds (320x), and perhaps a date.
std::optional<Header> WeightAndDateHeader(std::string_view text) {
  constexpr std::size_t kWeightEnd = kGtinEnd + 4 + 6;
  constexpr std::size_t kDateEnd = kWeightEnd + 2 + 6;
  if ((text.size() != kWeightEnd && text.size() != kDateEnd) || !AllDigits(text)) {
    return std::nullopt;
  }
  const std::string_view weightAi = text.substr(kGtinEnd, 3);
  const std::optional<DateField> date = ReadDate(text.substr(kWeightEnd));
  const std::uint32_t weight = NumberAt(text, kGtinEnd + 4, 6);
  if ((weightAi != "310" && weightAi != "320") || weight > 99999 || !date) {
    return std::nullopt;
  }
  Header header = StartHeader("0111");
  AppendBits(header.bits, 2 * date->kind + (weightAi == "320" ? 1 : 0), 3);
  AppendGtin(header.bits, text);
  AppendBits(header.bits, NumberAt(text, kGtinEnd + 3, 1) * 100000 + weight, 20);
  AppendBits(header.bits, date->value, 16);
  return header;
}

// GTIN with a price (AI 392x), in the other form with a currency before the price (393x).
std::optional<Header> PriceHeader(std::string_view text) {
  constexpr std::size_t kAiEnd = kGtinEnd + 4;
  constexpr std::size_t kCurrencyEnd = kAiEnd + 3;
  if (text.size() <= kAiEnd || text[kAiEnd - 1] < '0' || text[kAiEnd - 1] > '3') {
    return std::nullopt;
  }
  const std::string_view ai = text.substr(kGtinEnd, 3);
  const bool currency = ai == "393";
  if (ai != "392" && !currency) {
    return std::nullopt;
  }
  if (currency && (text.size() <= kCurrencyEnd || !AllDigits(text.substr(kAiEnd, 3)))) {
    return std::nullopt;
  }
  Header header = StartVariableHeader(currency ? "01101" : "01100");
  AppendGtin(header.bits, text);
  AppendBits(header.bits, NumberAt(text, kAiEnd - 1, 1), 2);
  if (currency) {
    AppendBits(header.bits, NumberAt(text, kAiEnd, 3), 10);
  }
  header.rest = text.substr(currency ? kCurrencyEnd : kAiEnd);
  return header;
}

Header GtinHeader(std::string_view text) {
  Header header = StartVariableHeader("1");
  AppendBits(header.bits, NumberAt(text, 2, 1), 4);
  AppendGtin(header.bits, text);
  header.rest = text.substr(kGtinEnd);
  return header;
}

Header GeneralHeader(std::string_view text) {
  Header header = StartVariableHeader("00");
  header.rest = text;
  return header;
}

Header ChooseMethod(std::string_view text) {
  if (!StartsWithGtin(text)) {
    return GeneralHeader(text);
  }
  // Items of variable measure have GTINs that begin with 9; only these have the shorter methods.
  if (text[2] == '9') {
    for (const auto method : {ShortWeightHeader, WeightAndDateHeader, PriceHeader}) {
      if (std::optional<Header> header = method(text)) {
        return *std::move(header);
      }
    }
  }
  return GtinHeader(text);
}

// ---- Symbol size and bits ----

// The number of data characters of the smallest symbol that holds so many bits. A row never holds a single
// symbol character (the check character counts as one).
std::size_t DataCharacterCount(std::size_t bits, std::size_t pairsPerRow) {
  std::size_t count = std::max((bits + kBitsPerCharacter - 1) / kBitsPerCharacter, kFewestDataCharacters);
  if (pairsPerRow != kUnstacked && (count + 1) % (2 * pairsPerRow) == 1) {
    ++count;
  }
  if (count > kMostDataCharacters) {
    throw std::length_error("Input too long");
  }
  return count;
}

void AppendLastDigit(BitText& bits, char lastDigit, std::size_t pairsPerRow) {
  constexpr std::size_t kShortForm = 4;
  constexpr std::size_t kPairForm = 7;
  const std::size_t count = DataCharacterCount(bits.size() + kShortForm, pairsPerRow);
  const std::size_t room = count * kBitsPerCharacter - bits.size();
  const auto digit = static_cast<std::uint32_t>(lastDigit - '0');
  if (room < kPairForm) {
    AppendBits(bits, digit + 1, kShortForm);
  } else {
    AppendBits(bits, 11 * digit + 18, kPairForm);  // the digit and an FNC1
  }
}

void AppendPadding(BitText& bits, GeneralFieldMode mode, std::size_t end) {
  if (mode == GeneralFieldMode::kNumeric) {
    bits += "0000";
  }
  while (bits.size() < end) {
    bits += "00100";
  }
  bits.resize(end);
}

std::vector<std::uint32_t> CutCharacters(const BitText& bits) {
  std::vector<std::uint32_t> characters;
  for (std::size_t position = 0; position < bits.size(); position += kBitsPerCharacter) {
    std::uint32_t value = 0;
    for (const char bit : bits.substr(position, kBitsPerCharacter)) {
      value = value * 2 + (bit == '1' ? 1 : 0);
    }
    characters.push_back(value);
  }
  return characters;
}

// ---- Symbol structure ----

using Character = std::array<std::uint8_t, 8>;

constexpr std::size_t kNarrowFinderModules = kDataBarFinderModules - kWideFinderModules;

// The symbol characters in order, the check character first, and the finders between them.
class Segments {
 public:
  explicit Segments(std::span<const std::uint32_t> dataCharacters)
      : m_count(dataCharacters.size() + 1), m_finders(kDataBarExpandedSequences[Pairs() - 2]) {
    std::uint32_t sum = 0;
    for (std::size_t i = 1; i < m_count; ++i) {
      m_characters[i] = EncodeDataBarCharacter<8>(kDataBarExpandedCharacters, dataCharacters[i - 1]);
      sum += DataBarWeightedSum(m_characters[i], WeightsAt(i));
    }
    const auto check =
        static_cast<std::uint32_t>(kDataBarExpandedModulus * (m_count - 4) + sum % kDataBarExpandedModulus);
    m_characters[0] = EncodeDataBarCharacter<8>(kDataBarExpandedCharacters, check);
  }

  std::size_t Pairs() const { return (m_count + 1) / 2; }

  // Adds a pair to a row: a character, the finder, and the next character mirrored. The last pair of a symbol
  // may lack the second one. Returns where the wide elements of the finder begin.
  std::size_t AddPair(DataBarRowBuilder& row, std::size_t pair) const {
    row.Add(m_characters[2 * pair]);
    const std::size_t finder = row.Modules();
    const DataBarFinder& pattern = kDataBarExpandedFinders[Letter(pair)];
    const bool mirrored = IsMirrored(pair);
    mirrored ? row.AddReversed(pattern) : row.Add(pattern);
    if (2 * pair + 1 < m_count) {
      row.AddReversed(m_characters[2 * pair + 1]);
    }
    return mirrored ? finder + kNarrowFinderModules : finder;
  }

 private:
  std::size_t Letter(std::size_t pair) const { return static_cast<std::size_t>(m_finders[pair] - 'A'); }

  // Every second finder is of version 2.
  static bool IsMirrored(std::size_t pair) { return pair % 2 == 1; }

  // Each finder version has a row of weights for either side; the check character at A1's left has none.
  std::span<const std::uint8_t> WeightsAt(std::size_t character) const {
    const std::size_t pair = character / 2;
    const std::size_t row = 4 * Letter(pair) + (IsMirrored(pair) ? 2 : 0) + character % 2 - 1;
    return std::span(kDataBarExpandedWeights).subspan(8 * row, 8);
  }

  std::size_t m_count;
  std::string_view m_finders;
  std::array<Character, kMostDataCharacters + 1> m_characters{};
};

// A row of pairs with the separator that stands next to it, above or below.
struct PairRow {
  DataBarModuleRow modules;
  DataBarModuleRow separator;
};

PairRow MakePairRow(const Segments& segments, std::size_t first, std::size_t last) {
  DataBarRowBuilder row(first % 2 == 1);
  row.AddGuard();
  std::vector<std::size_t> finders;
  for (std::size_t pair = first; pair < last; ++pair) {
    finders.push_back(segments.AddPair(row, pair));
  }
  row.AddGuard();
  return {row.Row(), AdjacentSeparator(row.Row(), finders)};
}

// With an even number of pairs per row every second row is mirrored, so that it begins with a bar. A last row
// that would not do so is shifted by one module instead.
void Arrange(PairRow& row, bool oddPairs) {
  for (DataBarModuleRow* modules : {&row.modules, &row.separator}) {
    if (oddPairs) {
      modules->insert(modules->begin(), 0);
    } else {
      std::reverse(modules->begin(), modules->end());
    }
  }
}

std::vector<PairRow> MakePairRows(const Segments& segments, std::size_t pairsPerRow) {
  const std::size_t perRow = pairsPerRow == kUnstacked ? segments.Pairs() : pairsPerRow;
  std::vector<PairRow> rows;
  for (std::size_t first = 0; first < segments.Pairs(); first += perRow) {
    const std::size_t last = std::min(first + perRow, segments.Pairs());
    PairRow& row = rows.emplace_back(MakePairRow(segments, first, last));
    if (perRow % 2 == 0 && rows.size() % 2 == 0) {
      Arrange(row, (last - first) % 2 == 1);
    }
    const std::size_t width = rows.front().modules.size();
    row.modules.resize(width, 0);
    row.separator.resize(width, 0);
  }
  return rows;
}

std::vector<StackedRow> WithSeparators(const std::vector<PairRow>& pairRows) {
  std::vector<StackedRow> rows;
  for (std::size_t i = 0; i < pairRows.size(); ++i) {
    if (i > 0) {
      rows.push_back({ElementWidths(pairRows[i - 1].separator), 1});
      rows.push_back({ElementWidths(MiddleSeparator(pairRows[i].modules.size())), 1});
      rows.push_back({ElementWidths(pairRows[i].separator), 1});
    }
    rows.push_back({ElementWidths(pairRows[i].modules), std::nullopt});
  }
  return rows;
}

}  // namespace

std::optional<DataBarExpandedSymbol> EncodeDataBarExpanded(std::string_view text, std::size_t pairsPerRow) {
  const Gs1ElementString elements = ReadElementString(text);
  if (elements.text.empty()) {
    return std::nullopt;
  }
  if (!IsGeneralFieldText(elements.text)) {
    throw std::invalid_argument("Invalid characters in input data");
  }
  const BitText bits = DataBarExpandedBits(elements.text, pairsPerRow);
  const Segments segments(CutCharacters(bits));
  return DataBarExpandedSymbol{WithSeparators(MakePairRows(segments, pairsPerRow)), HumanReadable(elements)};
}

BitText DataBarExpandedBits(std::string_view elements, std::size_t pairsPerRow) {
  Header header = ChooseMethod(elements);
  BitText& bits = header.bits;
  if (header.lengthField == 0) {
    return bits;
  }
  const GeneralField field = EncodeGeneralField(header.rest, kMostBits);
  bits += field.bits;
  if (field.lastDigit != '\0') {
    AppendLastDigit(bits, field.lastDigit, pairsPerRow);
  }
  const std::size_t count = DataCharacterCount(bits.size(), pairsPerRow);
  AppendPadding(bits, field.mode, count * kBitsPerCharacter);
  const std::size_t symbolCharacters = count + 1;
  bits[header.lengthField] = symbolCharacters % 2 == 1 ? '1' : '0';
  bits[header.lengthField + 1] = symbolCharacters > kLongSymbol ? '1' : '0';
  return bits;
}

}  // namespace barcode
