#include "mkbarcode/gallery.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "mkbarcode/errors.h"
#include "mkbarcode/gallery_page.h"
#include "mkbarcode/gallery_samples.h"
#include "mkbarcode/program_runner.h"

namespace barcode::tool {
namespace {

using testing::HasSubstr;

Sample Code39Sample(const std::string& text) {
  Sample sample;
  sample.caption = "Caption of <" + text + ">";
  sample.request.type = &TypeOf(BARCODE_CODE39);
  sample.request.text = text;
  sample.request.size = {300, 100, false};
  return sample;
}

TEST(GallerySamples, ShowEveryTypeSeveralTimes) {
  std::map<const TypeInfo*, int> counts;
  for (const Sample& sample : GallerySamples()) {
    ++counts[sample.request.type];
  }
  for (const TypeInfo& type : AllTypes()) {
    EXPECT_GE(counts[&type], 2) << type.name;
  }
}

TEST(GallerySamples, AreInTheOrderOfTheTypesAndAllDifferent) {
  const std::vector<Sample> samples = GallerySamples();
  EXPECT_TRUE(std::is_sorted(samples.begin(), samples.end(), [](const Sample& left, const Sample& right) {
    return left.request.type->number < right.request.type->number;
  }));
  for (std::size_t i = 0; i < samples.size(); ++i) {
    EXPECT_NE(samples[i].caption, "");
    for (std::size_t j = 0; j < i; ++j) {
      EXPECT_FALSE(samples[i].request == samples[j].request) << samples[i].caption;
    }
  }
}

TEST(GallerySamples, AskForNothingThatTheirTypeDoesNotServe) {
  for (const Sample& sample : GallerySamples()) {
    EXPECT_NO_THROW(CheckRequest(sample.request)) << sample.caption;
  }
}

TEST(GallerySamples, ShowEveryOptionThatChangesASymbol) {
  std::set<OptionId> shown = {OptionId::kColumns, OptionId::kRows,
                              OptionId::kErrorLevel};  // these change none
  std::set<Form> forms;
  for (const Sample& sample : GallerySamples()) {
    forms.insert(sample.request.form);
    for (const Setting& setting : sample.request.settings) {
      shown.insert(setting.option);
    }
  }
  for (const OptionInfo& option : AllOptions()) {
    EXPECT_TRUE(shown.contains(option.id)) << option.name;
  }
  EXPECT_EQ(forms.size(), 3U);
}

// The digits of a text without its leading marker, weighted 1 and 3 from the right: 0 modulo 10 when the last
// one is a correct check digit.
int CheckSum(std::string_view digits) {
  int sum = 0;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    sum += (digits[digits.size() - 1 - i] - '0') * (i % 2 == 0 ? 1 : 3);
  }
  return sum % 10;
}

TEST(GallerySamples, CarryCorrectCheckDigits) {
  const std::map<int, std::size_t> fullLengths = {
      {BARCODE_JAN8, 8}, {BARCODE_JAN13, 13}, {BARCODE_UPC_A, 12}};
  int checked = 0;
  for (const Sample& sample : GallerySamples()) {
    std::string_view text = sample.request.text;
    if (text.starts_with("{FNC1}")) {
      text.remove_prefix(6);
    }
    const auto fullLength = fullLengths.find(sample.request.type->number);
    const bool isComplete = fullLength != fullLengths.end() && fullLength->second == text.size();
    if (isComplete || (sample.request.form == Form::kConvenience && text.size() == 44)) {
      EXPECT_EQ(CheckSum(text), 0) << text;
      ++checked;
    }
    if (text.starts_with("01") && (sample.request.type->number == BARCODE_GS1_128 ||
                                   sample.request.type->number == BARCODE_GS1_DATABAR_EXPANDED)) {
      EXPECT_EQ(CheckSum(text.substr(2, 14)), 0) << text;
      ++checked;
    }
  }
  EXPECT_GE(checked, 7);
}

TEST(GalleryPage, ShowsImagesCommandsAndCalls) {
  const DrawRequest request = Code39Sample("A$B").request;
  const std::vector<Exhibit> exhibits = {
      {"Less < more", request.type, {{"a.png", request, ""}, {"a.svg", request, "it <failed>"}}},
      {"Second", request.type, {{"b.png", request, ""}}},
  };
  const std::string page = GalleryPage(exhibits);
  EXPECT_THAT(page, HasSubstr("<h3>Less &lt; more</h3>"));
  EXPECT_THAT(page, HasSubstr("<img src=\"a.png\" alt=\"Less &lt; more\">"));
  EXPECT_THAT(page, HasSubstr("mkbarcode library code39 &#39;A$B&#39; --size 300x100 -o a.png"));
  EXPECT_THAT(page, HasSubstr("barcode_draw_1d(h, &quot;A$B&quot;, 300, 100);"));
  EXPECT_THAT(page, HasSubstr("<p class=\"failed\">it &lt;failed&gt;</p>"));
  EXPECT_THAT(page, testing::Not(HasSubstr("<img src=\"a.svg\"")));
  EXPECT_EQ(page.find("<section id=\"code39\">"), page.rfind("<section "));
  EXPECT_EQ(page.find("<a href=\"#code39\">"), page.rfind("<a "));
  EXPECT_THAT(page, HasSubstr("<a href=\"labels.html\">"));
}

TEST(GalleryPage, NeedsNothingFromElsewhere) {
  std::vector<Exhibit> exhibits;
  for (const Sample& sample : GallerySamples()) {
    exhibits.push_back({sample.caption, sample.request.type, {{"x.png", sample.request, ""}}});
  }
  std::string page = GalleryPage(exhibits);
  EXPECT_THAT(page, testing::StartsWith("<!DOCTYPE html>"));
  for (const std::string_view outside :
       {"src=\"http", "href=\"http", "src=\"//", "@import", "url(", "<script", "<link"}) {
    EXPECT_THAT(page, testing::Not(HasSubstr(outside)));
  }
}

TEST(WriteGallery, WritesImagesAndPage) {
  const ScratchDirectory scratch;
  const std::vector<Sample> samples = {Code39Sample("ABC"), Code39Sample("DEF")};
  const GalleryResult result = WriteGallery(samples, scratch.File("new/gallery"), false);
  EXPECT_EQ(result.drawn, 2U);
  EXPECT_EQ(result.types, 1U);
  EXPECT_TRUE(result.failures.empty());
  EXPECT_EQ(result.indexFile, scratch.File("new/gallery/index.html"));
  EXPECT_THAT(ReadFile(result.indexFile), HasSubstr("code39-2.svg"));
  EXPECT_THAT(ReadFile(scratch.File("new/gallery/code39-1.png")), testing::StartsWith("\x89PNG\r\n\x1A\n"));
  EXPECT_THAT(ReadFile(scratch.File("new/gallery/code39-2.svg")), testing::EndsWith("</svg>\n"));
}

TEST(WriteGallery, RecordsAFailedDrawAndGoesOn) {
  const ScratchDirectory scratch;
  const std::vector<Sample> samples = {Code39Sample("A_B"), Code39Sample("DEF")};
  testing::internal::CaptureStderr();
  const GalleryResult result = WriteGallery(samples, scratch.Path(), false);
  EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("[Code39] Invalid character in CODE39: _\n"));
  EXPECT_EQ(result.drawn, 1U);
  ASSERT_EQ(result.failures.size(), 2U);
  EXPECT_THAT(result.failures[0], testing::StartsWith("code39-1.png (Caption of <A_B>): "));
  EXPECT_THAT(result.failures[1], testing::StartsWith("code39-1.svg"));
  EXPECT_THAT(ReadFile(result.indexFile), HasSubstr("class=\"failed\""));
  EXPECT_TRUE(std::filesystem::exists(scratch.File("code39-2.png")));
  EXPECT_FALSE(std::filesystem::exists(scratch.File("code39-1.png")));
}

TEST(WriteGallery, RefusesADirectoryThatCannotBe) {
  const ScratchDirectory scratch;
  WriteFile(scratch.File("file"), "");
  const std::vector<Sample> samples = {Code39Sample("ABC")};
  EXPECT_THROW(WriteGallery(samples, scratch.File("file"), false), RunError);
  EXPECT_THROW(WriteGallery(samples, scratch.File("file/below"), false), RunError);
  EXPECT_THROW(WriteGallery({}, scratch.File("empty"), false), RunError);
}

}  // namespace
}  // namespace barcode::tool
