#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

#include "mkbarcode/gallery_samples.h"
#include "mkbarcode/label_samples.h"
#include "mkbarcode/library/types.h"
#include "mkbarcode/program_runner.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr const char* kPngSignature = "\x89PNG\r\n\x1A\n";

TEST(Program, KeepsAnEarlierGalleryWhenTheDiskIsFull) {
  const ScratchDirectory scratch;
  const std::string page = scratch.File("index.html");
  WriteFile(page, "earlier");
  WriteFile(scratch.File("code39-1.png"), "earlier");
  const Outcome outcome =
      RunShell("trap '' XFSZ; ulimit -f 1; " + Program() + " gallery " + ShellQuoted(scratch.Path()));
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(ReadFile(page), "earlier");
  EXPECT_EQ(ReadFile(scratch.File("code39-1.png")), "earlier");
  EXPECT_THAT(scratch.Names(), ElementsAre("code39-1.png", "index.html"));
}

TEST(Program, DrawsTheGalleryOfEverythingOffered) {
  const ScratchDirectory scratch;
  const Outcome outcome = RunProgram({"gallery", scratch.Path()});
  EXPECT_EQ(outcome.status, 0) << outcome.errors;
  EXPECT_THAT(outcome.errors, IsEmpty());
  EXPECT_THAT(outcome.output, HasSubstr("Look at " + scratch.File("index.html") + "\n"));
  const std::string page = ReadFile(scratch.File("index.html"));
  std::set<const TypeInfo*> offered;
  std::size_t samples = 0;
  for (const Sample& sample : GallerySamples()) {
    const TypeInfo& type = *sample.request.type;
    const bool isShown = page.find(HtmlEscaped(sample.caption)) != std::string::npos;
    if (!IsOffered(type)) {
      continue;
    }
    EXPECT_TRUE(isShown) << sample.caption;
    offered.insert(&type);
    ++samples;
  }
  EXPECT_THAT(outcome.output, StartsWith("Drew " + std::to_string(samples) + " samples of " +
                                         std::to_string(offered.size()) + " symbologies."));
  for (const TypeInfo* const type : offered) {
    const std::string first = scratch.File(std::string(type->name) + "-1");
    EXPECT_THAT(ReadFile(first + ".png"), StartsWith(kPngSignature));
    EXPECT_THAT(ReadFile(first + ".svg"), testing::EndsWith("</svg>\n"));
    EXPECT_THAT(page, HasSubstr("<img src=\"" + std::string(type->name) + "-1.png\""));
    EXPECT_THAT(page, HasSubstr("barcode_create(" + std::string(type->constant) + ")"));
  }
}

TEST(Program, MakesTheLabelsOfTheGallery) {
  const ScratchDirectory scratch;
  const Outcome outcome = RunProgram({"gallery", scratch.Path()});
  EXPECT_EQ(outcome.status, 0) << outcome.errors;
  const std::vector<LabelSample> samples = LabelSamples();
  EXPECT_THAT(outcome.output, HasSubstr(Concat({"\nMade ", std::to_string(samples.size()), " labels of ",
                                                std::to_string(AllTypes().size()), " symbologies. Look at ",
                                                scratch.File("labels.html"), "\n"})));
  const std::string page = ReadFile(scratch.File("labels.html"));
  for (const LabelSample& sample : samples) {
    EXPECT_THAT(page, HasSubstr(HtmlEscaped(sample.caption)));
  }
  for (const TypeInfo& type : AllTypes()) {
    const std::string first = Concat({"labels/", type.name, "-1"});
    EXPECT_THAT(ReadFile(scratch.File(first + ".png")), StartsWith(kPngSignature));
    EXPECT_THAT(ReadFile(scratch.File(first + ".svg")), testing::EndsWith("</svg>\n"));
    EXPECT_THAT(ReadFile(scratch.File(first + ".pdf")), StartsWith("%PDF-"));
    EXPECT_THAT(page, HasSubstr(Concat({"<img src=\"", first, ".png\""})));
  }
}

TEST(Program, FailsWhenTheGalleryCannotBeWritten) {
  const ScratchDirectory scratch;
  WriteFile(scratch.File("file"), "");
  const Outcome outcome = RunProgram({"gallery", scratch.File("file")});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.errors, StartsWith("mkbarcode: cannot make the directory "));
  EXPECT_THAT(outcome.output, IsEmpty());
}

}  // namespace
}  // namespace barcode::tool
