#include "mkbarcode/gallery/gallery.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

#include "mkbarcode/errors.h"
#include "mkbarcode/gallery/page.h"
#include "mkbarcode/gallery/picture.h"
#include "mkbarcode/program_runner.h"

namespace barcode::tool {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

LibrarySample Code39Sample(const std::string& text) {
  LibrarySample sample;
  sample.caption = "Caption of <" + text + ">";
  sample.request.type = &TypeOf(BARCODE_CODE39);
  sample.request.text = text;
  sample.request.size = {300, 100, false};
  return sample;
}

LabelSample Code39Label(const std::string& text, bool isRefused = false) {
  return {.type = &TypeOf(BARCODE_CODE39),
          .caption = "Label <" + text + ">",
          .members = R"("text": ")" + text + R"(")",
          .isRefused = isRefused};
}

GalleryResult Write(const std::vector<LabelSample>& labels, const std::vector<LibrarySample>& samples,
                    const std::string& directory) {
  return WriteGallery(labels, samples, directory, false);
}

TEST(LibrarySamples, ShowEveryTypeSeveralTimes) {
  std::map<const TypeInfo*, int> counts;
  for (const LibrarySample& sample : LibrarySamples()) {
    ++counts[sample.request.type];
  }
  for (const TypeInfo& type : AllTypes()) {
    EXPECT_GE(counts[&type], 2) << type.name;
  }
}

TEST(LibrarySamples, AreInTheOrderOfTheTypesAndAllDifferent) {
  const std::vector<LibrarySample> samples = LibrarySamples();
  EXPECT_TRUE(std::is_sorted(samples.begin(), samples.end(),
                             [](const LibrarySample& left, const LibrarySample& right) {
                               return left.request.type->number < right.request.type->number;
                             }));
  for (std::size_t i = 0; i < samples.size(); ++i) {
    EXPECT_NE(samples[i].caption, "");
    for (std::size_t j = 0; j < i; ++j) {
      EXPECT_FALSE(samples[i].request == samples[j].request) << samples[i].caption;
    }
  }
}

TEST(LibrarySamples, AskForNothingThatTheirTypeDoesNotServe) {
  for (const LibrarySample& sample : LibrarySamples()) {
    EXPECT_NO_THROW(CheckRequest(sample.request)) << sample.caption;
  }
}

TEST(LibrarySamples, ShowEveryOptionThatChangesASymbol) {
  std::set<OptionId> shown = {OptionId::kColumns, OptionId::kRows,
                              OptionId::kErrorLevel};  // these change none
  std::set<Form> forms;
  for (const LibrarySample& sample : LibrarySamples()) {
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

TEST(LibrarySamples, CarryCorrectCheckDigits) {
  const std::map<int, std::size_t> fullLengths = {
      {BARCODE_JAN8, 8}, {BARCODE_JAN13, 13}, {BARCODE_UPC_A, 12}};
  int checked = 0;
  for (const LibrarySample& sample : LibrarySamples()) {
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

LabelExhibit Code39Exhibit(const std::string& caption, const std::string& report) {
  return {.caption = caption,
          .type = &TypeOf(BARCODE_CODE39),
          .name = "code39-1",
          .request = nlohmann::ordered_json::parse(R"({"type": "code39", "text": "A$B", "format": "svg"})"),
          .report = nlohmann::json::parse(report)};
}

constexpr const char* kDelivery =
    R"({"ok": true, "warnings": [{"code": "low_contrast", "message": "Choose < or >."}], "width": 30, "height": 9})";
constexpr const char* kRefusal =
    R"({"ok": false, "error": {"code": "bad_text", "message": "No \"_\"."}, "warnings": []})";

TEST(GalleryPage, ShowsTheLabelBesideTheLibrarysPicture) {
  LabelExhibit exhibit = Code39Exhibit("Less < more", kDelivery);
  exhibit.library = LibraryPicture{.name = "code39-1", .request = Code39Sample("A$B").request};
  const std::vector<TypeExhibits> types = {{.type = exhibit.type, .labels = {exhibit, exhibit}}};
  const std::string page = GalleryPage(types);
  EXPECT_THAT(page, HasSubstr("<h3>Less &lt; more</h3>"));
  EXPECT_THAT(page,
              HasSubstr("<img src=\"labels/code39-1.svg\" alt=\"Less &lt; more\" width=\"30\" height=\"9\""));
  EXPECT_THAT(page, HasSubstr("<img src=\"library/code39-1.png\""));
  EXPECT_THAT(page, HasSubstr("<a href=\"labels/code39-1.pdf\">PDF</a>"));
  EXPECT_THAT(page, HasSubstr("<li><code>low_contrast</code> Choose &lt; or &gt;.</li>"));
  EXPECT_EQ(page.find("<section id=\"code39\">"), page.rfind("<section "));
  EXPECT_EQ(page.find("<li><a href=\"#code39\">"), page.rfind("<li><a "));
}

TEST(GalleryPage, SaysWhereTheLibrarysPictureIsTheSame) {
  LabelExhibit exhibit = Code39Exhibit("Same", kDelivery);
  exhibit.library = LibraryPicture{.name = "code39-1", .request = Code39Sample("A$B").request};
  exhibit.isSamePicture = true;
  const std::vector<TypeExhibits> types = {{.type = exhibit.type, .labels = {exhibit}}};
  const std::string page = GalleryPage(types);
  EXPECT_THAT(page, Not(HasSubstr("<img src=\"library/")));
  EXPECT_THAT(page, HasSubstr("data-file=\"library/code39-1.png\""));
}

TEST(GalleryPage, ShowsRefusalsAndFailuresInsteadOfPictures) {
  LibraryExhibit failed{.caption = "Failed", .picture = {.name = "code39-own-1", .request = {}}};
  failed.picture.request = Code39Sample("A").request;
  failed.picture.failure = "it <failed>";
  const std::vector<TypeExhibits> types = {
      {.type = &TypeOf(BARCODE_CODE39), .labels = {Code39Exhibit("Refused", kRefusal)}, .library = {failed}}};
  const std::string page = GalleryPage(types);
  EXPECT_THAT(page, HasSubstr("<p class=\"refusal\"><code>bad_text</code> No &quot;_&quot;.</p>"));
  EXPECT_THAT(page, HasSubstr("<p class=\"refusal\">it &lt;failed&gt;</p>"));
  EXPECT_THAT(page, HasSubstr("<h4>Failed</h4>"));
  EXPECT_THAT(page, Not(HasSubstr("<img ")));
}

TEST(WriteGallery, NeedsNothingFromElsewhere) {
  const ScratchDirectory scratch;
  const std::string page = ReadFile(Write(LabelSamples(), LibrarySamples(), scratch.Path()).indexFile);
  EXPECT_THAT(page, StartsWith("<!DOCTYPE html>"));
  for (const std::string_view outside :
       {"src=\"http", "href=\"http", "src=\"//", "@import", "url(", "<script src", "rel=\"stylesheet"}) {
    EXPECT_THAT(page, Not(HasSubstr(outside)));
  }
}

TEST(WriteGallery, WritesPicturesAndPage) {
  const ScratchDirectory scratch;
  const GalleryResult result = Write({Code39Label("ABC"), Code39Label("A_B", true)}, {Code39Sample("DEF")},
                                     scratch.File("new/gallery"));
  EXPECT_EQ(result.labels, 2U);
  EXPECT_EQ(result.libraryPictures, 2U);
  EXPECT_EQ(result.types, 1U);
  EXPECT_THAT(result.failures, testing::IsEmpty());
  EXPECT_EQ(result.indexFile, scratch.File("new/gallery/index.html"));
  const std::string labels = scratch.File("new/gallery/labels/");
  EXPECT_THAT(ReadFile(labels + "code39-1.png"), StartsWith("\x89PNG\r\n\x1A\n"));
  EXPECT_THAT(ReadFile(labels + "code39-1.svg"), HasSubstr("<svg"));
  EXPECT_THAT(ReadFile(labels + "code39-1.pdf"), StartsWith("%PDF-"));
  EXPECT_FALSE(std::filesystem::exists(labels + "code39-2.png"));
  for (const std::string name : {"code39-1", "code39-own-1"}) {
    const std::string file = scratch.File("new/gallery/library/") + name;
    EXPECT_THAT(ReadFile(file + ".png"), StartsWith("\x89PNG\r\n\x1A\n"));
    EXPECT_THAT(ReadFile(file + ".svg"), testing::EndsWith("</svg>\n"));
  }
}

TEST(WriteGallery, LeavesOutSamplesThatStandBesideALabel) {
  const ScratchDirectory scratch;
  const std::vector<LibrarySample> samples = {Code39Sample("ABC"), Code39Sample("DEF")};
  const GalleryResult result = Write({Code39Label("ABC")}, samples, scratch.Path());
  EXPECT_EQ(result.libraryPictures, 2U);
  const std::string page = ReadFile(result.indexFile);
  EXPECT_THAT(page, Not(HasSubstr("Caption of &lt;ABC&gt;")));
  EXPECT_THAT(page, HasSubstr("Caption of &lt;DEF&gt;"));
}

TEST(WriteGallery, ComparesThePicturesOfAllLabels) {
  const ScratchDirectory scratch;
  const LabelSample qr = {.type = &TypeOf(BARCODE_QR), .caption = "QR", .members = R"("text": "hello")"};
  const std::string page = ReadFile(Write({Code39Label("ABC"), qr}, {}, scratch.Path()).indexFile);
  EXPECT_THAT(page, HasSubstr("<img src=\"library/code39-1.png\""));
  EXPECT_THAT(page, Not(HasSubstr("<img src=\"library/qr-1.png\"")));
  EXPECT_THAT(page, HasSubstr("The same picture, pixel for pixel, without the quiet zone."));
}

TEST(WriteGallery, RecordsWhatDoesNotComeOutAndGoesOn) {
  const ScratchDirectory scratch;
  testing::internal::CaptureStderr();
  const GalleryResult result = Write({Code39Label("A_B"), Code39Label("ABC", true), Code39Label("DEF")},
                                     {Code39Sample("A_B"), Code39Sample("GHI")}, scratch.Path());
  EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("[Code39] Invalid character in CODE39: _\n"));
  EXPECT_EQ(result.labels, 1U);
  EXPECT_EQ(result.libraryPictures, 3U);
  ASSERT_EQ(result.failures.size(), 8U);
  EXPECT_THAT(result.failures[0], StartsWith("labels/code39-1.png (Label <A_B>): {"));
  EXPECT_THAT(result.failures[0], HasSubstr("bad_text"));
  EXPECT_THAT(result.failures[5], StartsWith("labels/code39-2.pdf (Label <ABC>): {"));
  EXPECT_THAT(result.failures[6], StartsWith("library/code39-own-1.png (Caption of <A_B>): "));
  EXPECT_THAT(result.failures[7], StartsWith("library/code39-own-1.svg"));
  EXPECT_THAT(ReadFile(result.indexFile), HasSubstr("class=\"refusal\""));
  EXPECT_TRUE(std::filesystem::exists(scratch.File("labels/code39-3.pdf")));
  EXPECT_TRUE(std::filesystem::exists(scratch.File("library/code39-own-2.png")));
  EXPECT_FALSE(std::filesystem::exists(scratch.File("library/code39-own-1.png")));
}

TEST(WriteGallery, RefusesADirectoryThatCannotBe) {
  const ScratchDirectory scratch;
  WriteFile(scratch.File("file"), "");
  EXPECT_THROW(Write({Code39Label("ABC")}, {}, scratch.File("file")), RunError);
  EXPECT_THROW(Write({Code39Label("ABC")}, {}, scratch.File("file/below")), RunError);
  EXPECT_THROW(Write({}, {}, scratch.File("empty")), RunError);
  WriteFile(scratch.File("labels"), "");
  EXPECT_THROW(Write({Code39Label("ABC")}, {}, scratch.Path()), RunError);
}

TEST(Picture, RefusesWhatIsNoPng) {
  EXPECT_THROW(DecodePng(""), RunError);
  EXPECT_THROW(DecodePng("<svg/>"), RunError);
}

TEST(Picture, IsCutToAnArea) {
  const Picture picture = {.width = 3, .height = 2, .pixels = {0, 0, 0, 1, 0, 0, 0, 2, 0, 0, 0, 3,
                                                               0, 0, 0, 4, 0, 0, 0, 5, 0, 0, 0, 6}};
  EXPECT_EQ(Cropped(picture, {.left = 0, .top = 0, .width = 3, .height = 2}), picture);
  EXPECT_EQ(Cropped(picture, {.left = 1, .top = 1, .width = 2, .height = 1}),
            (Picture{.width = 2, .height = 1, .pixels = {0, 0, 0, 5, 0, 0, 0, 6}}));
}

}  // namespace
}  // namespace barcode::tool
