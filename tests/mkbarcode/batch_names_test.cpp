// Names of a batch: from templates, and each once.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "base/line.h"
#include "label/error.h"
#include "mkbarcode/batch/name_table.h"
#include "mkbarcode/batch/name_template.h"
#include "mkbarcode/errors.h"
#include "mkbarcode/program_runner.h"

namespace barcode::tool {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

Job SampleJob() {
  Job job;
  job.request.type = "code128";
  job.request.text = "A/B";
  job.request.module = 3;
  job.request.format = label::Format::kSvg;
  job.request.rotate = label::Rotation::kQuarter;
  job.request.strict = true;
  job.request.moduleMm = 0.25;
  job.request.foreground = Colour{1, 2, 255, 255};
  return job;
}

std::string NameOf(std::string_view text, const Job& job = SampleJob()) {
  return NameTemplate(text).NameOf(12, job);
}

std::string UsageErrorOf(std::string_view text) {
  try {
    const NameTemplate pattern(text);
  } catch (const UsageError& error) {
    return error.what();
  }
  return "none";
}

TEST(NameTemplate, HasNumbersFieldsAndBraces) {
  EXPECT_EQ(NameOf(kDefaultName), "000012.svg");
  EXPECT_EQ(NameOf("{n}"), "12");
  EXPECT_EQ(NameOf("{n:01}-{n:020}"), "12-00000000000000000012");
  EXPECT_EQ(NameOf("{type}/{module}-{rotate}-{strict}-{module_mm}-{foreground}"),
            "code128/3-90-true-0.25-#0102ff");
  EXPECT_EQ(NameOf("{{{n}}}"), "{12}");
  EXPECT_EQ(NameOf("{format}", Job()), "png");
}

TEST(NameTemplate, HasColumns) {
  const NameTemplate pattern("{sku}/{shop}-{sku}");
  EXPECT_THAT(pattern.ExtraColumns(), ElementsAre("sku", "shop"));
  Job job;
  job.extraValues = {"7", "K\xC3\xB6ln"};
  EXPECT_EQ(pattern.NameOf(1, job), "7/K\xC3\xB6ln-7");
}

TEST(NameTemplate, ValuesStayInsideTheirPart) {
  Job job;
  job.request.text = "../\\\x01\"*:<>?|\x7F\xC2\x85.\xC3\xA4";
  EXPECT_EQ(NameOf("{text}x", job), "..____________.\xC3\xA4x");
  for (const auto& [text, name] :
       {std::pair("..", "a/._/b"), {".", "a/_/b"}, {"x.", "a/x_/b"}, {"x ", "a/x_/b"}}) {
    job.request.text = text;
    EXPECT_EQ(NameOf("a/{text}/b", job), name);
  }
  job.request.text = "..";
  EXPECT_EQ(NameOf("{text}", job), "._");
}

TEST(NameTemplate, AValueThatIsMissingFailsTheRow) {
  try {
    NameOf("{caption}");
    FAIL();
  } catch (const label::LabelError& error) {
    EXPECT_EQ(error.Field(), "caption");
    EXPECT_THAT(error.what(), HasSubstr("{caption}"));
  }
}

TEST(NameTemplate, MalformedOnesAreUsageErrors) {
  EXPECT_EQ(UsageErrorOf("a/{n}.{format}"), "none");
  for (const char* const text : {"", "a//{n}", "{n}/", "/tmp/{n}", "../{n}", "a/../{n}", "./{n}", "{n", "n}",
                                 "{}", "{n:6}", "{n:}", "{n:00}", "{n:021}", "{text:06}", "{n:0x}"}) {
    EXPECT_THAT(UsageErrorOf(text), HasSubstr("--name")) << text;
  }
}

TEST(NameTemplate, KnowsWhetherNamesTellRowsApart) {
  for (const char* const text : {"{n:06}.{format}", "x{n}y", "{text}/{n}", "{n}/{text}", "1{n}2.{format}"}) {
    EXPECT_TRUE(NameTemplate(text).IsUnique()) << text;
  }
  for (const char* const text : {"{text}", "{text}{n}", "{n}-{text}.png", "{n}{n}", "{format}", "a/{sku}"}) {
    EXPECT_FALSE(NameTemplate(text).IsUnique()) << text;
  }
}

TEST(WithNumber, StandsBeforeTheSuffix) {
  EXPECT_EQ(WithNumber("a.png", 2), "a-2.png");
  EXPECT_EQ(WithNumber("a.b/c", 3), "a.b/c-3");
  EXPECT_EQ(WithNumber("a/.hidden", 2), "a/.hidden-2");
  EXPECT_EQ(WithNumber("a.b.svg", 10), "a.b-10.svg");
}

TEST(NameTable, KnowsEachNameThatWasTaken) {
  NameTable table;
  EXPECT_FALSE(table.Contains("a"));
  EXPECT_TRUE(table.Add("a"));
  EXPECT_FALSE(table.Add("a"));
  EXPECT_TRUE(table.Contains("a"));
  EXPECT_TRUE(table.Add(""));
  EXPECT_TRUE(table.Add(std::string_view("\0", 1)));
  EXPECT_TRUE(table.Add(std::string(8, '\0')));
  EXPECT_TRUE(table.Add("abcdefgh"));
  EXPECT_TRUE(table.Add("abcdefghi"));
  EXPECT_FALSE(table.Add("abcdefghi"));
}

TEST(NameTable, TakesSixteenBytesANameAtMost) {
  NameTable table;
  for (int i = 0; i < 1'000'000; ++i) {
    ASSERT_TRUE(table.Add(Line("labels/", i, ".png")));
    // One table of many is there twice while it grows; from here on the pages do not count.
    if (i > 100'000 && i % 100 == 0) {
      ASSERT_LE(static_cast<double>(table.LargestBytes()) / i, 16) << i;
    }
  }
  for (int i = 0; i < 1'000'000; ++i) {
    ASSERT_FALSE(table.Add(Line("labels/", i, ".png")));
    ASSERT_FALSE(table.Contains(Line("labels/", i, ".svg")));
  }
}

// The largest pages there are; the bound holds from three of them for each part on.
TEST(NameTable, TakesSixteenBytesANameWithLargePagesToo) {
  NameTable table(std::size_t{1} << 16U);
  for (int i = 0; i < 1'500'000; ++i) {
    ASSERT_TRUE(table.Add(Line("labels/", i, ".png")));
    if (i > 850'000 && i % 100 == 0) {
      ASSERT_LE(static_cast<double>(table.LargestBytes()) / i, 16) << i;
    }
  }
}

TEST(NameTable, DoesTheSameInAFile) {
  const ScratchDirectory scratch;
  NameTable table(scratch.Path());
  for (int i = 0; i < 50'000; ++i) {
    ASSERT_TRUE(table.Add(Line(i)));
  }
  for (int i = 0; i < 50'000; ++i) {
    ASSERT_FALSE(table.Add(Line(i)));
  }
  EXPECT_THAT(scratch.Names(), testing::IsEmpty());
}

TEST(NameClaims, RefuseOrNumber) {
  NameTable first;
  NameClaims refusing(first, NameClaims::Repeated::kRefused);
  EXPECT_EQ(refusing.Claim("a.png"), "a.png");
  EXPECT_EQ(refusing.Claim("a.png"), std::nullopt);

  NameTable second;
  NameClaims numbering(second, NameClaims::Repeated::kNumbered);
  EXPECT_EQ(numbering.Claim("a.png"), "a.png");
  EXPECT_EQ(numbering.Claim("a-3.png"), "a-3.png");
  EXPECT_EQ(numbering.Claim("a.png"), "a-2.png");
  EXPECT_EQ(numbering.Claim("a.png"), "a-4.png");
  EXPECT_EQ(numbering.Claim("a-2.png"), "a-2-2.png");
}

TEST(NameClaims, NumberManyInOrder) {
  NameTable table;
  NameClaims claims(table, NameClaims::Repeated::kNumbered);
  EXPECT_EQ(claims.Claim("a"), "a");
  for (int i = 2; i < 20'000; ++i) {
    ASSERT_EQ(claims.Claim("a"), Line("a-", i));
  }
}

}  // namespace
}  // namespace barcode::tool
