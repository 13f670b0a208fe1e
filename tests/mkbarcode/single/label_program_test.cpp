// One label, as a shell sees the program.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>

#include "barcode.h"
#include "label/field_values.h"
#include "label/label.h"
#include "label/types.h"
#include "mkbarcode/label_words.h"
#include "mkbarcode/program_runner.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

using nlohmann::json;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

constexpr const char* kPngSignature = "\x89PNG\r\n\x1A\n";

label::Request RequestFor(const std::string& type, const std::string& text) {
  label::Request request;
  request.type = type;
  request.text = text;
  return request;
}

std::string Usage(const std::string& message) {
  return Concat({"mkbarcode: ", message, "\nSee mkbarcode --help\n"});
}

TEST(LabelProgram, MakesTheLabelOfTheLibraryWithoutAWord) {
  const ScratchDirectory scratch;
  for (const label::Format format : {label::Format::kPng, label::Format::kSvg, label::Format::kPdf}) {
    const std::string file = scratch.File(Concat({"out.", label::WordOf(format)}));
    const Outcome outcome = RunProgram({"code39", "ABC-123", "-o", file});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.output + outcome.errors, IsEmpty());
    label::Request request = RequestFor("code39", "ABC-123");
    request.format = format;
    EXPECT_EQ(ReadFile(file), label::Make(request).data) << file;
  }
}

TEST(LabelProgram, TheSuffixTellsTheFormatAndTheOptionGoesBeforeIt) {
  const ScratchDirectory scratch;
  ASSERT_EQ(RunProgram({"qr", "A", "-o", scratch.File("a.SVG")}).status, 0);
  EXPECT_THAT(ReadFile(scratch.File("a.SVG")), StartsWith("<svg "));
  ASSERT_EQ(RunProgram({"qr", "A", "-o", scratch.File("b.svg"), "--format", "PDF"}).status, 0);
  EXPECT_THAT(ReadFile(scratch.File("b.svg")), StartsWith("%PDF-"));
  ASSERT_EQ(RunProgram({"qr", "A", "-o", scratch.File("c"), "--format", "png"}).status, 0);
  EXPECT_THAT(ReadFile(scratch.File("c")), StartsWith(kPngSignature));
  EXPECT_THAT(RunProgram({"qr", "A", "-o", "-"}).output, StartsWith(kPngSignature));
}

TEST(LabelProgram, AnUnknownSuffixIsWrongUsageThatNamesTheSuffixes) {
  for (const std::string name : {"out.gif", "out", ".png", "png"}) {
    const Outcome outcome = RunProgram({"qr", "A", "-o", name});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.errors,
              Usage(Concat({"The name \"", name,
                            "\" tells no format: end it with .png, .svg or .pdf, or add --format."})));
    EXPECT_FALSE(std::filesystem::exists(name));
  }
}

TEST(LabelProgram, EveryFieldOfTheRequestIsAnOption) {
  const Outcome outcome = RunProgram({"qr",
                                      "HELLO",
                                      "-o",
                                      "-",
                                      "--format",
                                      "svg",
                                      "--module",
                                      "3",
                                      "--qr-version",
                                      "4",
                                      "--error-correction-level",
                                      "q",
                                      "--quiet-zone=6",
                                      "--caption",
                                      "-a b-",
                                      "--rotate=90",
                                      "--foreground",
                                      "#123",
                                      "--background",
                                      "transparent",
                                      "--text-scale",
                                      "1.5",
                                      "--bar-adjust",
                                      "-1"});
  EXPECT_EQ(outcome.status, 0) << outcome.errors;
  label::Request request = RequestFor("qr", "HELLO");
  for (const auto& [name, value] :
       std::vector<std::pair<std::string_view, std::string_view>>{{"format", "svg"},
                                                                  {"module", "3"},
                                                                  {"qr_version", "4"},
                                                                  {"error_correction_level", "q"},
                                                                  {"quiet_zone", "6"},
                                                                  {"caption", "-a b-"},
                                                                  {"rotate", "90"},
                                                                  {"foreground", "#123"},
                                                                  {"background", "transparent"},
                                                                  {"text_scale", "1.5"},
                                                                  {"bar_adjust", "-1"}}) {
    label::SetFromText(request, *label::FindField(name), value);
  }
  EXPECT_EQ(outcome.output, label::Make(request).data);
}

TEST(LabelProgram, BooleansHaveTwoOptions) {
  label::Request request = RequestFor("jan13", "490123456789");
  request.extendedGuard = false;
  EXPECT_EQ(RunProgram({"jan13", "490123456789", "--no-extended-guard", "-o", "-"}).output,
            label::Make(request).data);
  request.extendedGuard = true;
  EXPECT_EQ(RunProgram({"jan13", "490123456789", "--extended-guard", "-o", "-"}).output,
            label::Make(request).data);
}

TEST(LabelProgram, TheVersionOfQrIsNotThatOfTheTool) {
  EXPECT_EQ(RunProgram({"--version"}).output, "mkbarcode " BARCODE_VERSION_STRING "\n");
  EXPECT_EQ(RunProgram({"qr", "A", "--qr-version", "41", "-o", "-"}).status, 2);
}

TEST(LabelProgram, WarningsAreLinesOfStandardError) {
  const Outcome outcome = RunProgram({"matrix2of5", "123", "--quiet-zone", "3", "-o", "-"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.output, StartsWith(kPngSignature));
  EXPECT_EQ(outcome.errors,
            "mkbarcode: warning: No common scanner reads matrix2of5; make sure that yours does.\n"
            "mkbarcode: warning: The quiet zone is smaller than that of the standard, 10 modules on the left "
            "and 10 on "
            "the right; leave out \"--quiet-zone\", or keep that margin free around the picture.\n");
}

TEST(LabelProgram, StrictRefusesWhatIsWarnedOf) {
  const ScratchDirectory scratch;
  const Outcome outcome = RunProgram({"matrix2of5", "123", "--strict", "-o", scratch.File("out.png")});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.errors, "mkbarcode: No common scanner reads matrix2of5; make sure that yours does.\n");
  EXPECT_THAT(scratch.Names(), IsEmpty());
}

TEST(LabelProgram, WritesTheReport) {
  const ScratchDirectory scratch;
  const std::string file = scratch.File("report.json");
  const std::string report = label::Make(RequestFor("matrix2of5", "123")).report + "\n";
  const std::vector<std::string> arguments = {"matrix2of5", "123", "-o", scratch.File("out.png")};
  const auto with = [&arguments](const std::string& option) {
    std::vector<std::string> more = arguments;
    more.push_back(option);
    return RunProgram(more);
  };
  EXPECT_EQ(with("--report").errors, report);
  for (const std::string name : {"true", "{}", "=x", "1"}) {
    RunShell(Concat({"cd ", ShellQuoted(scratch.Path()), "; ", Program(), " matrix2of5 123 -o out.png ",
                     ShellQuoted("--report=" + name)}));
    EXPECT_EQ(ReadFile(scratch.File(name)), report);
  }
  EXPECT_EQ(with("--report=-").output, report);
  const Outcome intoFile = with("--report=" + file);
  EXPECT_EQ(ReadFile(file), report);
  EXPECT_THAT(intoFile.output, IsEmpty());
  EXPECT_THAT(intoFile.errors, StartsWith("mkbarcode: warning: No common scanner"));
}

TEST(LabelProgram, ReportsARefusalToo) {
  const ScratchDirectory scratch;
  const std::string file = scratch.File("report.json");
  const Outcome outcome = RunProgram({"jan13", "4901234567895", "-o", "-", "--report"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.output, IsEmpty());
  EXPECT_EQ(json::parse(outcome.errors).at("error").at("code"), "bad_text");
  const Outcome intoFile = RunProgram({"jan13", "4901234567895", "-o", "-", "--report=" + file});
  EXPECT_EQ(intoFile.status, 1);
  EXPECT_EQ(json::parse(ReadFile(file)), json::parse(outcome.errors));
  EXPECT_THAT(intoFile.errors, StartsWith("mkbarcode: The check digit is 5 but must be "));
}

TEST(LabelProgram, ReadsTheTextFromAFileOrStandardInput) {
  const ScratchDirectory scratch;
  const auto label = [](const std::string& text) { return label::Make(RequestFor("qr", text)).data; };
  WriteFile(scratch.File("text"), "A\nB\r\n");
  EXPECT_EQ(RunProgram({"qr", "--input", scratch.File("text"), "-o", "-"}).output, label("A\nB"));
  EXPECT_EQ(RunProgram({"qr", "--input", scratch.File("text"), "--keep-newline", "-o", "-"}).output,
            label("A\nB\r\n"));
  EXPECT_EQ(RunShell("printf 'A\\n\\n' | " + Program() + " qr --input - -o -").output, label("A\n"));
  EXPECT_EQ(RunShell("printf A | " + Program() + " qr --input=- -o -").output, label("A"));
  const Outcome missing = RunProgram({"qr", "--input", scratch.File("missing"), "-o", "-"});
  EXPECT_EQ(missing.status, 1);
  EXPECT_THAT(missing.errors, StartsWith("mkbarcode: cannot read "));
}

TEST(LabelProgram, TakesBytesInBase64) {
  label::Request request = RequestFor("qr", "");
  request.text.reset();
  request.textBytes = std::string("\0\xFF\x80", 3);
  EXPECT_EQ(RunProgram({"qr", "--text-base64", "AP+A", "-o", "-"}).output, label::Make(request).data);
  const Outcome outcome = RunProgram({"qr", "--text-base64", "AP+", "-o", "-"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.errors, HasSubstr("\"--text-base64\" must be a string in Base64"));
}

TEST(LabelProgram, TakesAnyTextAsItIs) {
  for (const std::string text : {"gallery", "library", "[a,b]", "{}", "%%", "a=b", "\"q\"", "\xE3\x81\x82",
                                 "#x", "-", " ", "a b", "/x", "++"}) {
    EXPECT_EQ(RunProgram({"qr", text, "-o", "-"}).output, label::Make(RequestFor("qr", text)).data) << text;
  }
  for (const std::string text : {"-x", "--", "--module", "-o", "--help"}) {
    EXPECT_EQ(RunProgram({"qr", "-o", "-", "--", text}).output, label::Make(RequestFor("qr", text)).data)
        << text;
  }
  const Outcome dashed = RunProgram({"qr", "-x", "-o", "-"});
  EXPECT_EQ(dashed.status, 2);
  EXPECT_EQ(dashed.errors,
            Usage("There is no option \"-x\"; put \"--\" before a text that begins with a dash."));
}

// The library's name, an alias, in any case.
TEST(LabelProgram, TakesEveryNameOfEveryType) {
  EXPECT_EQ(RunProgram({"EAN_13", "490123456789", "-o", "-"}).output,
            label::Make(RequestFor("jan13", "490123456789")).data);
}

TEST(LabelProgram, WrongUsageIsStatusTwoAndSaysWhatWouldDo) {
  const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
      {{}, "No type is given: \"mkbarcode --list\" names all, and mkbarcode TYPE TEXT -o FILE draws."},
      {{"code12", "A", "-o", "x.png"},
       "There is no type \"code12\"; did you mean \"code128\"? \"mkbarcode --list\" names all types."},
      {{"gallry", "dir"},
       "There is no type \"gallry\"; did you mean \"gallery\"? \"mkbarcode --list\" names all types."},
      {{"zebra", "A", "-o", "x.png"}, "There is no type \"zebra\". \"mkbarcode --list\" names all types."},
      {{"code39", "A", "-o", "x.png", "--modul", "3"},
       "There is no option \"--modul\"; did you mean \"--module\"?"},
      {{"code39", "A", "-o", "x.png", "--foregruond=#000"},
       "There is no option \"--foregruond\"; did you mean \"--foreground\"?"},
      {{"code39", "A", "-o", "x.png", "--zebra"}, "There is no option \"--zebra\"."},
      {{"code39", "A", "-o", "x.png", "--module", "0"},
       "The option \"--module\" must be a whole number from 1 to 100."},
      {{"code39", "A", "-o", "x.png", "--module="},
       "The option \"--module\" must be a whole number from 1 to 100."},
      {{"code39", "A", "-o", "x.png", "--module"}, "The option \"--module\" needs a value."},
      {{"code39", "A", "-o", "x.png", "--module", "2", "--module", "2"},
       "The option \"--module\" stands twice; give it once."},
      {{"code39", "A", "-o", "x.png", "-o", "y.png"}, "The option \"-o\" stands twice; give it once."},
      {{"code39", "A", "-o", "x.png", "--show-text=banana"},
       "The option \"--show-text\" must be true or false."},
      {{"code39", "A", "-o", "x.png", "--strict=99999999999999999999"},
       "The option \"--strict\" must be true or false."},
      {{"code39", "A", "-o", "x.png", "--code-mode", "B"},
       "The option \"--code-mode\" is none of code39; leave it out. It belongs to code128."},
      {{"code39", "A", "-o", "x.png", "--width", "100"},
       "The option \"--width\" needs the option \"--height\" beside it."},
      {{"code39", "A", "-o", "x.png", "--width", "100", "--height", "50", "--module", "2"},
       "The option \"--module\" must not stand beside \"--width\"; leave one of them out."},
      {{"databar", "4912345678904", "--form", "row", "-o", "-"},
       "The option \"--form\" must be \"omnidirectional\", \"stacked\" or \"stacked-omnidirectional\" for "
       "databar."},
      {{"code39", "A"}, "No output is given: add -o FILE, or -o - for standard output."},
      {{"code39", "A", "-o", ""}, "The option \"--output\" must be the name of a file, or \"-\"."},
      {{"code39", "-o", "-"}, "No text is given: add TEXT, --input FILE or --text-base64."},
      {{"code39", "A", "--input", "f", "-o", "-"},
       "The text is given twice: leave one of TEXT, --input and --text-base64 out."},
      {{"code39", "A", "--keep-newline", "-o", "-"},
       "The option \"--keep-newline\" goes with \"--input\" only."},
      {{"code39", "A", "B", "-o", "-"}, "\"B\" is one argument too many; put a text with spaces in quotes."},
      {{"code39", "A", "-o", "-", "--report=-"},
       "Picture and report cannot both go to standard output: give \"--report\" a file, or leave \"=-\" "
       "out."},
      {{"code39", "A", "-o", "-", "--report="},
       "The option \"--report\" must be the name of a file, or stand without one."},
  };
  const ScratchDirectory scratch;
  for (const auto& [arguments, message] : cases) {
    const Outcome outcome = RunProgram(arguments);
    EXPECT_EQ(outcome.status, 2) << testing::PrintToString(arguments);
    EXPECT_THAT(outcome.output, IsEmpty());
    EXPECT_EQ(outcome.errors, Usage(message));
  }
}

TEST(LabelProgram, OptionsOfTheLibraryFormAreTold) {
  for (const std::string option :
       {"--size", "--data-uri", "--verbose", "--fit-width", "--no-fit-width", "--fg"}) {
    const Outcome outcome = RunProgram({"code39", "A", "-o", "x.png", option});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.errors, StartsWith(Concat({"mkbarcode: The option \"", option, "\" belongs to "})));
    EXPECT_THAT(outcome.errors, HasSubstr("\"mkbarcode library\""));
  }
  EXPECT_EQ(RunProgram({"library", "code39", "A", "-o", "x.png", "--caption=x"}).errors,
            "mkbarcode: The option \"--caption\" belongs to \"mkbarcode TYPE TEXT\", \"mkbarcode batch\", "
            "\"mkbarcode sheet\".\nSee mkbarcode library --help\n");
}

TEST(LabelProgram, LowBarsAreToldTheHeightThatWouldDo) {
  const Outcome outcome = RunProgram({"code39", "A", "--module", "1", "--height", "3", "-o", "-"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.errors,
            "mkbarcode: The bars are too low to be read; give them a height of at least 5 pixels.\n");
}

TEST(LabelProgram, OptionsStandBeforeTextsWithDashes) {
  for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
           {"code39", "--", "-ABC", "-o", "out.png"}, {"library", "nw7", "--", "-1-", "-o", "out.png"}}) {
    const Outcome outcome = RunProgram(arguments);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.errors,
                StartsWith("mkbarcode: What follows \"--\" is text: put the options before it.\n"));
  }
}

TEST(LabelProgram, PictureAndReportNeedAFileEach) {
  const ScratchDirectory scratch;
  const std::string file = scratch.File("out.png");
  const Outcome outcome = RunProgram({"code39", "A", "-o", file, "--report=" + file});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.errors, HasSubstr("Picture and report need a file each"));
  EXPECT_THAT(scratch.Names(), IsEmpty());
}

TEST(LabelProgram, FlagsAreTrueOrFalseAndStandOnce) {
  const Outcome number = RunProgram({"library", "code39", "A", "--fit-width=3", "-o", "-"});
  EXPECT_EQ(number.status, 2);
  EXPECT_THAT(number.errors, HasSubstr("The option \"--fit-width\" must be true or false."));
  const Outcome twice = RunProgram({"code39", "A", "-o", "-", "--report", "--report=x"});
  EXPECT_EQ(twice.status, 2);
  EXPECT_THAT(twice.errors, HasSubstr("The option \"--report\" stands twice; give it once."));
}

TEST(LabelProgram, TellsOfTextsThatAreNoUtf8) {
  const ScratchDirectory scratch;
  WriteFile(scratch.File("text"), "A\xFF");
  const Outcome outcome = RunProgram({"qr", "--input", scratch.File("text"), "-o", "-"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.errors, "mkbarcode: The text must be a string in UTF-8.\n");
}

TEST(LabelProgram, TellsWhereTheNamesOfTypesAre) {
  for (const std::string command : {"batch", "sheet"}) {
    const std::string help = RunProgram({command, "--help"}).output;
    EXPECT_THAT(help, HasSubstr("mkbarcode --list"));
    EXPECT_THAT(help, Not(HasSubstr("barcode_label_types")));
  }
}

TEST(LabelProgram, WhatTheSymbologyRefusesIsStatusOne) {
  const ScratchDirectory scratch;
  const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
      {{"code39", "A_B"}, "\"_\""},
      {{"code39", ""}, ""},
      {{"jan13", "123"}, ""},
      {{"qr", std::string(3000, 'A')}, ""},
      {{"qr", "A", "--module", "100", "--quiet-zone", "100", "--caption", "\xFF"}, "\"--caption\""},
      {{"code39", "A", "--width", "10", "--height", "10"},
       "The symbol does not fit 10 x 10 pixels; give it at least 67 x 14. That is --width 67 --height 14.\n"},
      {{"qr", "A", "--format", "pdf", "--dpi", "4800", "--module", "1"},
       " A picture of 200 x 200 pixels would do.\n"},
  };
  for (const auto& [arguments, message] : cases) {
    std::vector<std::string> more = arguments;
    more.insert(more.end(), {"-o", scratch.File("out.png")});
    const Outcome outcome = RunProgram(more);
    const bool isOption = message == "\"--caption\"";
    EXPECT_EQ(outcome.status, isOption ? 2 : 1) << outcome.errors;
    EXPECT_THAT(outcome.output, IsEmpty());
    EXPECT_THAT(outcome.errors, StartsWith("mkbarcode: "));
    EXPECT_THAT(outcome.errors, HasSubstr(message));
    EXPECT_THAT(scratch.Names(), IsEmpty());
  }
  // What says the text is no option.
  WriteFile(scratch.File("text"), "\xFF");
  EXPECT_EQ(RunProgram({"qr", "--input", scratch.File("text"), "-o", "-"}).status, 1);
}

TEST(LabelProgram, FilesAreReplacedWholeOrNotAtAll) {
  const ScratchDirectory scratch;
  const std::string file = scratch.File("out.png");
  WriteFile(file, "earlier");
  EXPECT_EQ(RunProgram({"code39", "A_B", "-o", file}).status, 1);
  EXPECT_EQ(ReadFile(file), "earlier");
  const Outcome full = RunShell("trap '' XFSZ; ulimit -f 1; " + Program() +
                                " qr ABC --module 60 --format svg --rotate 90 --caption " +
                                std::string(200, 'x') + " -o " + ShellQuoted(file));
  EXPECT_EQ(full.status, 1);
  EXPECT_THAT(full.errors, HasSubstr("mkbarcode: cannot write " + file + ": File too large\n"));
  EXPECT_EQ(ReadFile(file), "earlier");
  EXPECT_THAT(scratch.Names(), testing::ElementsAre("out.png"));
}

TEST(LabelProgram, FailsWhenTheOutputCannotBeWritten) {
  const ScratchDirectory scratch;
  EXPECT_EQ(RunShell(Program() + " code39 ABC -o - >/dev/full").status, 1);
  EXPECT_EQ(RunShell(Program() + " code39 ABC -o - >&-").status, 1);
  EXPECT_EQ(RunProgram({"code39", "A", "-o", scratch.File("missing/out.png")}).status, 1);
  EXPECT_EQ(RunProgram({"code39", "A", "-o", scratch.File("a.png"), "--report=" + scratch.File("missing/r")})
                .status,
            1);
}

// All that a label loads: what draws through the 43 functions is opened by the commands that need it.
TEST(LabelProgram, LoadsNothingOfSdl) {
  const Outcome outcome = RunShell("LD_TRACE_LOADED_OBJECTS=1 " + Program());
  EXPECT_THAT(outcome.output, HasSubstr("libpng"));
  for (const std::string other :
       {"libbarcode.so", "libbarcode_label.so", "SDL", "libX11", "libasound", "libpulse"}) {
    EXPECT_THAT(outcome.output, testing::Not(HasSubstr(other)));
  }
  const auto loadedBy = [](const std::string& arguments) {
    return RunShell("LD_DEBUG=files " + Program() + arguments + " -o /dev/null 2>&1").output;
  };
  EXPECT_THAT(loadedBy(" code39 A --format png"), testing::Not(HasSubstr("libbarcode.so")));
  EXPECT_THAT(loadedBy(" library code39 A --format png"), HasSubstr("libSDL2"));
}

TEST(LabelProgram, TheListSaysOfEachTypeWhatReadersRead) {
  const Outcome outcome = RunProgram({"--list"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.errors, IsEmpty());
  std::string rest = outcome.output;
  for (const label::TypeInfo& type : label::AllTypes()) {
    const std::size_t place = rest.find(Concat({"\n", type.name, " "}));
    ASSERT_NE(place, std::string::npos) << type.name;
    const std::string block = rest.substr(place + 1, rest.find("\n\n", place) - place);
    EXPECT_THAT(block, HasSubstr(type.title));
    EXPECT_THAT(block, HasSubstr(type.aliases));
    for (const auto& [reader, says] :
         std::vector<std::pair<std::string, std::string_view>>{{"ZXing", type.readers.zxing},
                                                               {"ZBar", type.readers.zbar},
                                                               {"zxing-wasm", type.readers.zxingWasm}}) {
      std::istringstream lines(block);
      bool found = false;
      for (std::string line; std::getline(lines, line);) {
        found = found || (line.find(reader) != std::string::npos && line.ends_with(Concat({": ", says})));
      }
      EXPECT_TRUE(found) << type.name << " " << reader;
    }
    rest.erase(0, place + 1);
  }
}

TEST(LabelProgram, HelpIsThereForEveryCommand) {
  const std::string help = RunProgram({"--help"}).output;
  EXPECT_THAT(help, HasSubstr("mkbarcode TYPE TEXT -o FILE"));
  EXPECT_THAT(help, HasSubstr("mkbarcode library TYPE TEXT"));
  EXPECT_THAT(help, HasSubstr("mkbarcode gallery DIR"));
  EXPECT_THAT(help, HasSubstr("Exit status: 0 drawn"));
  EXPECT_EQ(RunProgram({"-h"}).output, help);
  EXPECT_EQ(RunProgram({"qr", "--help"}).output, help);
  for (const std::string command : {"library", "gallery"}) {
    const Outcome outcome = RunProgram({command, "--help"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.output, HasSubstr("Usage: mkbarcode " + command));
    EXPECT_THAT(outcome.errors, IsEmpty());
  }
}

}  // namespace
}  // namespace barcode::tool
