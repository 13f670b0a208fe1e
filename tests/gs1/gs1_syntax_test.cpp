#include "gs1/gs1_syntax.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "gs1/gs1_application_identifiers.h"
#include "gs1/gs1_element_string.h"
#include "support/gs1_texts.h"
#include "support/random_text.h"

namespace barcode {

void PrintTo(const Gs1Element& element, std::ostream* out) {
  *out << "(" << element.ai << ")" << element.data;
}

namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

// What the text is refused with; "" where it is not.
std::string Refusal(std::string_view text) {
  try {
    ParseGs1Elements(text);
    return "";
  } catch (const Gs1SyntaxError& error) {
    return error.what();
  }
}

std::string Parsed(std::string_view text) {
  return Gs1ElementsForPeople(ParseGs1Elements(text));
}

// ---- With parentheses ----

TEST(Gs1SyntaxWithParentheses, TakesElementsApart) {
  EXPECT_THAT(
      ParseGs1Elements("(01)04912345678904(17)261231(10)LOT42"),
      ElementsAre(Gs1Element{"01", "04912345678904"}, Gs1Element{"17", "261231"}, Gs1Element{"10", "LOT42"}));
  EXPECT_THAT(ParseGs1Elements("(3103)001750"), ElementsAre(Gs1Element{"3103", "001750"}));
}

TEST(Gs1SyntaxWithParentheses, Fnc1BetweenElementsSaysNothing) {
  const std::vector<Gs1Element> expected = ParseGs1Elements("(10)A(21)B");
  EXPECT_EQ(ParseGs1Elements("{FNC1}(10)A{FNC1}(21)B{FNC1}"), expected);
  EXPECT_EQ(ParseGs1Elements("\x1D(10)A\x1D(21)B\x1D"), expected);
  EXPECT_EQ(Refusal("(10)A{FNC1}21B"),
            "The application identifier 10 is followed by what is no application identifier: its data may be "
            "too long, "
            "or an FNC1 too much.");
  EXPECT_NE(Refusal("(10)A{FNC1}{FNC1}(21)B"), "");
}

TEST(Gs1SyntaxWithParentheses, ParenthesesMayBeData) {
  EXPECT_THAT(ParseGs1Elements("(10)A(B)(21)7(05)"),
              ElementsAre(Gs1Element{"10", "A(B)"}, Gs1Element{"21", "7(05)"}));
  EXPECT_THAT(ParseGs1Elements("(10)(())(310)(21))(("),
              ElementsAre(Gs1Element{"10", "(())(310)"}, Gs1Element{"21", ")(("}));
  EXPECT_THAT(ParseGs1Elements("(10)A((21)B"), ElementsAre(Gs1Element{"10", "A("}, Gs1Element{"21", "B"}));
  EXPECT_THAT(ParseGs1Elements("(10)A(1(21)B"), ElementsAre(Gs1Element{"10", "A(1"}, Gs1Element{"21", "B"}));
  EXPECT_THAT(ParseGs1Elements("(10)A(12345)"), ElementsAre(Gs1Element{"10", "A(12345)"}));
  EXPECT_THAT(ParseGs1Elements("10A(21)B"), ElementsAre(Gs1Element{"10", "A(21)B"}));
}

// An AI in parentheses is never taken as data, though the data in front is short for it.
TEST(Gs1SyntaxWithParentheses, AnAiIsNeverData) {
  EXPECT_EQ(Refusal("(10)(21)ABC"),
            "The application identifier 10 has no data, but takes 1 to 20 characters.");
  EXPECT_EQ(Refusal("(7230)A(10)B1"),
            "The application identifier 7230 takes 3 to 30 characters, but 1 is given.");
  EXPECT_EQ(Refusal("(01)0491234567890(10)A"),
            "The application identifier 01 takes 14 digits, but 13 are given; put zeros in front.");
}

TEST(Gs1SyntaxWithParentheses, RefusesWhatIsNoAi) {
  EXPECT_EQ(Refusal("(05)123"), "The application identifier 05 does not exist.");
  EXPECT_EQ(Refusal("(310)001750"),
            "The application identifiers that begin with 31 have 4 digits, and here are 3.");
  EXPECT_EQ(Refusal("(3106)001750"), "The application identifier 3106 does not exist.");
  EXPECT_EQ(Refusal("(01)04912345678904(18)261231"), "The application identifier 18 does not exist.");
  for (const std::string_view text :
       {"(", "()", "(1)", "(1", "(01", "(A1)5", "(12345)6", "((01)04912345678904", "({AI}"}) {
    EXPECT_EQ(Refusal(text),
              "The text has to begin with an application identifier, as in (01)04912345678904.")
        << text;
  }
}

TEST(Gs1SyntaxWithParentheses, RefusesBlanksBetweenElements) {
  EXPECT_EQ(Refusal("(01)04912345678904 (10)A"),
            "The application identifier 01 has a blank as character 15 of its data, which no application "
            "identifier "
            "takes.");
  EXPECT_NE(Refusal("(01)04912345678904(10)A "), "");
  EXPECT_NE(Refusal(" (01)04912345678904"), "");
  EXPECT_NE(Refusal("(01) 04912345678904"), "");
  EXPECT_NE(Refusal("(01 )04912345678904"), "");
}

// ---- Without parentheses ----

TEST(Gs1SyntaxWithoutParentheses, TakesElementsApart) {
  EXPECT_EQ(Parsed("010491234567890410LOT42"), "(01)04912345678904(10)LOT42");
  EXPECT_EQ(Parsed("10LOT42{FNC1}0104912345678904"), "(10)LOT42(01)04912345678904");
  EXPECT_EQ(Parsed("10LOT42\x1D"
                   "0104912345678904"),
            "(10)LOT42(01)04912345678904");
  EXPECT_EQ(Parsed("1726123131030017504149501101530003"
                   "2012"),
            "(17)261231(3103)001750(414)9501101530003(20)12");
  EXPECT_EQ(Parsed("40212345678901234560{FNC1}20"
                   "12"),
            "(402)12345678901234560(20)12");
}

TEST(Gs1SyntaxWithoutParentheses, Fnc1IsToleratedWhereItSaysNothing) {
  EXPECT_EQ(Parsed("{FNC1}17261231{FNC1}10A{FNC1}"), "(17)261231(10)A");
  EXPECT_EQ(Parsed("\x1D"
                   "17261231\x1D"
                   "10A\x1D"),
            "(17)261231(10)A");
  EXPECT_NE(Refusal("10A{FNC1}{FNC1}21B"), "");
}

TEST(Gs1SyntaxWithoutParentheses, MarkersSayWhereAnAiBegins) {
  EXPECT_EQ(Parsed("{AI}0104912345678904{AI}10A{FNC1}{AI}21B"), "(01)04912345678904(10)A(21)B");
  EXPECT_EQ(Parsed("{AI}10A{AI}21B"), "(10)A(21)B");
  EXPECT_EQ(Parsed("{FNC1}{AI}10A{AI}{FNC1}{AI}21B{AI}"), "(10)A(21)B");
  EXPECT_EQ(Refusal("{AI}0104912{AI}345678904"),
            "The application identifier 01 takes 14 digits, but 5 are given.");
}

TEST(Gs1SyntaxWithoutParentheses, DataOfVariableLengthRunsToTheEnd) {
  EXPECT_EQ(Parsed("10ABC17261231"), "(10)ABC17261231");
  EXPECT_EQ(Refusal("10ABCDEFGHIJ21123456789012"),
            "The application identifier 10 takes at most 20 characters, but 24 are given: an FNC1 may be "
            "missing behind "
            "its data.");
  EXPECT_EQ(
      Refusal("700112345678901232012"),
      "The application identifier 7001 takes at most 13 characters, but 17 are given: an FNC1 may be missing "
      "behind its data.");
  EXPECT_EQ(Refusal("4321110A"),
            "The application identifier 4321 takes at most 1 character, but 4 are given: an FNC1 may be "
            "missing behind "
            "its data.");
}

TEST(Gs1SyntaxWithoutParentheses, RefusesWhatIsNoAi) {
  EXPECT_EQ(Refusal("05123"), "The application identifier 05 does not exist.");
  EXPECT_EQ(Refusal("2312"), "The application identifier 231 does not exist.");
  EXPECT_EQ(Refusal("3106001750"), "The application identifier 3106 does not exist.");
  EXPECT_EQ(Refusal("310"), "The application identifiers that begin with 31 have 4 digits, and here are 3.");
  EXPECT_EQ(Refusal("31AB01"),
            "The application identifiers that begin with 31 have 4 digits, and here are 2.");
  for (const std::string_view text : {"HELLO", "1", " 0104912345678904", "A0104912345678904", "\xE9"}) {
    EXPECT_EQ(Refusal(text),
              "The text has to begin with an application identifier, as in (01)04912345678904.")
        << text;
  }
  EXPECT_THAT(Refusal("0104912345678904X"),
              StartsWith("The application identifier 01 is followed by what is no"));
  EXPECT_EQ(Refusal("0104912345"),
            "The application identifier 01 takes 14 digits, but 8 are given; put zeros in front.");
}

TEST(Gs1Syntax, RefusesNothingAndJunk) {
  constexpr std::string_view kEmpty =
      "The text is empty: write an application identifier and its data, as in (01)04912345678904.";
  for (const std::string_view text : {"", "{FNC1}", "\x1D", "{AI}", "{FNC1}{AI}"}) {
    EXPECT_EQ(Refusal(text), kEmpty) << text;
  }
  EXPECT_EQ(Refusal(std::string(4001, '(')),
            "The text has 4001 characters, but element strings have at most 4000.");
  EXPECT_EQ(Refusal(std::string(1'000'000, '1')),
            "The text has 1000000 characters, but element strings have at most 4000.");
}

// ---- The data ----

struct Refused {
  std::string_view text;
  std::string_view sentence;  // behind "The application identifier "
};

TEST(Gs1Syntax, SaysWhatIsWrongWithTheData) {
  for (
      const auto& [text, sentence] : std::to_array<Refused>({
          {"(01)0491234567890A", "01 takes a digit as character 14 of its data, not \"A\"."},
          {"(01)04912345678905", "01 has the check digit 5, but 4 would be right."},
          {"(01)4912345678904", "01 takes 14 digits, but 13 are given; put zeros in front."},
          {"(01)491234567890", "01 takes 14 digits, but 12 are given; put zeros in front."},
          {"(01)123", "01 takes 14 digits, but 3 are given."},
          {"(00)106141412345678909", "00 has the check digit 9, but 8 would be right."},
          {"(10)123456789012345678901", "10 takes 1 to 20 characters, but 21 are given."},
          {"(10)", "10 has no data, but takes 1 to 20 characters."},
          {"(10)A#B",
           "10 takes a letter, a digit or one of !\"%&'()*+,-./:;<=>?_ as character 2 of its data, not "
           "\"#\"."},
          {"(10)AB\xE9",
           "10 has the byte 0xE9 as character 3 of its data, which no application identifier takes."},
          {"(10)A\tB",
           "10 has the byte 0x09 as character 2 of its data, which no application identifier takes."},
          {"(10)A{AI}", "10 has \"{\" as character 2 of its data, which no application identifier takes."},
          {"(11)261332",
           "11 has the impossible date 261332: write year, month and day as YYMMDD, or 00 for the day where "
           "only the "
           "month is known."},
          {"(7006)260200", "7006 has the impossible date 260200: write year, month and day as YYMMDD."},
          {"(7003)2602292359", "7003 has the impossible date 260229: write year, month and day as YYMMDD."},
          {"(7003)2602282400",
           "7003 has the impossible time 2400: write hour and minute as HHMM, 0000 to 2359."},
          {"(4324)2602282360",
           "4324 has the impossible time 2360: write hour and minute as HHMM, 0000 to 2359, or 9999 for no "
           "time."},
          {"(7007)261231261230", "7007 has the last date 261230 before the first, 261231."},
          {"(7007)261231250101", "7007 has the last date 250101 before the first, 261231."},
          {"(7007)2612312", "7007 takes 6 characters from character 7 of its data on, but 1 is given."},
          {"(7250)20230229", "7250 has the impossible date 20230229: write year, month and day as YYYYMMDD."},
          {"(8008)26022824", "8008 has the impossible hour 24: write 00 to 23."},
          {"(8008)260228235960", "8008 has the impossible minute or second 60: write 00 to 59."},
          {"(8008)260228235", "8008 takes 2 characters from character 9 of its data on, but 1 is given."},
          {"(421)000123", "421 has the country code 000, which is not in ISO 3166-1: write one such as 392."},
          {"(423)392840999",
           "423 has the country code 999, which is not in ISO 3166-1: write one such as 392."},
          {"(423)39284", "423 takes 3 characters from character 4 of its data on, but 2 are given."},
          {"(7030)000A",
           "7030 has the country code 000, which is not in ISO 3166-1: write one such as 392, or 999 for "
           "none in "
           "particular."},
          {"(4307)jp", "4307 has the country code jp, which is not in ISO 3166-1: write one such as JP."},
          {"(3912)39A1", "3912 takes a digit as character 3 of its data, not \"A\"."},
          {"(8006)049123456789040302",
           "8006 has the impossible piece 03 of 02: write 01 to 99 for both, the larger one last."},
          {"(8026)049123456789040002",
           "8026 has the impossible piece 00 of 02: write 01 to 99 for both, the larger one last."},
          {"(8026)049123456789050102", "8026 has the check digit 5, but 4 would be right."},
          {"(7258)3/2", "7258 takes the child's number and that of all, such as 1/2, not 3/2."},
          {"(7258)112", "7258 takes the child's number and that of all, such as 1/2, not 112."},
          {"(4321)2", "4321 takes 1 for yes or 0 for no as character 1 of its data, not \"2\"."},
          {"(4309)18000000010000000000",
           "4309 has the impossible latitude 1800000001: write 0000000000 to 1800000000."},
          {"(4309)18000000003600000001",
           "4309 has the impossible longitude 3600000001: write 0000000000 to 3600000000."},
          {"(8003)10491234567890", "8003 takes 0 as character 1 of its data, not \"1\"."},
          {"(8001)12345123451228",
           "8001 takes the winding direction 0, 1 or 9 as character 13 of its data, not \"2\"."},
          {"(7252)3", "7252 takes 0, 1, 2 or 9 as character 1 of its data, not \"3\"."},
          {"(4331)001000+", "4331 takes \"-\" or nothing as character 7 of its data, not \"+\"."},
          {"(8007)DE89370400440532013001",
           "8007 has an IBAN with the check digits 89, but 62 would be right."},
          {"(8007)DE8937-400440532013000",
           "8007 takes an IBAN: two letters for the country, two check digits, digits and capital letters."},
          {"(8007)8937040044",
           "8007 takes an IBAN: two letters for the country, two check digits, digits and capital letters."},
          {"(4300)A%2GB",
           "4300 takes \"%\" only in front of two hexadecimal digits: write %25 for the one at character 2 "
           "of its data."},
          {"(4300)A%2",
           "4300 takes \"%\" only in front of two hexadecimal digits: write %25 for the one at character 2 "
           "of its data."},
          {"(8011)0123", "8011 takes a number without zeros in front."},
          {"(8004)49A123",
           "8004 begins with a GS1 Company Prefix, so the first 4 characters of its data have to be digits."},
          {"(8010)4912a",
           "8010 takes a capital letter, a digit, \"#\", \"-\" or \"/\" as character 5 of its data, not "
           "\"a\"."},
          {"(8030)AB/",
           "8030 takes a letter, a digit, \"-\", \"_\" or \"=\" as character 3 of its data, not \"/\"."},
          {"(7040)1AB=", "7040 takes a letter, a digit, \"-\" or \"_\" as its last character."},
          {"(8013)1987654Ad4X4bL5ttr2310c2J", "8013 has the check characters 2J, but 2K would be right."},
      })) {
    EXPECT_EQ(Refusal(text), "The application identifier " + std::string(sentence));
  }
}

TEST(Gs1Syntax, TakesWhatTheStandardAllows) {
  for (const std::string_view text : {
           "(11)260200",
           "(17)000229",
           "(7003)2402292359",
           "(4324)2602289999",
           "(7007)261231",
           "(7007)261231261231",
           "(7007)991231000102",
           "(7011)261231",
           "(7011)2612312359",
           "(7250)20000229",
           "(8008)26022823",
           "(8008)2602282359",
           "(8008)260228235959",
           "(423)392",
           "(423)392840756004894",
           "(7030)999A",
           "(3912)9781",
           "(8006)049123456789040202",
           "(4309)18000000003600000000",
           "(8003)04912345678904",
           "(8003)04912345678904A(B",
           "(253)4912345678904",
           "(253)4912345678904X",
           "(4331)001000",
           "(4331)001000-",
           "(8007)DE89370400440532013000",
           "(8007)GB82WEST12345698765432",
           "(8011)0",
           "(8010)4912A#-/",
           "(8013)1987654Ad4X4bL5ttr2310c2K",
           "(4300)A%20b%2f",
           "(8030)Ab-_=",
           "(8001)12345123451218",
       }) {
    EXPECT_EQ(Refusal(text), text == "(3949)1234" ? "The application identifier 3949 does not exist." : "")
        << text;
  }
}

TEST(Gs1Syntax, RefusesElementsThatContradict) {
  EXPECT_EQ(Parsed("(10)A(10)A"), "(10)A(10)A");
  EXPECT_EQ(Refusal("(10)A(10)B"),
            "The application identifier 10 is there twice with different data: keep one.");
  EXPECT_EQ(Refusal("(01)04912345678904(37)5"),
            "The application identifiers 01 and 37 exclude each other: keep one.");
}

// A wrong digit anywhere is noticed by the check digit.
TEST(Gs1Syntax, EveryWrongDigitIsFound) {
  test::RandomText random(5);
  test::Gs1Data data(random, test::kGs1Characters);
  for (const std::string& ai : test::AllGs1Ais()) {
    const Gs1ApplicationIdentifier& rule = *FindGs1ApplicationIdentifier(ai);
    if (rule.Components()[0].check != Gs1Check::kCheckDigit) {
      continue;
    }
    const std::string text = data.Of(rule, rule.MaxLength());
    for (std::size_t i = 0; i < rule.Components()[0].maxLength; ++i) {
      std::string wrong = text;
      wrong[i] = wrong[i] == '9' ? '0' : static_cast<char>(wrong[i] + 1);
      EXPECT_THAT(Refusal(Gs1ElementsForPeople({{ai, wrong}})), HasSubstr("would be right"))
          << ai << " " << wrong;
    }
  }
}

// ---- There and back ----

TEST(Gs1SyntaxRoundTrip, EveryApplicationIdentifier) {
  test::RandomText random(1);
  test::Gs1Data data(random, test::kGs1Characters);
  for (const std::string& ai : test::AllGs1Ais()) {
    const Gs1ApplicationIdentifier& rule = *FindGs1ApplicationIdentifier(ai);
    for (int i = 0; i < 20; ++i) {
      const std::vector<Gs1Element> elements = {{ai, data.Of(rule, rule.MaxLength())}, {"99", "END"}};
      if (ai == "99" || test::HoldsParenthesizedNumber(elements[0].data)) {
        continue;
      }
      const test::Gs1Text expected = test::MakeGs1Text(elements);
      ASSERT_EQ(ParseGs1Elements(expected.text), elements) << expected.text;
      ASSERT_EQ(ParseGs1Elements(expected.decoded), elements) << expected.text;
      ASSERT_EQ(Gs1ElementsForEncoder(elements), expected.decoded);
    }
  }
}

TEST(Gs1SyntaxRoundTrip, RandomMessages) {
  test::RandomText random(2);
  std::size_t longest = 0;
  for (int i = 0; i < 20'000; ++i) {
    const std::size_t maxLength = i % 2 == 0 ? 48 : 300;
    const test::Gs1Text expected = test::RandomGs1Text(random, maxLength);
    ASSERT_LE(expected.decoded.size(), maxLength);
    longest = std::max(longest, expected.elements.size());
    const std::vector<Gs1Element> elements = ParseGs1Elements(expected.text);
    ASSERT_EQ(elements, expected.elements) << expected.text;
    ASSERT_EQ(Gs1ElementsForPeople(elements), expected.text);
    ASSERT_EQ(Gs1ElementsForEncoder(elements), expected.decoded) << expected.text;
    ASSERT_EQ(ParseGs1Elements(expected.decoded), elements) << expected.text;
    ASSERT_EQ(ParseGs1Elements("\x1D" + expected.decoded + "\x1D"), elements) << expected.text;
    ASSERT_EQ(ReadElementString(expected.decoded).text, expected.decoded);
  }
  EXPECT_EQ(longest, 6U);
}

// Whatever a host sends, it is taken or refused with one sentence.
TEST(Gs1SyntaxRoundTrip, HostileTexts) {
  test::RandomText random(3);
  int taken = 0;
  for (int i = 0; i < 100'000; ++i) {
    std::string text = test::RandomGs1Text(random, 40).text;
    const int changes = random.Number(1, 3);
    for (int change = 0; change < changes; ++change) {
      const auto at = static_cast<std::size_t>(random.Number(0, static_cast<int>(text.size())));
      const std::string piece =
          random.Number(0, 3) == 0 ? random.Bytes(1, 2) : random.Of("()0123456789{}AI\x1D", 1, 3);
      random.Number(0, 1) == 0 ? text.insert(at, piece) : text.replace(at, piece.size(), piece);
    }
    const std::string refusal = Refusal(text);
    taken += refusal.empty() ? 1 : 0;
    if (!refusal.empty()) {
      ASSERT_THAT(refusal, StartsWith("The")) << text;
      ASSERT_THAT(refusal, EndsWith(".")) << text;
      continue;
    }
    const std::vector<Gs1Element> elements = ParseGs1Elements(text);
    ASSERT_EQ(ParseGs1Elements(Gs1ElementsForEncoder(elements)), elements) << text;
    Gs1MissingPartners(elements);
  }
  EXPECT_GT(taken, 1000);
}

}  // namespace
}  // namespace barcode
