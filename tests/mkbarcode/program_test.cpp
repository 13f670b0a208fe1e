#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "mkbarcode/gallery/label_samples.h"
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
  std::filesystem::create_directory(scratch.File("labels"));
  WriteFile(scratch.File("labels/code39-1.svg"), "earlier");
  const Outcome outcome =
      RunShell("trap '' XFSZ; ulimit -f 1; " + Program() + " gallery " + ShellQuoted(scratch.Path()));
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(ReadFile(page), "earlier");
  EXPECT_EQ(ReadFile(scratch.File("labels/code39-1.svg")), "earlier");
  EXPECT_THAT(scratch.Names(), ElementsAre("index.html", "labels", "library"));
}

TEST(Program, MakesTheGallery) {
  const ScratchDirectory scratch;
  const Outcome outcome = RunProgram({"gallery", scratch.Path()});
  EXPECT_EQ(outcome.status, 0) << outcome.errors;
  EXPECT_THAT(outcome.errors, IsEmpty());
  const std::vector<LabelSample> samples = LabelSamples();
  EXPECT_THAT(outcome.output,
              StartsWith(Concat({"Made ", std::to_string(samples.size()), " labels of ",
                                 std::to_string(AllTypes().size()), " symbologies and drew "})));
  EXPECT_THAT(outcome.output, testing::EndsWith(Concat({"Look at ", scratch.File("index.html"), "\n"})));
  const std::string page = ReadFile(scratch.File("index.html"));
  for (const LabelSample& sample : samples) {
    EXPECT_THAT(page, HasSubstr(HtmlEscaped(sample.caption)));
  }
  for (const TypeInfo& type : AllTypes()) {
    const std::string first = Concat({type.name, "-1"});
    EXPECT_THAT(ReadFile(scratch.File("labels/" + first + ".png")), StartsWith(kPngSignature));
    EXPECT_THAT(ReadFile(scratch.File("labels/" + first + ".pdf")), StartsWith("%PDF-"));
    EXPECT_THAT(ReadFile(scratch.File("library/" + first + ".png")), StartsWith(kPngSignature));
    EXPECT_THAT(ReadFile(scratch.File("library/" + first + ".svg")), testing::EndsWith("</svg>\n"));
    EXPECT_THAT(page, HasSubstr(Concat({"<img src=\"labels/", first, ".svg\""})));
    EXPECT_THAT(page, HasSubstr(Concat({"barcode_create(", type.constant, ")"})));
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
