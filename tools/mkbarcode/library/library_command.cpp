#include "mkbarcode/library/library_command.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include "mkbarcode/cli/help_page.h"
#include "mkbarcode/cli/parser.h"
#include "mkbarcode/cli/suggestion.h"
#include "mkbarcode/cli/version.h"
#include "mkbarcode/errors.h"
#include "mkbarcode/io.h"
#include "mkbarcode/library/list.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

constexpr const char* kPurpose =
    "Draws barcodes through the 43 functions of libbarcode.so, as PNG or SVG, byte for byte what a host "
    "gets.";
constexpr const char* kNotes =
    "An option may be given only to the types that it serves.\n"
    "Put -- before a text that begins with a dash: mkbarcode library nw7 -o out.png -- -123-\n"
    "\n"
    "Examples:\n"
    "  mkbarcode library code39 \"ABC-123\" --size 300x100 -o out.png\n"
    "  mkbarcode library ean13 490123456789 --size 320x120 -o out.svg\n"
    "  mkbarcode library code128 \"piped\" --format svg -o - | gzip > out.svgz\n"
    "\n"
    "Exit status: 0 done, 1 the drawing, reading or writing failed, 2 wrong usage.";

std::string HelpText(const OptionInfo& option) {
  const std::string values = AcceptedValues(option);
  return values.empty() ? std::string(option.help) : Concat({option.help, ": ", values});
}

std::string GroupName(const OptionInfo& option) {
  const auto servesAll = [&](const auto& isMeant) {
    return std::ranges::all_of(AllTypes(),
                               [&](const TypeInfo& type) { return type.Serves(option.id) == isMeant(type); });
  };
  if (servesAll([](const TypeInfo&) { return true; })) {
    return "Options of every type";
  }
  if (servesAll([](const TypeInfo& type) { return !type.IsTwoDimensional(); })) {
    return "Options of the linear types";
  }
  if (servesAll([](const TypeInfo& type) { return type.IsTwoDimensional(); })) {
    return "Options of the two-dimensional types";
  }
  return Concat({"Options of ", NamesOfTypesServing(option.id)});
}

// What the parser writes into while it runs.
struct Arguments {
  std::string type;
  std::string text;
  std::string size;
  std::string format;
  bool convenience = false;
  bool stacked = false;
  bool list = false;
  bool version = false;
  DrawCommand command;
};

void AddFlag(CLI::App& app, const OptionInfo& option, std::vector<Setting>& settings) {
  const std::string name(option.name);
  app.add_flag_function(
         Concat({"--", name, ",!--no-", name}),
         [&option, &settings, name](std::int64_t count) {
           if (count == 0) {
             throw UsageError(Concat({"--", name, " and --no-", name, " exclude each other"}));
           }
           settings.push_back(MakeSetting(option.id, count > 0 ? "on" : "off"));
         },
         HelpText(option))
      ->group(GroupName(option));
}

void AddValue(CLI::App& app, const OptionInfo& option, std::vector<Setting>& settings) {
  std::string names = Concat({"--", option.name});
  if (!option.alias.empty()) {
    names += Concat({",--", option.alias});
  }
  app.add_option_function<std::string>(
         names,
         [&option, &settings](const std::string& value) {
           settings.push_back(MakeSetting(option.id, value));
         },
         HelpText(option))
      ->type_name("VALUE")
      ->group(GroupName(option));
}

void AddSettings(CLI::App& app, std::vector<Setting>& settings) {
  for (const OptionInfo& option : AllOptions()) {
    if (option.IsFlag()) {
      AddFlag(app, option, settings);
    } else {
      AddValue(app, option, settings);
    }
  }
}

void AddDrawing(CLI::App& app, Arguments& arguments) {
  DrawCommand& command = arguments.command;
  app.add_option("TYPE", arguments.type, "The symbology, a name or alias from --list")->type_name("");
  app.add_option("TEXT", arguments.text, "The text to encode")->type_name("");
  app.add_option("--size", arguments.size,
                 "Box in pixels, WIDTHxHEIGHT (default 300x100); one number N draws two-dimensional types "
                 "into N x N (default 200) and the postal code by its height (default 24)")
      ->type_name("SIZE");
  app.add_option("-o,--output", command.outputFile, "File to write; - is standard output")->type_name("FILE");
  app.add_option("--format", arguments.format,
                 "png, svg, jpg or jpeg (default: by the suffix of FILE). As jpg the image is a PNG "
                 "too; only the data URI names the type image/jpeg")
      ->type_name("FORMAT");
  app.add_flag("--data-uri", command.request.asDataUri,
               "Write a data URI with the PNG in base64 and a line end (to standard output without -o)");
  app.add_option("--input", command.inputFile,
                 "Read the text from a file instead, - is standard input; one line end at the end is "
                 "dropped")
      ->type_name("FILE");
  app.add_flag("--keep-newline", command.keepNewline, "Keep that line end");
  app.add_flag("--convenience", arguments.convenience,
               "gs1-128: the payment form of Japanese convenience stores, 44 digits");
  app.add_flag("--stacked", arguments.stacked, "databar-expanded: the stacked form");
  app.add_flag("--verbose", command.verbose, "Show the library's diagnostics on standard error");
  app.add_flag("--list", arguments.list, "List the types that this build offers, with their aliases");
  app.add_flag("--version", arguments.version, "Print the version");
  AddSettings(app, command.request.settings);
}

std::string ChooseFormat(const CLI::App& app, const Arguments& arguments) {
  if (WasGiven(app, "--format")) {
    std::string format = LowerCase(arguments.format);
    if (FormatOfFile(Concat({".", format})) != format) {
      throw UsageError(
          Concat({"--format: '", arguments.format, "' is not accepted; it takes png, svg, jpg or jpeg"}));
    }
    return format;
  }
  const std::string& file = arguments.command.outputFile;
  if (std::optional<std::string> format = FormatOfFile(file)) {
    return *std::move(format);
  }
  if (file == "-" || arguments.command.request.asDataUri) {
    return "png";
  }
  throw UsageError(
      Concat({"-o: the suffix of '", file, "' tells no format; give --format png, svg, jpg or jpeg"}));
}

const TypeInfo& RequireType(const std::string& name) {
  if (const TypeInfo* const type = FindType(name)) {
    return *type;
  }
  std::vector<std::string> names;
  for (const TypeInfo& type : AllTypes()) {
    names.emplace_back(type.name);
  }
  throw UsageError(
      Concat({"there is no type '", name, "'", DidYouMean(name, names), " See mkbarcode library --list"}));
}

Size ChooseSize(const CLI::App& app, const Arguments& arguments, const TypeInfo& type) {
  if (!WasGiven(app, "--size")) {
    return DefaultSize(type);
  }
  if (const std::optional<Size> size = ParseSize(arguments.size)) {
    return *size;
  }
  throw UsageError(Concat(
      {"--size: '", arguments.size, "' is not accepted; it takes WIDTHxHEIGHT or one number, in pixels"}));
}

Form ChooseForm(const Arguments& arguments) {
  if (arguments.convenience && arguments.stacked) {
    throw UsageError("--convenience and --stacked exclude each other");
  }
  if (arguments.convenience) {
    return Form::kConvenience;
  }
  return arguments.stacked ? Form::kStacked : Form::kPlain;
}

void ChooseOutput(const CLI::App& app, DrawCommand& command) {
  if (WasGiven(app, "--output") && command.outputFile.empty()) {
    throw UsageError("-o: the file name is empty");
  }
  if (!command.outputFile.empty()) {
    return;
  }
  if (!command.request.asDataUri) {
    throw UsageError("no output: give -o FILE, or -o - for standard output");
  }
  command.outputFile = "-";
}

void CheckInput(const CLI::App& app, const Arguments& arguments) {
  const bool hasText = WasGiven(app, "TEXT");
  const bool hasInput = WasGiven(app, "--input");
  if (hasText && hasInput) {
    throw UsageError("the text is given twice, as TEXT and by --input");
  }
  if (!hasText && !hasInput) {
    throw UsageError("no text: give TEXT, or --input FILE");
  }
  if (hasInput && arguments.command.inputFile.empty()) {
    throw UsageError("--input: the file name is empty");
  }
  if (arguments.command.keepNewline && !hasInput) {
    throw UsageError("--keep-newline goes with --input only");
  }
}

// The words of the library's own keywords.
std::vector<std::string> WordsOfLibrary(std::string_view name) {
  if (name == "TYPE") {
    return WordsOfLabels(name);
  }
  for (const OptionInfo& option : AllOptions()) {
    const auto* const words = std::get_if<WordSetter>(&option.setter);
    if (words != nullptr && (option.name == name || option.alias == name)) {
      return {words->words.begin(), words->words.end()};
    }
  }
  return {};
}

std::unique_ptr<CLI::App> BuildLibraryApp(Arguments& arguments) {
  auto app = std::make_unique<CLI::App>(kPurpose, "library");
  app->footer(kNotes);
  app->set_help_flag("-h,--help", "Print this help");
  AddDrawing(*app, arguments);
  return app;
}

CommandDescription DescribeLibrary(const CLI::App& app) {
  CommandDescription description = Describe(app, WordsOfLibrary);
  description.usage = {"library TYPE TEXT [--size WxH] -o FILE [OPTIONS]"};
  return description;
}

DrawCommand ReadDrawing(const CLI::App& app, Arguments& arguments) {
  if (!WasGiven(app, "TYPE")) {
    throw UsageError("no type given");
  }
  const TypeInfo& type = RequireType(arguments.type);
  CheckInput(app, arguments);
  DrawCommand& command = arguments.command;
  ChooseOutput(app, command);
  command.request.type = &type;
  command.request.text = arguments.text;
  command.request.size = ChooseSize(app, arguments, type);
  command.request.form = ChooseForm(arguments);
  command.request.format = ChooseFormat(app, arguments);
  CheckRequest(command.request);
  return std::move(command);
}

int Run(const PrintCommand& command) {
  WriteAll("-", command.text);
  return kExitDone;
}

int Run(const DrawCommand& command) {
  DrawRequest request = command.request;
  if (!command.inputFile.empty()) {
    request.text = ReadText(command.inputFile, command.keepNewline);
  }
  const DrawnImage image = Draw(request, command.verbose);
  if (const std::optional<std::string> warning = TooWide(request, image)) {
    WriteToStandardError(Concat({"mkbarcode: warning: ", *warning, "\n"}));
  }
  WriteAll(command.outputFile, request.asDataUri ? Concat({image.bytes, "\n"}) : image.bytes);
  return kExitDone;
}

}  // namespace

LibraryCommand ParseLibraryCommand(const std::vector<std::string>& given) {
  Arguments arguments;
  const std::unique_ptr<CLI::App> app = BuildLibraryApp(arguments);
  if (!RunParser(*app, given)) {
    return PrintCommand{HelpPage(DescribeLibrary(*app))};
  }
  if (arguments.version) {
    return PrintCommand{VersionText()};
  }
  if (arguments.list) {
    return PrintCommand{ListText()};
  }
  return ReadDrawing(*app, arguments);
}

CommandDescription DescribeLibraryCommand() {
  Arguments arguments;
  return DescribeLibrary(*BuildLibraryApp(arguments));
}

int RunLibraryCommand(const std::vector<std::string>& arguments) {
  return std::visit([](const auto& command) { return Run(command); }, ParseLibraryCommand(arguments));
}

}  // namespace barcode::tool
