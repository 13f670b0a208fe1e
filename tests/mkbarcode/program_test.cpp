#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <set>

#include "barcode.h"
#include "mkbarcode/gallery/label_samples.h"
#include "mkbarcode/program_runner.h"
#include "mkbarcode/quoting.h"
#include "mkbarcode/types.h"

namespace barcode::tool {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

constexpr const char* kPngSignature = "\x89PNG\r\n\x1A\n";

TEST(Program, DrawsAPngWithoutAWord) {
  const ScratchDirectory scratch;
  const Outcome outcome =
      RunProgram({"code39", "ABC-123", "--size", "300x100", "-o", scratch.File("out.png")});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.output, IsEmpty());
  EXPECT_THAT(outcome.errors, IsEmpty());
  const std::string png = ReadFile(scratch.File("out.png"));
  EXPECT_THAT(png, StartsWith(kPngSignature));
  // Width and height of the IHDR chunk.
  EXPECT_EQ(png.substr(16, 8), std::string("\0\0\x01\x2C\0\0\0\x64", 8));
  EXPECT_THAT(png, testing::EndsWith("IEND\xAE\x42\x60\x82"));
}

TEST(Program, DrawsAnSvg) {
  const ScratchDirectory scratch;
  const Outcome outcome = RunProgram({"code39", "ABC", "--size", "320x90", "-o", scratch.File("out.svg")});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.output + outcome.errors, IsEmpty());
  const std::string svg = ReadFile(scratch.File("out.svg"));
  EXPECT_THAT(svg, StartsWith("<?xml"));
  EXPECT_THAT(svg, HasSubstr("width=\"320\" height=\"90\""));
  EXPECT_THAT(svg, testing::EndsWith("</svg>\n"));
}

TEST(Program, WritesOnlyTheImageToStandardOutput) {
  const ScratchDirectory scratch;
  for (const std::string format : {"png", "svg", "jpg"}) {
    const std::string file = scratch.File("out." + format);
    ASSERT_EQ(RunProgram({"code39", "ABC", "-o", file}).status, 0);
    const Outcome quiet = RunProgram({"code39", "ABC", "--format", format, "-o", "-"});
    EXPECT_EQ(quiet.status, 0);
    EXPECT_EQ(quiet.output, ReadFile(file)) << format;
    EXPECT_THAT(quiet.errors, IsEmpty());
    const Outcome verbose = RunProgram({"code39", "ABC", "--format", format, "-o", "-", "--verbose"});
    EXPECT_EQ(verbose.output, quiet.output);
  }
}

TEST(Program, VerboseShowsTheDiagnosticsOnStandardError) {
  const Outcome outcome = RunProgram({"code39", "ABC", "--size", "310x100", "-o", "-", "--verbose"});
  EXPECT_THAT(outcome.errors, HasSubstr("指定サイズ: width=310, height=100\n"));
  EXPECT_THAT(outcome.output, StartsWith(kPngSignature));
}

TEST(Program, WritesADataUri) {
  const Outcome png = RunProgram({"code39", "ABC", "--data-uri"});
  EXPECT_EQ(png.status, 0);
  EXPECT_THAT(png.output, StartsWith("data:image/png;base64,iVBORw0KGgo"));
  EXPECT_EQ(png.output.find('\n'), png.output.size() - 1);
  EXPECT_THAT(RunProgram({"code39", "ABC", "--data-uri", "--format", "jpg"}).output,
              StartsWith("data:image/jpeg;base64,iVBORw0KGgo"));
}

TEST(Program, EveryOptionOfTheTypeChangesTheDrawing) {
  const auto draw = [](std::vector<std::string> options) {
    std::vector<std::string> arguments = {"code39",   "ABC-123", "--size", "390x100",
                                          "--format", "svg",     "-o",     "-"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const Outcome outcome = RunProgram(arguments);
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    return outcome.output;
  };
  const std::string plain = draw({});
  EXPECT_THAT(plain, HasSubstr(">*</text>"));
  EXPECT_THAT(draw({"--no-show-start-stop"}), Not(HasSubstr(">*</text>")));
  EXPECT_THAT(draw({"--no-show-text"}), Not(HasSubstr("<text")));
  EXPECT_THAT(draw({"--no-text-even-spacing"}), HasSubstr(">*ABC-123*</text>"));
  EXPECT_THAT(plain, HasSubstr("font-size=\"20\""));
  EXPECT_THAT(draw({"--text-font-scale", "2"}), HasSubstr("font-size=\"40\""));
  EXPECT_THAT(draw({"--foreground-color", "#01020380"}),
              HasSubstr("fill=\"rgb(1,2,3)\" fill-opacity=\"0.50\""));
  EXPECT_THAT(draw({"--bg", "9,8,7"}), HasSubstr("width=\"390.00\" height=\"100.00\" fill=\"rgb(9,8,7)\""));
  std::set<std::string> drawings = {plain};
  for (const std::vector<std::string>& options : std::vector<std::vector<std::string>>{
           {"--fit-width"}, {"--px-adjust-black", "1"}, {"--px-adjust-white", "-1"}, {"--text-gap", "3"}}) {
    EXPECT_TRUE(drawings.insert(draw(options)).second) << options.front();
  }
}

TEST(Program, ReadsTheTextFromAFileOrStandardInput) {
  const ScratchDirectory scratch;
  WriteFile(scratch.File("text"), "ABC\r\n");
  const std::string expected = RunProgram({"code39", "ABC", "-o", "-"}).output;
  EXPECT_EQ(RunProgram({"code39", "--input", scratch.File("text"), "-o", "-"}).output, expected);
  EXPECT_EQ(RunShell("printf 'ABC\\n' | " + Program() + " code39 --input - -o -").output, expected);
  EXPECT_EQ(RunShell("printf ABC | " + Program() + " code39 --input - -o -").output, expected);
  const Outcome kept = RunShell("printf 'ABC\\n' | " + Program() + " code39 --input - --keep-newline -o -");
  EXPECT_EQ(kept.status, 1);
  EXPECT_THAT(kept.errors, HasSubstr("[Code39] Invalid character in CODE39: \n"));
}

TEST(Program, FailsWithTheLibrarysMessage) {
  const ScratchDirectory scratch;
  const Outcome outcome = RunProgram({"code39", "A_B", "-o", scratch.File("out.png")});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.output, IsEmpty());
  EXPECT_THAT(outcome.errors, HasSubstr("[Code39] Invalid character in CODE39: _\n"));
  EXPECT_THAT(outcome.errors, HasSubstr("mkbarcode: code39 at 300x100 could not be drawn\n"));
  EXPECT_FALSE(std::filesystem::exists(scratch.File("out.png")));
  EXPECT_EQ(RunProgram({"code39", "", "-o", scratch.File("out.svg")}).status, 1);
}

TEST(Program, KeepsAnEarlierFileWhenADrawFails) {
  const ScratchDirectory scratch;
  WriteFile(scratch.File("out.png"), "earlier");
  EXPECT_EQ(RunProgram({"code39", "A_B", "-o", scratch.File("out.png")}).status, 1);
  EXPECT_EQ(ReadFile(scratch.File("out.png")), "earlier");
}

TEST(Program, FailsWhenTheCanvasIsTooLarge) {
  const Outcome outcome = RunProgram({"code39", "ABC", "--size", "100000x100000", "-o", "-"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.output, IsEmpty());
  EXPECT_THAT(outcome.errors, HasSubstr("サーフェス作成に失敗: "));
}

TEST(Program, FailsWhenTheOutputCannotBeWritten) {
  const ScratchDirectory scratch;
  const std::vector<std::string> files = {scratch.File("missing/out.png"), scratch.Path(), "/dev/full"};
  for (const std::string& file : files) {
    const Outcome outcome = RunProgram({"code39", "ABC", "--format", "png", "-o", file});
    EXPECT_EQ(outcome.status, 1) << file;
    EXPECT_THAT(outcome.errors, HasSubstr("mkbarcode: cannot write " + file + ": "));
  }
  EXPECT_TRUE(std::filesystem::exists("/dev/full"));
  for (const std::string command : {" code39 ABC -o -", " --list", " --help", " --version"}) {
    EXPECT_EQ(RunShell(Program() + command + " >/dev/full").status, 1) << command;
    EXPECT_EQ(RunShell(Program() + command + " >&-").status, 1) << command;
  }
}

// Draws into a file that may grow to one block of 512 bytes, much less than the picture.
Outcome DrawOnFullDisk(const std::string& whatTheLimitDoes, const std::string& file) {
  return RunShell(whatTheLimitDoes + "ulimit -c 0; ulimit -f 1; " + Program() +
                  " code39 ABC --size 900x300 -o " + ShellQuoted(file));
}

TEST(Program, KeepsAnEarlierFileWhenTheDiskIsFull) {
  const ScratchDirectory scratch;
  const std::string file = scratch.File("out.png");
  EXPECT_EQ(DrawOnFullDisk("trap '' XFSZ; ", file).status, 1);
  EXPECT_THAT(scratch.Names(), IsEmpty());
  WriteFile(file, "earlier");
  const Outcome outcome = DrawOnFullDisk("trap '' XFSZ; ", file);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.errors, HasSubstr("mkbarcode: cannot write " + file + ": File too large\n"));
  EXPECT_THAT(scratch.Names(), ElementsAre("out.png"));
  EXPECT_EQ(ReadFile(file), "earlier");
}

TEST(Program, LeavesNothingBehindWhenASignalEndsItInTheMiddleOfAWrite) {
  const ScratchDirectory scratch;
  const std::string file = scratch.File("out.png");
  WriteFile(file, "earlier");
  const Outcome outcome = DrawOnFullDisk("", file);
  EXPECT_THAT(outcome.status, 128 + SIGXFSZ);
  EXPECT_THAT(scratch.Names(), ElementsAre("out.png"));
  EXPECT_EQ(ReadFile(file), "earlier");
}

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

TEST(Program, TellsThatADirectoryTakesNoFile) {
  const ScratchDirectory scratch;
  std::filesystem::permissions(scratch.Path(), std::filesystem::perms(0555));
  // The superuser writes into every directory while this capability lasts.
  const std::string unprivileged = geteuid() == 0 ? "setpriv --bounding-set=-dac_override " : "";
  const std::string file = scratch.File("out.png");
  const Outcome outcome = RunShell(unprivileged + Program() + " code39 ABC -o " + ShellQuoted(file));
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.errors, Concat({"mkbarcode: cannot write ", file, ": cannot make a file in ",
                                    scratch.Path(), ": Permission denied\n"}));
  std::filesystem::permissions(scratch.Path(), std::filesystem::perms(0755));
  WriteFile(file, "earlier");
  std::filesystem::permissions(file, std::filesystem::perms(0444));
  const Outcome onProtected = RunShell(unprivileged + Program() + " code39 ABC -o " + ShellQuoted(file));
  EXPECT_EQ(onProtected.status, 1);
  EXPECT_EQ(onProtected.errors, "mkbarcode: cannot write " + file + ": Permission denied\n");
  EXPECT_EQ(ReadFile(file), "earlier");
}

TEST(Program, WritesPipesAndOpenFilesInPlace) {
  const ScratchDirectory scratch;
  const std::string expected = RunProgram({"code39", "ABC", "-o", "-"}).output;
  const std::string draw = Program() + " code39 ABC --format png -o ";
  const std::string pipe = ShellQuoted(scratch.File("pipe"));
  EXPECT_EQ(RunShell(Concat({"mkfifo ", pipe, "; cat ", pipe, " & ", draw, pipe, "; wait"})).output,
            expected);
  EXPECT_EQ(RunShell(draw + "/dev/stdout | cat").output, expected);
  // Another descriptor of the file sees the picture: it is the same file, and not one that took its name.
  const std::string file = ShellQuoted(scratch.File("file"));
  const Outcome redirected =
      RunShell(Concat({"exec 5>", file, " 6<", file, "; ", draw, "/dev/stdout >&5; cat <&6"}));
  EXPECT_EQ(redirected.output, expected);
  EXPECT_THAT(scratch.Names(), ElementsAre("file", "pipe"));
}

TEST(Program, KeepsDiagnosticsOutOfTheFileWhenStandardOutputIsClosed) {
  const ScratchDirectory scratch;
  const std::string expected = RunProgram({"code39", "ABC", "-o", "-"}).output;
  const Outcome outcome =
      RunShell(Program() + " code39 ABC -o " + ShellQuoted(scratch.File("out.png")) + " <&- >&- 2>&-");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(ReadFile(scratch.File("out.png")), expected);
}

TEST(Program, FailsWhenTheInputCannotBeRead) {
  const ScratchDirectory scratch;
  const Outcome outcome = RunProgram({"code39", "--input", scratch.File("missing"), "-o", "-"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.errors, HasSubstr("mkbarcode: cannot read "));
  WriteFile(scratch.File("nul"), std::string("A\0B", 3));
  const Outcome nul = RunProgram({"code39", "--input", scratch.File("nul"), "-o", "-"});
  EXPECT_EQ(nul.status, 1);
  EXPECT_THAT(nul.errors, HasSubstr("NUL"));
}

TEST(Program, AnswersWrongUsageWithStatusTwo) {
  const ScratchDirectory scratch;
  const std::string file = scratch.File("out.png");
  for (const std::vector<std::string>& arguments :
       std::vector<std::vector<std::string>>{{},
                                             {"code38", "ABC", "-o", file},
                                             {"code39", "-o", file},
                                             {"code39", "ABC"},
                                             {"code39", "ABC", "-o", file, "--size", "big"},
                                             {"code39", "ABC", "-o", file, "--no-such-option"},
                                             {"code39", "ABC", "-o", file, "--code-mode", "B"},
                                             {"code128", "ABC", "-o", file, "--code-mode", "D"},
                                             {"gallery"}}) {
    const Outcome outcome = RunProgram(arguments);
    EXPECT_EQ(outcome.status, 2) << testing::PrintToString(arguments);
    EXPECT_THAT(outcome.output, IsEmpty());
    EXPECT_THAT(outcome.errors, StartsWith("mkbarcode: "));
    EXPECT_THAT(outcome.errors, testing::EndsWith("See mkbarcode --help\n"));
  }
  EXPECT_FALSE(std::filesystem::exists(file));
}

TEST(Program, PrintsListVersionAndHelp) {
  EXPECT_THAT(RunProgram({"--list"}).output, HasSubstr("code39 "));
  EXPECT_EQ(RunProgram({"--version"}).output, "mkbarcode " BARCODE_VERSION_STRING "\n");
  EXPECT_THAT(RunProgram({"--help"}).output, HasSubstr("--[no-]extended-guard"));
  for (const std::string option : {"--list", "--version", "--help"}) {
    const Outcome outcome = RunProgram({option});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.errors, IsEmpty());
  }
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
