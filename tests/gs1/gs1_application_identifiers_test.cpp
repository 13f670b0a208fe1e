#include "gs1/gs1_application_identifiers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <set>
#include <string>

#include "gs1/iso_countries.h"
#include "support/gs1_texts.h"

namespace barcode {
namespace {

struct Lengths {
  std::string_view ai;
  std::size_t min;
  std::size_t max;
  std::size_t predefined;
};

TEST(Gs1ApplicationIdentifiers, TakeTheLengthsOfTheStandard) {
  for (const auto& [ai, min, max, predefined] : std::to_array<Lengths>({
           {"00", 18, 18, 18},  {"01", 14, 14, 14},  {"03", 14, 14, 14}, {"10", 1, 20, 0},
           {"17", 6, 6, 6},     {"20", 2, 2, 2},     {"235", 1, 28, 0},  {"242", 1, 6, 0},
           {"253", 13, 30, 0},  {"255", 13, 25, 0},  {"30", 1, 8, 0},    {"3105", 6, 6, 6},
           {"3695", 6, 6, 6},   {"37", 1, 8, 0},     {"3909", 1, 15, 0}, {"3910", 4, 18, 0},
           {"3943", 4, 4, 0},   {"3955", 6, 6, 0},   {"402", 17, 17, 0}, {"410", 13, 13, 13},
           {"417", 13, 13, 13}, {"421", 4, 12, 0},   {"423", 3, 15, 0},  {"426", 3, 3, 0},
           {"4309", 20, 20, 0}, {"4324", 10, 10, 0}, {"4331", 6, 7, 0},  {"7001", 13, 13, 0},
           {"7007", 6, 12, 0},  {"7011", 6, 10, 0},  {"7039", 4, 30, 0}, {"7040", 4, 4, 0},
           {"717", 1, 20, 0},   {"7230", 3, 30, 0},  {"7256", 1, 90, 0}, {"8001", 14, 14, 0},
           {"8003", 14, 30, 0}, {"8006", 18, 18, 0}, {"8008", 8, 12, 0}, {"8017", 18, 18, 0},
           {"8030", 1, 90, 0},  {"8111", 4, 4, 0},   {"8200", 1, 70, 0}, {"90", 1, 30, 0},
           {"99", 1, 90, 0},
       })) {
    const Gs1ApplicationIdentifier* rule = FindGs1ApplicationIdentifier(ai);
    ASSERT_NE(rule, nullptr) << ai;
    EXPECT_EQ(rule->MinLength(), min) << ai;
    EXPECT_EQ(rule->MaxLength(), max) << ai;
    EXPECT_EQ(Gs1PredefinedDataLength(ai), predefined) << ai;
  }
}

TEST(Gs1ApplicationIdentifiers, AreThoseOfTheTableAndNoOthers) {
  const std::vector<std::string> ais = test::AllGs1Ais();
  const std::set<std::string> known(ais.begin(), ais.end());
  EXPECT_EQ(known.size(), ais.size());
  EXPECT_EQ(known.size(), 537U);
  for (int number = 0; number < 100'000; ++number) {
    for (std::size_t length = 1; length <= 5; ++length) {
      std::string digits = std::to_string(number);
      if (digits.size() > length) {
        continue;
      }
      digits.insert(0, length - digits.size(), '0');
      EXPECT_EQ(FindGs1ApplicationIdentifier(digits) != nullptr, known.contains(digits)) << digits;
    }
  }
  for (const std::string_view none :
       {"",     "0",    "1",   "04",   "05",   "14",  "18",   "19",   "23", "310",  "3106", "3170", "3380",
        "3580", "3944", "418", "4327", "7012", "718", "8015", "8031", "0A", "310A", "01 ",  "-1"}) {
    EXPECT_EQ(FindGs1ApplicationIdentifier(none), nullptr) << none;
  }
}

TEST(Gs1ApplicationIdentifiers, TellTheirLengthByTwoDigits) {
  for (const std::string& ai : test::AllGs1Ais()) {
    EXPECT_EQ(Gs1AiLengthAt(ai), ai.size());
    EXPECT_EQ(Gs1AiLengthAt(ai.substr(0, 2) + "ABC"), ai.size());
  }
  for (const std::string_view none : {"", "0", "05", "1A", "A1", "45", "73", "83"}) {
    EXPECT_EQ(Gs1AiLengthAt(none), 0U) << none;
  }
}

TEST(Gs1ApplicationIdentifiers, CharactersAreThoseOfTheSets) {
  std::array<int, 4> counts{};
  for (int c = -128; c < 128; ++c) {
    for (std::size_t set = 0; set < counts.size(); ++set) {
      counts[set] += IsGs1Character(static_cast<Gs1Characters>(set), static_cast<char>(c)) ? 1 : 0;
    }
  }
  EXPECT_THAT(counts, testing::ElementsAre(10, 82, 39, 65));
  for (const char c : test::kGs1Characters) {
    EXPECT_TRUE(IsGs1Character(Gs1Characters::k82, c)) << c;
  }
  for (const char c : std::string_view(" #$@[\\]^`{|}~\x7F\x1D\xE9")) {
    EXPECT_FALSE(IsGs1Character(Gs1Characters::k82, c)) << c;
  }
}

TEST(IsoCountries, AreKnownByNumberAndByLetters) {
  std::set<std::string_view> letters;
  for (const IsoCountry& country : kIsoCountries) {
    letters.insert(country.letters);
    EXPECT_TRUE(IsIsoCountry(country.number));
    EXPECT_TRUE(IsIsoCountry(country.letters));
    EXPECT_EQ(country.letters.size(), 2U);
  }
  EXPECT_EQ(letters.size(), kIsoCountries.size());
  EXPECT_FALSE(IsIsoCountry(0));
  EXPECT_FALSE(IsIsoCountry(999));
  EXPECT_FALSE(IsIsoCountry("XX"));
  EXPECT_FALSE(IsIsoCountry("jp"));
}

}  // namespace
}  // namespace barcode
