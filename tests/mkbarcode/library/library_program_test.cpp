#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <set>

#include "barcode.h"
#include "mkbarcode/io.h"
#include "mkbarcode/library/types.h"
#include "mkbarcode/program_runner.h"
#include "mkbarcode/quoting.h"
#include "support/symbologies.h"

namespace barcode::tool {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

constexpr const char* kPngSignature = "\x89PNG\r\n\x1A\n";

TEST(LibraryProgram, DrawsAPngWithoutAWord) {
  const ScratchDirectory scratch;
  const Outcome outcome =
      RunProgram({"library", "code39", "ABC-123", "--size", "300x100", "-o", scratch.File("out.png")});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.output, IsEmpty());
  EXPECT_THAT(outcome.errors, IsEmpty());
  const std::string png = ReadFile(scratch.File("out.png"));
  EXPECT_THAT(png, StartsWith(kPngSignature));
  // Width and height of the IHDR chunk.
  EXPECT_EQ(png.substr(16, 8), std::string("\0\0\x01\x2C\0\0\0\x64", 8));
  EXPECT_THAT(png, testing::EndsWith("IEND\xAE\x42\x60\x82"));
}

// What a host gets from the functions, drawn in this process.
struct Drawn {
  std::string bytes;
  std::string document;
  std::string uri;
};

Drawn DrawAsHost(const TypeInfo& type, const char* text) {
  const Redirection output = Redirection::ToNothing(STDOUT_FILENO);
  const Redirection errors = Redirection::ToNothing(STDERR_FILENO);
  Drawn drawn;
  for (const char* const format : {"png", "svg"}) {
    const BarcodeHandle handle = barcode_create(type.number);
    barcode_set_output_format(handle, format);
    EXPECT_EQ(barcode_draw_1d(handle, text, 310, 120), 1) << type.name;
    int length = 0;
    if (const unsigned char* const bytes = barcode_get_image_data(handle, &length); bytes != nullptr) {
      drawn.bytes.assign(bytes, bytes + length);
      drawn.uri = barcode_get_base64(handle);
    } else {
      drawn.document = barcode_get_svg(handle);
    }
    barcode_destroy(handle);
  }
  return drawn;
}

TEST(LibraryProgram, WritesWhatAHostGetsByteForByte) {
  for (const TypeInfo& type : AllTypes()) {
    const std::string name(type.name);
    const std::string text = test::ValidText(type.number);
    const Drawn drawn = DrawAsHost(type, text.c_str());
    ASSERT_THAT(drawn.bytes, StartsWith(kPngSignature)) << name;
    ASSERT_THAT(drawn.document, StartsWith("<?xml")) << name;
    const auto run = [&](const std::vector<std::string>& more) {
      std::vector<std::string> arguments = {"library", name, "--size", "310x120"};
      arguments.insert(arguments.end(), more.begin(), more.end());
      arguments.insert(arguments.end(), {"--", text});
      return RunProgram(arguments).output;
    };
    EXPECT_EQ(run({"-o", "-"}), drawn.bytes) << name;
    EXPECT_EQ(run({"-o", "-", "--format", "svg"}), drawn.document) << name;
    EXPECT_EQ(run({"--data-uri"}), drawn.uri + "\n") << name;
  }
}

TEST(LibraryProgram, DrawsAnSvg) {
  const ScratchDirectory scratch;
  const Outcome outcome =
      RunProgram({"library", "code39", "ABC", "--size", "320x90", "-o", scratch.File("out.svg")});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.output + outcome.errors, IsEmpty());
  const std::string svg = ReadFile(scratch.File("out.svg"));
  EXPECT_THAT(svg, StartsWith("<?xml"));
  EXPECT_THAT(svg, HasSubstr("width=\"320\" height=\"90\""));
  EXPECT_THAT(svg, testing::EndsWith("</svg>\n"));
}

TEST(LibraryProgram, WritesOnlyTheImageToStandardOutput) {
  const ScratchDirectory scratch;
  for (const std::string format : {"png", "svg", "jpg"}) {
    const std::string file = scratch.File("out." + format);
    ASSERT_EQ(RunProgram({"library", "code39", "ABC", "-o", file}).status, 0);
    const Outcome quiet = RunProgram({"library", "code39", "ABC", "--format", format, "-o", "-"});
    EXPECT_EQ(quiet.status, 0);
    EXPECT_EQ(quiet.output, ReadFile(file)) << format;
    EXPECT_THAT(quiet.errors, IsEmpty());
    const Outcome verbose =
        RunProgram({"library", "code39", "ABC", "--format", format, "-o", "-", "--verbose"});
    EXPECT_EQ(verbose.output, quiet.output);
  }
}

TEST(LibraryProgram, VerboseShowsTheDiagnosticsOnStandardError) {
  const Outcome outcome =
      RunProgram({"library", "code39", "ABC", "--size", "310x100", "-o", "-", "--verbose"});
  EXPECT_THAT(outcome.errors, HasSubstr("指定サイズ: width=310, height=100\n"));
  EXPECT_THAT(outcome.output, StartsWith(kPngSignature));
}

TEST(LibraryProgram, SaysWhenTheSymbolIsWiderThanItsBox) {
  const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
      {{"code39", "ABCDEFGH", "--size", "158x30"},
       "159 pixels wide, and its box 158; ask for --size 159x30."},
      {{"code39", "ABCDEFGH", "--size", "159x30"}, ""},
      {{"code39", "ABCDEFGH", "--size", "100x30", "--verbose"}, "159 pixels wide, and its box 100;"},
      {{"jan13", "490123456789", "--size", "50x50"}, " pixels wide, and its box 50;"},
      {{"qr", "ABCDEFGH", "--size", "20"}, "21 pixels wide, and its box 20; ask for --size 21."},
      {{"qr", "ABCDEFGH", "--size", "21"}, ""},
      {{"qr", "ABCDEFGH", "--size", "20x30"}, "21 pixels wide, and its box 20; ask for --size 21x30."},
      {{"yubin", "1234567", "--size", "40x24"}, " pixels wide, and its box 40;"},
      {{"yubin", "1234567", "--size", "24"}, ""},
      {{"databar-expanded", "0104901234567894", "--size", "300x50"}, ""},
      {{"databar-expanded", "(01)04912345678904", "--size", "150x60"},
       " pixels wide, and its box 150; ask for a wider one."},
      {{"code39", "ABC-12", "--size", "97x40", "--fit-width"},
       " pixels wide, and its box 97; ask for a wider one."},
      {{"pdf417", "hello", "--size", "200"}, ""},
      {{"pdf417", "hello", "--size", "258x100"}, ""},
      {{"pdf417", "hello", "--size", "86x100"}, ""},
      {{"pdf417", "hello", "--size", "300x100", "--fit-width"}, ""},
      {{"pdf417", "hello", "--size", "85x100"}, "86 pixels wide, and its box 85; ask for --size 86x100."},
  };
  for (const std::string format : {"png", "svg"}) {
    for (auto [arguments, told] : cases) {
      arguments.insert(arguments.begin(), "library");
      arguments.insert(arguments.end(), {"--format", format, "-o", "-"});
      const Outcome outcome = RunProgram(arguments);
      EXPECT_EQ(outcome.status, 0);
      if (told.empty()) {
        EXPECT_THAT(outcome.errors, IsEmpty()) << testing::PrintToString(arguments);
      } else {
        EXPECT_THAT(outcome.errors, HasSubstr("mkbarcode: warning: The symbol is ")) << format;
        EXPECT_THAT(outcome.errors, HasSubstr(told)) << format;
      }
    }
  }
}

TEST(LibraryProgram, WritesADataUri) {
  const Outcome png = RunProgram({"library", "code39", "ABC", "--data-uri"});
  EXPECT_EQ(png.status, 0);
  EXPECT_THAT(png.output, StartsWith("data:image/png;base64,iVBORw0KGgo"));
  EXPECT_EQ(png.output.find('\n'), png.output.size() - 1);
  EXPECT_THAT(RunProgram({"library", "code39", "ABC", "--data-uri", "--format", "jpg"}).output,
              StartsWith("data:image/jpeg;base64,iVBORw0KGgo"));
}

TEST(LibraryProgram, EveryOptionOfTheTypeChangesTheDrawing) {
  const auto draw = [](std::vector<std::string> options) {
    std::vector<std::string> arguments = {"library",  "code39", "ABC-123", "--size", "390x100",
                                          "--format", "svg",    "-o",      "-"};
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

TEST(LibraryProgram, ReadsTheTextFromAFileOrStandardInput) {
  const ScratchDirectory scratch;
  WriteFile(scratch.File("text"), "ABC\r\n");
  const std::string expected = RunProgram({"library", "code39", "ABC", "-o", "-"}).output;
  EXPECT_EQ(RunProgram({"library", "code39", "--input", scratch.File("text"), "-o", "-"}).output, expected);
  EXPECT_EQ(RunShell("printf 'ABC\\n' | " + Program() + " library code39 --input - -o -").output, expected);
  EXPECT_EQ(RunShell("printf ABC | " + Program() + " library code39 --input - -o -").output, expected);
  const Outcome kept =
      RunShell("printf 'ABC\\n' | " + Program() + " library code39 --input - --keep-newline -o -");
  EXPECT_EQ(kept.status, 1);
  EXPECT_THAT(kept.errors, HasSubstr("[Code39] Invalid character in CODE39: \n"));
}

TEST(LibraryProgram, FailsWithTheLibrarysMessage) {
  const ScratchDirectory scratch;
  const Outcome outcome = RunProgram({"library", "code39", "A_B", "-o", scratch.File("out.png")});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.output, IsEmpty());
  EXPECT_THAT(outcome.errors, HasSubstr("[Code39] Invalid character in CODE39: _\n"));
  EXPECT_THAT(outcome.errors, HasSubstr("mkbarcode: code39 at 300x100 could not be drawn\n"));
  EXPECT_FALSE(std::filesystem::exists(scratch.File("out.png")));
  EXPECT_EQ(RunProgram({"library", "code39", "", "-o", scratch.File("out.svg")}).status, 1);
}

TEST(LibraryProgram, KeepsAnEarlierFileWhenADrawFails) {
  const ScratchDirectory scratch;
  WriteFile(scratch.File("out.png"), "earlier");
  EXPECT_EQ(RunProgram({"library", "code39", "A_B", "-o", scratch.File("out.png")}).status, 1);
  EXPECT_EQ(ReadFile(scratch.File("out.png")), "earlier");
}

TEST(LibraryProgram, FailsWhenTheCanvasIsTooLarge) {
  const Outcome outcome = RunProgram({"library", "code39", "ABC", "--size", "100000x100000", "-o", "-"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.output, IsEmpty());
  EXPECT_THAT(outcome.errors, HasSubstr("サーフェス作成に失敗: "));
}

TEST(LibraryProgram, FailsWhenTheOutputCannotBeWritten) {
  const ScratchDirectory scratch;
  const std::vector<std::string> files = {scratch.File("missing/out.png"), scratch.Path(), "/dev/full"};
  for (const std::string& file : files) {
    const Outcome outcome = RunProgram({"library", "code39", "ABC", "--format", "png", "-o", file});
    EXPECT_EQ(outcome.status, 1) << file;
    EXPECT_THAT(outcome.errors, HasSubstr("mkbarcode: cannot write " + file + ": "));
  }
  EXPECT_TRUE(std::filesystem::exists("/dev/full"));
  for (const std::string command :
       {" library code39 ABC -o -", " --list", " --help", " --version", " library --list"}) {
    EXPECT_EQ(RunShell(Program() + command + " >/dev/full").status, 1) << command;
    EXPECT_EQ(RunShell(Program() + command + " >&-").status, 1) << command;
  }
}

// Draws into a file that may grow to one block of 512 bytes, much less than the picture.
Outcome DrawOnFullDisk(const std::string& whatTheLimitDoes, const std::string& file) {
  return RunShell(whatTheLimitDoes + "ulimit -c 0; ulimit -f 1; " + Program() +
                  " library code39 ABC --size 900x300 -o " + ShellQuoted(file));
}

TEST(LibraryProgram, KeepsAnEarlierFileWhenTheDiskIsFull) {
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

TEST(LibraryProgram, LeavesNothingBehindWhenASignalEndsItInTheMiddleOfAWrite) {
  const ScratchDirectory scratch;
  const std::string file = scratch.File("out.png");
  WriteFile(file, "earlier");
  const Outcome outcome = DrawOnFullDisk("", file);
  EXPECT_THAT(outcome.status, 128 + SIGXFSZ);
  EXPECT_THAT(scratch.Names(), ElementsAre("out.png"));
  EXPECT_EQ(ReadFile(file), "earlier");
}

TEST(LibraryProgram, TellsThatADirectoryTakesNoFile) {
  const ScratchDirectory scratch;
  std::filesystem::permissions(scratch.Path(), std::filesystem::perms(0555));
  // The superuser writes into every directory while this capability lasts.
  const std::string unprivileged = geteuid() == 0 ? "setpriv --bounding-set=-dac_override " : "";
  const std::string file = scratch.File("out.png");
  const Outcome outcome = RunShell(unprivileged + Program() + " library code39 ABC -o " + ShellQuoted(file));
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.errors, Concat({"mkbarcode: cannot write ", file, ": cannot make a file in ",
                                    scratch.Path(), ": Permission denied\n"}));
  std::filesystem::permissions(scratch.Path(), std::filesystem::perms(0755));
  WriteFile(file, "earlier");
  std::filesystem::permissions(file, std::filesystem::perms(0444));
  const Outcome onProtected =
      RunShell(unprivileged + Program() + " library code39 ABC -o " + ShellQuoted(file));
  EXPECT_EQ(onProtected.status, 1);
  EXPECT_EQ(onProtected.errors, "mkbarcode: cannot write " + file + ": Permission denied\n");
  EXPECT_EQ(ReadFile(file), "earlier");
}

TEST(LibraryProgram, WritesPipesAndOpenFilesInPlace) {
  const ScratchDirectory scratch;
  const std::string expected = RunProgram({"library", "code39", "ABC", "-o", "-"}).output;
  const std::string draw = Program() + " library code39 ABC --format png -o ";
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

TEST(LibraryProgram, KeepsDiagnosticsOutOfTheFileWhenStandardOutputIsClosed) {
  const ScratchDirectory scratch;
  const std::string expected = RunProgram({"library", "code39", "ABC", "-o", "-"}).output;
  const Outcome outcome = RunShell(Program() + " library code39 ABC -o " +
                                   ShellQuoted(scratch.File("out.png")) + " <&- >&- 2>&-");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(ReadFile(scratch.File("out.png")), expected);
}

TEST(LibraryProgram, FailsWhenTheInputCannotBeRead) {
  const ScratchDirectory scratch;
  const Outcome outcome = RunProgram({"library", "code39", "--input", scratch.File("missing"), "-o", "-"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.errors, HasSubstr("mkbarcode: cannot read "));
  WriteFile(scratch.File("nul"), std::string("A\0B", 3));
  const Outcome nul = RunProgram({"library", "code39", "--input", scratch.File("nul"), "-o", "-"});
  EXPECT_EQ(nul.status, 1);
  EXPECT_THAT(nul.errors, HasSubstr("NUL"));
}

TEST(LibraryProgram, AnswersWrongUsageWithStatusTwo) {
  const ScratchDirectory scratch;
  const std::string file = scratch.File("out.png");
  for (const std::vector<std::string>& arguments :
       std::vector<std::vector<std::string>>{{"library", "code38", "ABC", "-o", file},
                                             {"library", "code39", "-o", file},
                                             {"library", "code39", "ABC"},
                                             {"library", "code39", "ABC", "-o", file, "--size", "big"},
                                             {"library", "code39", "ABC", "-o", file, "--no-such-option"},
                                             {"library", "code39", "ABC", "-o", file, "--code-mode", "B"},
                                             {"library", "code128", "ABC", "-o", file, "--code-mode", "D"},
                                             {"library"}}) {
    const Outcome outcome = RunProgram(arguments);
    EXPECT_EQ(outcome.status, 2) << testing::PrintToString(arguments);
    EXPECT_THAT(outcome.output, IsEmpty());
    EXPECT_THAT(outcome.errors, StartsWith("mkbarcode: "));
    EXPECT_THAT(outcome.errors, testing::EndsWith("See mkbarcode library --help\n"));
  }
  EXPECT_FALSE(std::filesystem::exists(file));
}

TEST(LibraryProgram, PrintsListVersionAndHelp) {
  EXPECT_THAT(RunProgram({"library", "--list"}).output, HasSubstr("code39 "));
  EXPECT_EQ(RunProgram({"library", "--version"}).output, "mkbarcode " BARCODE_VERSION_STRING "\n");
  EXPECT_THAT(RunProgram({"library", "--help"}).output, HasSubstr("--[no-]extended-guard"));
  for (const std::string option : {"--list", "--version", "--help"}) {
    const Outcome outcome = RunProgram({"library", option});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.errors, IsEmpty());
  }
}

}  // namespace
}  // namespace barcode::tool
