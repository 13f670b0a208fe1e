#include "datamatrix/scheme_optimizer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "datamatrix/corpus.h"

namespace barcode::datamatrix {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr auto kAscii = Scheme::kAscii;
constexpr auto kC40 = Scheme::kC40;
constexpr auto kEdifact = Scheme::kEdifact;
constexpr auto kBase256 = Scheme::kBase256;

std::vector<SchemePlan> Optimize(std::string_view text) {
  EncoderLines lines;
  std::vector<SchemePlan> plans = OptimizePlans(text, lines);
  EXPECT_TRUE(lines.Empty());
  return plans;
}

// The plan of the channel that ends in the scheme.
SchemePlan PlanEndingIn(Scheme scheme, std::string_view text) {
  for (const SchemePlan& plan : Optimize(text)) {
    if (plan.back().scheme == scheme) {
      return plan;
    }
  }
  return {};
}

TEST(OptimizePlans, OneCompleteChannelPerSchemeThatHasTheLastByte) {
  EXPECT_THAT(Optimize("A"), SizeIs(6));
  EXPECT_THAT(Optimize("!"), SizeIs(5));       // not X12
  EXPECT_THAT(Optimize("a"), SizeIs(4));       // nor EDIFACT
  EXPECT_THAT(Optimize("aaaaaA"), SizeIs(6));  // a scheme may come back later
}

TEST(OptimizePlans, SwitchesWhereItPays) {
  const std::string digits(20, '7');
  const std::string upper = "ABCDEFGHIJKLMNOPQRSTU";
  EXPECT_THAT(PlanEndingIn(kAscii, upper + digits),
              ElementsAre(SchemeRun{kC40, 0, 21}, SchemeRun{kAscii, 21, 41}));
  EXPECT_THAT(PlanEndingIn(kC40, digits + upper),
              ElementsAre(SchemeRun{kAscii, 0, 20}, SchemeRun{kC40, 20, 41}));
  EXPECT_THAT(PlanEndingIn(kBase256, "AAAA" + std::string(20, '\xE9')),
              ElementsAre(SchemeRun{kAscii, 0, 4}, SchemeRun{kBase256, 4, 24}));
  EXPECT_THAT(PlanEndingIn(kEdifact, "!#%&()+,-./:;<=?"), ElementsAre(SchemeRun{kEdifact, 0, 16}));
}

TEST(OptimizePlans, ComparesOpenTripletsAsFractions) {
  // C40 from the start: 1 + 4/3 codewords; from ASCII: 1 + 1 + 2/3. Counted in whole codewords both are three
  // and the lower scheme would be taken.
  EXPECT_THAT(PlanEndingIn(kC40, "A1"), ElementsAre(SchemeRun{kC40, 0, 2}));
}

TEST(OptimizePlans, EqualLengthsKeepTheLowerScheme) {
  // The last byte in ASCII: seven codewords behind ASCII, behind C40 and behind X12.
  EXPECT_THAT(PlanEndingIn(kAscii, "ABCDEF\x01"), ElementsAre(SchemeRun{kAscii, 0, 7}));
  // Nine behind C40 and behind X12, ten behind ASCII.
  EXPECT_THAT(PlanEndingIn(kAscii, "ABCDEFGHI\x01"),
              ElementsAre(SchemeRun{kC40, 0, 9}, SchemeRun{kAscii, 9, 10}));
}

TEST(OptimizePlans, PlansCoverTheTextWithoutGaps) {
  Corpus corpus(5);
  for (int round = 0; round < 2000; ++round) {
    const std::string text = corpus.Mixed(60);
    for (const SchemePlan& plan : Optimize(text)) {
      std::size_t position = 0;
      for (std::size_t i = 0; i < plan.size(); ++i) {
        ASSERT_EQ(plan[i].begin, position);
        ASSERT_LT(plan[i].begin, plan[i].end);
        ASSERT_TRUE(i == 0 || plan[i].scheme != plan[i - 1].scheme);
        position = plan[i].end;
      }
      ASSERT_EQ(position, text.size());
    }
  }
}

TEST(OptimizePlans, FatalChannelsEndTheEncoding) {
  EncoderLines lines;
  EXPECT_THAT(OptimizePlans(std::string(6000, '\xE9'), lines), IsEmpty());
  EXPECT_THAT(lines.Text(), HasSubstr("Can't push input word, encoded length exceeds limits!\n"));
  EXPECT_THAT(lines.Text(), HasSubstr("Encoding length out of range!\n"));
}

TEST(FixedPlan, WholeTextInTheScheme) {
  EncoderLines lines;
  EXPECT_EQ(FixedPlan("ABC", kC40, lines), (SchemePlan{{kC40, 0, 3}}));
  EXPECT_EQ(FixedPlan("ABa", kEdifact, lines), std::nullopt);
}

}  // namespace
}  // namespace barcode::datamatrix
