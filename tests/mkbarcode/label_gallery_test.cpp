#include "mkbarcode/gallery/label_gallery.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>
#include <set>

#include "barcode_label.h"
#include "mkbarcode/errors.h"
#include "mkbarcode/gallery/label_page.h"
#include "mkbarcode/gallery/label_samples.h"
#include "mkbarcode/program_runner.h"

namespace barcode::tool {
namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::StartsWith;

LabelSample Code39Sample(const std::string& text, bool isRefused = false) {
  return {.type = &TypeOf(BARCODE_CODE39),
          .caption = "Caption of <" + text + ">",
          .members = R"("text": ")" + text + R"(")",
          .isRefused = isRefused};
}

json RequestOf(const LabelSample& sample) {
  return json::parse(RequestText(sample, "png"));
}

TEST(LabelSamples, AreInTheOrderOfTheTypesAndAllDifferent) {
  const std::vector<LabelSample> samples = LabelSamples();
  EXPECT_TRUE(
      std::is_sorted(samples.begin(), samples.end(), [](const LabelSample& left, const LabelSample& right) {
        return left.type->number < right.type->number;
      }));
  std::set<json> requests;
  for (const LabelSample& sample : samples) {
    EXPECT_NE(sample.caption, "");
    EXPECT_TRUE(requests.insert(RequestOf(sample)).second) << sample.caption;
  }
}

// The label library's own list of types, forms and fields is the measure.
TEST(LabelSamples, ShowEveryTypeEveryFormAndEveryField) {
  std::map<std::string, int> delivered;
  std::map<std::string, std::set<std::string>> forms;
  std::set<std::string> fields;
  for (const LabelSample& sample : LabelSamples()) {
    if (sample.isRefused) {
      continue;
    }
    const json request = RequestOf(sample);
    ++delivered[request["type"]];
    forms[request["type"]].insert(request.value("form", ""));
    for (const auto& [name, value] : request.items()) {
      fields.insert(name);
    }
  }
  EXPECT_TRUE(fields.contains("text_base64"));
  std::size_t formsShown = 0;
  const json types = json::parse(barcode_label_types());
  for (const json& type : types) {
    EXPECT_GE(delivered[type["name"]], 2) << type["name"];
    for (const json& option : type["options"]) {
      const std::string name = option["name"];
      EXPECT_TRUE(fields.contains(name) || name == "strict") << name;
      if (name != "form") {
        continue;
      }
      for (const json& form : option["values"]) {
        const bool isPlain = form == option.value("default", "");
        EXPECT_TRUE(forms[type["name"]].contains(isPlain ? "" : form.get<std::string>()))
            << type["name"] << ' ' << form;
        ++formsShown;
      }
    }
  }
  EXPECT_EQ(formsShown, 6U);
}

TEST(LabelSamples, ComeOutAsTheySay) {
  std::set<std::string> errors;
  std::set<std::string> warnings;
  for (const LabelSample& sample : LabelSamples()) {
    const json report = json::parse(MakeLabel(RequestText(sample, "png")).report);
    EXPECT_EQ(report["ok"], !sample.isRefused) << sample.caption << ": " << report;
    EXPECT_EQ(sample.caption.starts_with("Refused: "), sample.isRefused) << sample.caption;
    for (const json& warning : report["warnings"]) {
      warnings.insert(warning["code"]);
    }
    if (sample.isRefused) {
      errors.insert(report["error"]["code"]);
    }
  }
  EXPECT_EQ(warnings, (std::set<std::string>{"gs1_association", "light_on_dark", "missing_glyph", "no_reader",
                                             "quiet_zone", "small_module", "text_left_out", "text_shrunk"}));
  EXPECT_EQ(errors, (std::set<std::string>{"bad_text", "low_contrast", "text_left_out", "too_long",
                                           "too_small", "unknown_field"}));
}

TEST(LabelPage, ShowsPicturesDocumentsRequestAndReport) {
  const TypeInfo* const type = &TypeOf(BARCODE_CODE39);
  const std::string report =
      R"({"ok":true,"warnings":[{"code":"low_contrast","message":"Choose < or >."}],"type":"code39"})";
  const std::string refusal =
      R"({"ok":false,"error":{"code":"bad_text","message":"No \"_\"."},"warnings":[]})";
  const std::vector<LabelExhibit> exhibits = {
      {"Less < more",
       type,
       {{"labels/a.png", R"({"format": "png"})", report, true},
        {"labels/a.svg", R"({"format": "svg"})", report, true},
        {"labels/a.pdf", R"({"format": "pdf"})", report, true}}},
      {"Second", type, {{"labels/b.png", R"({"text": "A_B"})", refusal, false}}},
  };
  const std::string page = LabelPage(exhibits);
  EXPECT_THAT(page, HasSubstr("<h3>Less &lt; more</h3>"));
  EXPECT_THAT(page, HasSubstr("<img src=\"labels/a.png\" alt=\"Less &lt; more\">"));
  EXPECT_THAT(page, HasSubstr("<img src=\"labels/a.svg\" alt=\"Less &lt; more\">"));
  EXPECT_THAT(page, HasSubstr("<a href=\"labels/a.pdf\">"));
  EXPECT_THAT(page, HasSubstr("{&quot;format&quot;: &quot;png&quot;}"));
  EXPECT_THAT(page, HasSubstr("<li><code>low_contrast</code> Choose &lt; or &gt;.</li>"));
  EXPECT_THAT(page, HasSubstr("<p class=\"failed\"><code>bad_text</code> No &quot;_&quot;.</p>"));
  EXPECT_THAT(page, HasSubstr("{&quot;text&quot;: &quot;A_B&quot;}"));
  EXPECT_THAT(page, testing::Not(HasSubstr("labels/b.png")));
  EXPECT_EQ(page.find("<section id=\"code39\">"), page.rfind("<section "));
  EXPECT_THAT(page, HasSubstr("<a href=\"index.html\">"));
}

TEST(LabelPage, NeedsNothingFromElsewhere) {
  std::vector<LabelExhibit> exhibits;
  for (const LabelSample& sample : LabelSamples()) {
    const std::string request = RequestText(sample, "png");
    exhibits.push_back({sample.caption, sample.type, {{"x.png", request, MakeLabel(request).report, true}}});
  }
  const std::string page = LabelPage(exhibits);
  EXPECT_THAT(page, StartsWith("<!DOCTYPE html>"));
  for (const std::string_view outside :
       {"src=\"http", "href=\"http", "src=\"//", "@import", "url(", "<script", "<link"}) {
    EXPECT_THAT(page, testing::Not(HasSubstr(outside)));
  }
}

TEST(WriteLabelGallery, WritesLabelsInEveryFormatAndThePage) {
  const ScratchDirectory scratch;
  const std::vector<LabelSample> samples = {Code39Sample("ABC"), Code39Sample("A_B", true)};
  const LabelGalleryResult result = WriteLabelGallery(samples, scratch.File("new/gallery"));
  EXPECT_EQ(result.made, 2U);
  EXPECT_EQ(result.types, 1U);
  EXPECT_TRUE(result.failures.empty());
  EXPECT_EQ(result.pageFile, scratch.File("new/gallery/labels.html"));
  EXPECT_THAT(ReadFile(result.pageFile), HasSubstr("\"labels/code39-1.svg\""));
  EXPECT_THAT(ReadFile(scratch.File("new/gallery/labels/code39-1.png")), StartsWith("\x89PNG\r\n\x1A\n"));
  EXPECT_THAT(ReadFile(scratch.File("new/gallery/labels/code39-1.svg")), HasSubstr("<svg"));
  EXPECT_THAT(ReadFile(scratch.File("new/gallery/labels/code39-1.pdf")), StartsWith("%PDF-"));
  EXPECT_FALSE(std::filesystem::exists(scratch.File("new/gallery/labels/code39-2.png")));
}

TEST(WriteLabelGallery, RecordsWhatComesOutOtherwiseAndGoesOn) {
  const ScratchDirectory scratch;
  const std::vector<LabelSample> samples = {Code39Sample("A_B"), Code39Sample("ABC", true),
                                            Code39Sample("DEF")};
  const LabelGalleryResult result = WriteLabelGallery(samples, scratch.Path());
  EXPECT_EQ(result.made, 1U);
  ASSERT_EQ(result.failures.size(), 6U);
  EXPECT_THAT(result.failures[0], StartsWith("labels/code39-1.png (Caption of <A_B>): {"));
  EXPECT_THAT(result.failures[0], HasSubstr("bad_text"));
  EXPECT_THAT(result.failures[5], StartsWith("labels/code39-2.pdf (Caption of <ABC>): {"));
  EXPECT_TRUE(std::filesystem::exists(scratch.File("labels/code39-3.pdf")));
}

TEST(WriteLabelGallery, RefusesADirectoryThatCannotBe) {
  const ScratchDirectory scratch;
  WriteFile(scratch.File("file"), "");
  const std::vector<LabelSample> samples = {Code39Sample("ABC")};
  EXPECT_THROW(WriteLabelGallery(samples, scratch.File("file")), RunError);
  WriteFile(scratch.File("labels"), "");
  EXPECT_THROW(WriteLabelGallery(samples, scratch.Path()), RunError);
}

}  // namespace
}  // namespace barcode::tool
