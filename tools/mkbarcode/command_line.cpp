#include "mkbarcode/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

#include "mkbarcode/errors.h"
#include "mkbarcode/list.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

constexpr std::size_t kHelpColumn = 36;
constexpr std::size_t kHelpTextWidth = 68;

constexpr const char* kDescription = "Draws barcodes as PNG or SVG.\n";
constexpr const char* kUsage =
    "Usage: mkbarcode TYPE TEXT [--size WxH] [OPTIONS] -o FILE\n"
    "       mkbarcode TYPE --input FILE [--size WxH] [OPTIONS] -o FILE\n"
    "       mkbarcode gallery DIR [--verbose]\n"
    "       mkbarcode --list | --version | --help\n";
constexpr const char* kFooter =
    "\nAn option may be given only to the types that it serves.\n"
    "Put -- before a text that begins with a dash: mkbarcode nw7 -o out.png -- -123-\n"
    "\nExamples:\n"
    "  mkbarcode code39 \"ABC-123\" --size 300x100 -o out.png\n"
    "  mkbarcode ean13 490123456789 --size 320x120 -o out.svg\n"
    "  mkbarcode code128 \"piped\" --format svg -o - | gzip > out.svgz\n"
    "\nExit status: 0 done, 1 the drawing, reading or writing failed, 2 wrong usage.";

// The parser's help page with the usage lines above, and flags written as "--[no-]NAME".
class HelpFormatter : public CLI::Formatter {
 public:
  HelpFormatter() { column_width(kHelpColumn); }

  std::string make_usage(const CLI::App* /*app*/, std::string /*name*/) const override { return kUsage; }

  std::string make_option_name(const CLI::Option* option, bool isPositional) const override {
    const std::vector<std::string>& names = option->get_lnames();
    const bool isSwitch = names.size() == 2 && names[1] == Concat({"no-", names[0]});
    return isSwitch ? Concat({"--[no-]", names[0]}) : CLI::Formatter::make_option_name(option, isPositional);
  }
};

// The description with line breaks, so that long lists of words stay readable.
std::string Wrapped(const std::string& text) {
  std::string wrapped;
  std::size_t lineLength = 0;
  std::size_t start = 0;
  while (start < text.size()) {
    const std::size_t end = std::min(text.find(' ', start), text.size());
    const std::string word = text.substr(start, end - start);
    const bool fits = lineLength + 1 + word.size() <= kHelpTextWidth;
    if (!wrapped.empty()) {
      wrapped += fits ? ' ' : '\n';
    }
    lineLength = fits ? lineLength + 1 + word.size() : word.size();
    wrapped += word;
    start = end + 1;
  }
  return wrapped;
}

std::string HelpText(const OptionInfo& option) {
  const std::string values = AcceptedValues(option);
  return Wrapped(values.empty() ? std::string(option.help) : Concat({option.help, ": ", values}));
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
  app.add_option("TYPE", arguments.type, Wrapped("The symbology, a name or alias from --list"))
      ->type_name("");
  app.add_option("TEXT", arguments.text, Wrapped("The text to encode"))->type_name("");
  app.add_option(
         "--size", arguments.size,
         Wrapped("Box in pixels, WIDTHxHEIGHT (default 300x100); one number N draws two-dimensional types "
                 "into N x N (default 200) and the postal code by its height (default 24)"))
      ->type_name("SIZE");
  app.add_option("-o,--output", command.outputFile, "File to write; - is standard output")->type_name("FILE");
  app.add_option("--format", arguments.format,
                 Wrapped("png, svg, jpg or jpeg (default: by the suffix of FILE). As jpg the image is a PNG "
                         "too; only the data URI names the type image/jpeg"))
      ->type_name("FORMAT");
  app.add_flag(
      "--data-uri", command.request.asDataUri,
      Wrapped("Write a data URI with the PNG in base64 and a line end (to standard output without -o)"));
  app.add_option("--input", command.inputFile,
                 Wrapped("Read the text from a file instead, - is standard input; one line end at the end is "
                         "dropped"))
      ->type_name("FILE");
  app.add_flag("--keep-newline", command.keepNewline, "Keep that line end");
  app.add_flag("--convenience", arguments.convenience,
               Wrapped("gs1-128: the payment form of Japanese convenience stores, 44 digits"));
  app.add_flag("--stacked", arguments.stacked, Wrapped("databar-expanded: the stacked form"));
  app.add_flag("--verbose", command.verbose, Wrapped("Show the library's diagnostics on standard error"));
  app.add_flag("--list", arguments.list,
               Wrapped("List the types that this build offers, with their aliases"));
  app.add_flag("--version", arguments.version, "Print the version");
  AddSettings(app, command.request.settings);
}

std::string WithSingleBlankLines(std::string text) {
  constexpr std::string_view kTwo = "\n\n\n";
  for (std::size_t at = text.find(kTwo); at != std::string::npos; at = text.find(kTwo, at)) {
    text.erase(at, 1);
  }
  return text;
}

// Runs the parser; a text when help was asked for.
std::optional<std::string> Parse(CLI::App& app, const std::vector<std::string>& arguments) {
  try {
    app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));  // it takes the last one first
  } catch (const CLI::CallForHelp&) {
    return WithSingleBlankLines(app.help());
  } catch (const CLI::ParseError& error) {
    throw UsageError(error.what());
  }
  return std::nullopt;
}

bool WasGiven(const CLI::App& app, const std::string& option) {
  return app.get_option(option)->count() > 0;
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
  throw UsageError(Concat({"there is no type '", name, "'; see --list"}));
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

Command ParseDrawing(const std::vector<std::string>& given) {
  Arguments arguments;
  CLI::App app(kDescription);
  app.formatter(std::make_shared<HelpFormatter>());
  app.footer(kFooter);
  AddDrawing(app, arguments);
  if (std::optional<std::string> help = Parse(app, given)) {
    return PrintCommand{*std::move(help)};
  }
  if (arguments.version) {
    return PrintCommand{VersionText()};
  }
  if (arguments.list) {
    return PrintCommand{ListText()};
  }

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

Command ParseGallery(const std::vector<std::string>& given) {
  GalleryCommand command;
  CLI::App app("Draws samples of every type that this build offers, with an index.html that shows them.\n",
               "mkbarcode gallery");
  app.add_option("DIR", command.directory, "Directory to write; it is made where it is missing");
  app.add_flag("--verbose", command.verbose, "Show the library's diagnostics on standard error");
  if (std::optional<std::string> help = Parse(app, given)) {
    return PrintCommand{*std::move(help)};
  }
  if (command.directory.empty()) {
    throw UsageError("gallery: no directory given");
  }
  return command;
}

}  // namespace

Command ParseCommandLine(const std::vector<std::string>& arguments) {
  // Told apart here, not by a subcommand of the parser: a text may be the word "gallery".
  if (!arguments.empty() && arguments.front() == "gallery") {
    return ParseGallery({arguments.begin() + 1, arguments.end()});
  }
  return ParseDrawing(arguments);
}

}  // namespace barcode::tool
