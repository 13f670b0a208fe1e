#include "gs1/gs1_associations.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "gs1/gs1_application_identifiers.h"
#include "gs1/gs1_syntax.h"
#include "support/gs1_texts.h"

namespace barcode {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

// Elements without data: here only the AIs count.
std::vector<Gs1Element> Ais(const std::vector<std::string>& ais) {
  std::vector<Gs1Element> elements;
  elements.reserve(ais.size());
  for (const std::string& ai : ais) {
    elements.push_back({ai, ""});
  }
  return elements;
}

std::vector<std::string> Missing(const std::vector<std::string>& ais) {
  return Gs1MissingPartners(Ais(ais));
}

std::string PairRefusal(const std::vector<Gs1Element>& elements) {
  try {
    CheckGs1Pairs(elements);
    return "";
  } catch (const Gs1SyntaxError& error) {
    return error.what();
  }
}

TEST(Gs1Pairs, RefusesThoseThatExcludeEachOther) {
  EXPECT_EQ(PairRefusal(Ais({"01", "10", "02"})),
            "The application identifiers 01 and 02 exclude each other: keep one.");
  EXPECT_EQ(PairRefusal(Ais({"3932", "3921"})),
            "The application identifiers 3921 and 3932 exclude each other: keep one.");
  for (const auto& [first, second] : std::vector<std::pair<std::string, std::string>>{
           {"01", "03"},     {"01", "37"},     {"01", "255"},    {"01", "8006"},   {"02", "03"},
           {"02", "8026"},   {"03", "37"},     {"21", "235"},    {"37", "8006"},   {"3902", "3912"},
           {"3902", "3941"}, {"3922", "3950"}, {"3932", "3950"}, {"3950", "8005"}, {"3902", "8111"},
           {"3941", "8111"}, {"420", "421"},   {"422", "426"},   {"423", "426"},   {"424", "426"},
           {"425", "426"},   {"8006", "8026"}}) {
    EXPECT_NE(PairRefusal(Ais({first, second})), "") << first << " " << second;
    EXPECT_NE(PairRefusal(Ais({second, first})), "") << first << " " << second;
  }
  EXPECT_EQ(PairRefusal(Ais({"01", "10", "11", "17", "21", "30", "3103", "3922", "422"})), "");
  EXPECT_EQ(PairRefusal(Ais({"00", "02", "37", "10"})), "");
}

TEST(Gs1Pairs, TheSameTwiceHasTheSameData) {
  EXPECT_EQ(PairRefusal({{"10", "A"}, {"21", "1"}, {"10", "A"}}), "");
  EXPECT_EQ(PairRefusal({{"10", "A"}, {"10", "B"}}),
            "The application identifier 10 is there twice with different data: keep one.");
  EXPECT_EQ(
      PairRefusal({{"3102", "001234"}, {"3103", "001234"}}),
      "The application identifiers 3102 and 3103 say the same with different decimal places: keep one.");
  EXPECT_EQ(PairRefusal({{"7030", "392A"}, {"7031", "392B"}}), "");
  EXPECT_EQ(PairRefusal({{"91", "A"}, {"92", "B"}}), "");
}

TEST(Gs1MissingPartners, TellsEachInOneSentence) {
  EXPECT_THAT(Missing({"8020"}), ElementsAre("The application identifier 8020 needs 415 beside it."));
  EXPECT_THAT(Missing({"415", "8020", "3902"}), IsEmpty());
  EXPECT_THAT(Missing({"10"}),
              ElementsAre("The application identifier 10 needs 01, 02, 03, 8006 or 8026 beside it."));
  EXPECT_THAT(Missing({"01", "3922"}),
              ElementsAre("The application identifier 3922 needs 30, 31nn, 32nn, 35nn or 36nn beside it."));
  EXPECT_THAT(Missing({"02"}), ElementsAre("The application identifier 02 needs 37 beside it.",
                                           "The application identifier 02 needs 00 beside it."));
  EXPECT_THAT(Missing({"02", "37", "00"}), IsEmpty());
  EXPECT_THAT(Missing({"250", "01"}), ElementsAre("The application identifier 250 needs 21 beside it."));
  EXPECT_THAT(Missing({"3103", "3113"}),
              UnorderedElementsAre("The application identifier 3103 needs 01 or 02 beside it.",
                                   "The application identifier 3113 needs 01 or 02 beside it."));
  EXPECT_THAT(Missing({"10", "10", "01"}), IsEmpty());
  EXPECT_THAT(Missing({"10", "10"}).size(), 1U);
}

TEST(Gs1MissingPartners, AnIndicatorOf9WantsAMeasure) {
  EXPECT_THAT(
      Gs1MissingPartners({{"01", "99521234567897"}}),
      ElementsAre("The application identifier 01 with a number that begins with 9 needs 242, 30, 31nn, "
                  "32nn, 35nn, 36nn or 8001 beside it."));
  EXPECT_THAT(Gs1MissingPartners({{"01", "99521234567897"}, {"3103", "000123"}}), IsEmpty());
  EXPECT_THAT(Gs1MissingPartners({{"01", "09521234567899"}}), IsEmpty());
}

// What identifies something stands for itself, as do the AIs for which the standard names no partner.
TEST(Gs1MissingPartners, AreThoseOfTheList) {
  std::vector<std::string> alone;
  for (const std::string& ai : test::AllGs1Ais()) {
    if (Missing({ai}).empty()) {
      alone.push_back(ai);
    }
  }
  EXPECT_THAT(
      alone, ElementsAre("00", "01", "03", "253", "255", "400", "401", "402", "410", "411", "412", "413",
                         "414", "416", "417", "420", "421", "7023", "7040", "7230", "7231", "7232", "7233",
                         "7234", "7235", "7236", "7237", "7238", "7239", "7242", "8002", "8003", "8004",
                         "8006", "8009", "8010", "8013", "8014", "8017", "8018", "8030", "8110", "8112", "90",
                         "91", "92", "93", "94", "95", "96", "97", "98", "99"));
}

}  // namespace
}  // namespace barcode
