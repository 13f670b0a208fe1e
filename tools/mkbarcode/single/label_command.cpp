#include "mkbarcode/single/label_command.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "base/ascii.h"
#include "label/field_table.h"
#include "label/label.h"
#include "label/types.h"
#include "mkbarcode/cli/commands.h"
#include "mkbarcode/cli/help_page.h"
#include "mkbarcode/cli/parser.h"
#include "mkbarcode/cli/suggestion.h"
#include "mkbarcode/cli/version.h"
#include "mkbarcode/errors.h"
#include "mkbarcode/file_suffix.h"
#include "mkbarcode/io.h"
#include "mkbarcode/label_options.h"
#include "mkbarcode/quoting.h"
#include "mkbarcode/single/list.h"
#include "mkbarcode/single/outcome.h"
#include "mkbarcode/type_name.h"

namespace barcode::tool {
namespace {

constexpr const char* kPurpose = "Makes barcode labels that scan, as PNG, SVG or PDF.";
constexpr const char* kNotes =
    "The picture is as large as the symbol with its quiet zone needs. An option may be given only to the "
    "types\n"
    "that it serves. Put -- before a text that begins with a dash: mkbarcode nw7 -o out.png -- -123-\n"
    "\n"
    "Examples:\n"
    "  mkbarcode code39 \"ABC-123\" -o out.png\n"
    "  mkbarcode ean13 490123456789 --dpi 300 --module-mm 0.33 -o out.pdf\n"
    "  mkbarcode code128 \"piped\" --format svg -o - | gzip > out.svgz\n"
    "\n"
    "Exit status: 0 drawn, 1 refused by the symbology, or reading or writing failed, 2 wrong usage.";

constexpr const char* kGroup = "Text, output and help";

void AddFiles(CLI::App& app, LabelCommand& command) {
  app.add_option("-o,--output", command.outputFile, "File to write; - is standard output")
      ->type_name("FILE")
      ->group(kGroup);
  app.add_option("--input", command.inputFile,
                 "Read the text from a file instead, - is standard input; one line end at the end is dropped")
      ->type_name("FILE")
      ->group(kGroup);
  app.add_flag("--keep-newline", command.keepNewline, "Keep that line end")->group(kGroup);
  AddLabelOption(app, command.request, label::InfoOf(label::FieldId::kTextBase64))->group(kGroup);
  AddOptionalValue(app, "--report", command.reportFile,
                   "Write the report in JSON to a file, or to standard error in place of messages")
      ->type_name("FILE")
      ->group(kGroup);
  app.add_flag("--list", command.list, "List the types, with their aliases and what readers read")
      ->group(kGroup);
  app.add_flag("--version", command.version, "Print the version of mkbarcode")->group(kGroup);
}

void CheckText(const CLI::App& app, const LabelCommand& command) {
  const std::array given = {WasGiven(app, "TEXT"), WasGiven(app, "--input"), WasGiven(app, "--text-base64")};
  switch (std::ranges::count(given, true)) {
    case 0:
      throw UsageError("No text is given: add TEXT, --input FILE or --text-base64.");
    case 1:
      break;
    default:
      throw UsageError("The text is given twice: leave one of TEXT, --input and --text-base64 out.");
  }
  if (WasGiven(app, "--input") && command.inputFile.empty()) {
    throw UsageError("The option \"--input\" must be the name of a file, or \"-\".");
  }
  if (command.keepNewline && !WasGiven(app, "--input")) {
    throw UsageError("The option \"--keep-newline\" goes with \"--input\" only.");
  }
}

void CheckOutput(const CLI::App& app, const LabelCommand& command) {
  if (!WasGiven(app, "--output")) {
    throw UsageError("No output is given: add -o FILE, or -o - for standard output.");
  }
  if (command.outputFile.empty()) {
    throw UsageError("The option \"--output\" must be the name of a file, or \"-\".");
  }
  if (command.reportFile == "") {
    throw UsageError("The option \"--report\" must be the name of a file, or stand without one.");
  }
  if (command.outputFile == command.reportFile) {
    throw UsageError(
        command.outputFile == "-"
            ? "Picture and report cannot both go to standard output: give \"--report\" a file, or leave "
              "\"=-\" out."
            : "Picture and report need a file each: give \"--report\" another.");
  }
}

std::optional<label::Format> FormatOfSuffix(const std::string& file) {
  for (const label::Format format : {label::Format::kPng, label::Format::kSvg, label::Format::kPdf}) {
    const std::string suffix = ToUpper(Concat({".", label::WordOf(format)}));
    // A name that is nothing else is that of a hidden file.
    if (file.size() > suffix.size() && HasSuffix(file, suffix)) {
      return format;
    }
  }
  return std::nullopt;
}

void ChooseFormat(LabelCommand& command) {
  if (command.request.format || command.outputFile == "-") {
    return;
  }
  command.request.format = FormatOfSuffix(command.outputFile);
  if (!command.request.format) {
    throw UsageError(Concat({"The name \"", command.outputFile,
                             "\" tells no format: end it with .png, .svg or .pdf, or add --format."}));
  }
}

void WriteReport(const std::string& file, const std::string& report) {
  const std::string line = Concat({report, "\n"});
  if (file == kNoValue) {
    WriteToStandardError(line);
  } else {
    WriteAll(file, line);
  }
}

int Make(LabelCommand command) {
  if (!command.inputFile.empty()) {
    command.request.text = ReadText(command.inputFile, command.keepNewline);
  }
  const label::Label label = label::Make(command.request);
  const LabelOutcome outcome = ReadReport(label.report, command.request.width.has_value());
  if (label.ok) {
    WriteAll(command.outputFile, label.data);
  }
  if (command.reportFile) {
    WriteReport(*command.reportFile, label.report);
  }
  // The report on standard error says the same as the messages, and stays JSON without them.
  if (command.reportFile != kNoValue) {
    for (const std::string& warning : outcome.warnings) {
      WriteToStandardError(Concat({"mkbarcode: warning: ", warning, "\n"}));
    }
    if (outcome.refusal) {
      Throw(*outcome.refusal);
    }
  }
  return outcome.refusal ? StatusOf(*outcome.refusal) : kExitDone;
}

}  // namespace

std::unique_ptr<CLI::App> BuildLabelApp(LabelCommand& command) {
  auto app = std::make_unique<CLI::App>(kPurpose);
  app->footer(kNotes);
  app->set_help_flag("-h,--help", "Print this help")->group(kGroup);
  // Texts are taken as they are: no list in brackets, nothing split.
  app->add_option("TYPE", CLI::callback_t(), "The symbology: a name or an alias from --list")
      ->each([&command](const std::string& type) { command.request.type = type; });
  app->add_option("TEXT", CLI::callback_t(), "What the symbol says, in UTF-8")
      ->each([&command](const std::string& text) { command.request.text = text; });
  AddFiles(*app, command);
  AddLabelOptions(*app, command.request);
  app->get_option("--format")
      ->description("The format of the picture: png, svg or pdf (default: by the suffix of FILE; png for -)");
  return app;
}

LabelCommand ParseLabelCommand(const std::vector<std::string>& arguments) {
  LabelCommand command;
  const std::unique_ptr<CLI::App> app = BuildLabelApp(command);
  if (!RunParser(*app, arguments)) {
    command.help = true;
    return command;
  }
  if (command.version || command.list) {
    return command;
  }
  if (!command.request.type) {
    throw UsageError(
        "No type is given: \"mkbarcode --list\" names all, and mkbarcode TYPE TEXT -o FILE draws.");
  }
  RequireType(*command.request.type, NamesOfCommands());
  CheckText(*app, command);
  CheckOutput(*app, command);
  ChooseFormat(command);
  return command;
}

CommandDescription DescribeLabelCommand() {
  LabelCommand command;
  CommandDescription description = Describe(*BuildLabelApp(command));
  description.usage = {"TYPE TEXT -o FILE [OPTIONS]", "TYPE --input FILE -o FILE [OPTIONS]",
                       "--list | --version | --help"};
  return description;
}

int RunLabelCommand(const std::vector<std::string>& arguments) {
  LabelCommand command = ParseLabelCommand(arguments);
  if (command.help) {
    WriteAll("-", HelpPage(Overview()));
  } else if (command.version) {
    WriteAll("-", VersionText());
  } else if (command.list) {
    WriteAll("-", ListOfLabels());
  } else {
    return Make(std::move(command));
  }
  return kExitDone;
}

}  // namespace barcode::tool
