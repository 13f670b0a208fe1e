#include "mkbarcode/library/library_command.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "mkbarcode/errors.h"
#include "mkbarcode/gallery_samples.h"
#include "mkbarcode/program_runner.h"

namespace barcode::tool {
namespace {

using Arguments = std::vector<std::string>;

DrawCommand ParseDraw(const Arguments& arguments) {
  return std::get<DrawCommand>(ParseLibraryCommand(arguments));
}

std::string Printed(const Arguments& arguments) {
  return std::get<PrintCommand>(ParseLibraryCommand(arguments)).text;
}

std::string Refusal(const Arguments& arguments) {
  try {
    ParseLibraryCommand(arguments);
  } catch (const UsageError& error) {
    return error.what();
  }
  return "";
}

TEST(LibraryCommand, ReadsADrawing) {
  const DrawCommand command = ParseDraw({"Code39", "ABC-123", "--size", "300x90", "-o", "out.SVG"});
  EXPECT_EQ(command.request.type, &TypeOf(BARCODE_CODE39));
  EXPECT_EQ(command.request.text, "ABC-123");
  EXPECT_EQ(command.request.size, (Size{300, 90, false}));
  EXPECT_EQ(command.request.format, "svg");
  EXPECT_EQ(command.request.form, Form::kPlain);
  EXPECT_TRUE(command.request.settings.empty());
  EXPECT_EQ(command.outputFile, "out.SVG");
  EXPECT_EQ(command.inputFile, "");
}

TEST(LibraryCommand, ReadsEveryOption) {
  for (const OptionInfo& option : AllOptions()) {
    std::string type(NamesOfTypesServing(option.id));
    type.resize(std::min(type.find(','), type.size()));
    Arguments arguments = {type, "1", "-o", "x.png"};
    std::string value = "2";
    if (const auto* const words = std::get_if<WordSetter>(&option.setter)) {
      value = words->words.back();
    }
    if (std::holds_alternative<ColorSetter>(option.setter)) {
      value = "#010203";
    }
    if (option.IsFlag()) {
      arguments.push_back("--no-" + std::string(option.name));
      value = "off";
    } else {
      arguments.insert(arguments.end(), {"--" + std::string(option.name), value});
    }
    EXPECT_EQ(ParseDraw(arguments).request.settings, std::vector{MakeSetting(option.id, value)})
        << option.name;
    if (option.IsFlag()) {
      arguments.back() = "--" + std::string(option.name);
      EXPECT_EQ(ParseDraw(arguments).request.settings, std::vector{MakeSetting(option.id, "on")});
    }
    if (!option.alias.empty()) {
      arguments[arguments.size() - 2] = "--" + std::string(option.alias);
      EXPECT_EQ(ParseDraw(arguments).request.settings, std::vector{MakeSetting(option.id, value)})
          << option.alias;
    }
  }
}

TEST(LibraryCommand, ReadsTheForms) {
  EXPECT_EQ(ParseDraw({"gs1-128", "9", "-o", "x.png", "--convenience"}).request.form, Form::kConvenience);
  EXPECT_EQ(ParseDraw({"databar-expanded", "9", "-o", "x.png", "--stacked"}).request.form, Form::kStacked);
}

TEST(LibraryCommand, FormatsFollowTheOptionThenTheSuffix) {
  EXPECT_EQ(ParseDraw({"code39", "A", "-o", "x.png", "--format", "SVG"}).request.format, "svg");
  EXPECT_EQ(ParseDraw({"code39", "A", "-o", "x.gif", "--format", "jpeg"}).request.format, "jpeg");
  EXPECT_EQ(ParseDraw({"code39", "A", "-o", "x.jpg"}).request.format, "jpg");
  EXPECT_EQ(ParseDraw({"code39", "A", "-o", "-"}).request.format, "png");
  EXPECT_EQ(ParseDraw({"code39", "A", "--data-uri"}).request.format, "png");
  EXPECT_EQ(ParseDraw({"code39", "A", "--data-uri"}).outputFile, "-");
}

TEST(LibraryCommand, TakesAnyTextAsItIs) {
  for (const std::string text :
       {"", "-", "gallery", "[a,b]", "{}", "%%", "a=b", "\"q\"", "--", "\xE3\x81\x82", "#x"}) {
    EXPECT_EQ(ParseDraw({"code39", "-o", "x.png", "--", text}).request.text, text);
  }
  for (const std::string text :
       {"", "-", "gallery", "[a,b]", "{}", "%%", "a=b", "\"q\"", "\xE3\x81\x82", "#x"}) {
    EXPECT_EQ(ParseDraw({"code39", text, "-o", "x.png"}).request.text, text);
  }
  EXPECT_EQ(ParseDraw({"nw7", "-o", "x.png", "--", "-1-"}).request.text, "-1-");
}

TEST(LibraryCommand, RefusesWrongUsage) {
  using testing::HasSubstr;
  const std::vector<std::pair<Arguments, std::string_view>> cases = {
      {{}, "no type"},
      {{"code38", "A", "-o", "x.png"}, "no type 'code38'; did you mean \"code39\"?"},
      {{"code39"}, "no text"},
      {{"code39", "A"}, "no output"},
      {{"code39", "A", "-o", ""}, "-o: the file name is empty"},
      {{"code39", "A", "-o", "x.gif"}, "tells no format"},
      {{"code39", "A", "-o", "x.png", "--format", "gif"}, "--format: 'gif'"},
      {{"code39", "A", "-o", "x.png", "--format", "a.png"}, "--format: 'a.png'"},
      {{"code39", "A", "-o", "x.png", "--size", "0x100"}, "--size: '0x100'"},
      {{"code39", "A", "-o", "x.png", "--size", "300"}, "code39 needs a box"},
      {{"code39", "A", "-o", "x.png", "--size", "1x1", "--size", "2x2"}, "--size"},
      {{"code39", "A", "-o", "x.png", "--input", "f"}, "given twice"},
      {{"code39", "-o", "x.png", "--input", ""}, "--input: the file name is empty"},
      {{"code39", "A", "-o", "x.png", "--keep-newline"}, "--keep-newline"},
      {{"code39", "A", "-o", "x.png", "--colour", "red"}, "--colour"},
      {{"code39", "A", "B", "-o", "x.png"}, "B"},
      {{"code39", "-A", "-o", "x.png"}, "-A"},
      {{"code39", "A", "-o", "x.png", "--rows", "5"}, "--rows does not apply to code39"},
      {{"code39", "A", "-o", "x.png", "--px-adjust-black"}, "--px-adjust-black"},
      {{"code39", "A", "-o", "x.png", "--fit-width=banana"}, "\"--fit-width\" must be true or false"},
      {{"code39", "A", "-o", "x.png", "--no-fit-width=99999999999999999999"}, "\"--no-fit-width\""},
      {{"code39", "A", "-o", "x.png", "--fit-width="}, "\"--fit-width\""},
      {{"code39", "A", "-o", "x.png", "--data-uri=banana"}, "\"--data-uri\" must be true or false"},
      {{"code39", "A", "-o", "x.png", "--fit-width", "--no-fit-width"}, "exclude each other"},
      {{"code39", "A", "-o", "x.svg", "--data-uri"}, "--data-uri"},
      {{"gs1-128", "9", "-o", "x.png", "--convenience", "--stacked"}, "exclude each other"},
      {{"databar", "9", "-o", "x.png", "--stacked"}, "only to databar-expanded"},
      {{"qr", "A", "-o", "x.png", "--error-correction-level", "X"}, "L, M, Q or H"},
  };
  for (const auto& [arguments, message] : cases) {
    EXPECT_THAT(Refusal(arguments), HasSubstr(message)) << testing::PrintToString(arguments);
  }
}

TEST(LibraryCommand, HelpNamesEveryOptionAndEveryWord) {
  const std::string help = Printed({"--help"});
  for (const OptionInfo& option : AllOptions()) {
    EXPECT_THAT(help, testing::HasSubstr((option.IsFlag() ? "--[no-]" : "--") + std::string(option.name)));
    if (const auto* const setter = std::get_if<WordSetter>(&option.setter)) {
      for (const std::string_view word : setter->words) {
        EXPECT_THAT(help, testing::HasSubstr(word));
      }
    }
  }
  EXPECT_THAT(help, testing::HasSubstr("Exit status: 0 done"));
}

TEST(LibraryCommand, ListsWhatTheLibraryOffers) {
  const std::string list = Printed({"--list"});
  for (const TypeInfo& type : AllTypes()) {
    const bool isListed = ("\n" + list).find("\n" + std::string(type.name) + " ") != std::string::npos;
    EXPECT_EQ(isListed, IsOffered(type)) << type.name;
  }
  EXPECT_THAT(list, testing::HasSubstr("c39 3of9\n"));
}

// The shell's view of the commands: one list of words per command.
std::vector<Arguments> SplitByShell(const std::vector<std::string>& commands) {
  std::string script;
  for (const std::string& command : commands) {
    script += "printf '%s\\0' " + command + "\nprintf '\\n\\0'\n";
  }
  const std::string output = RunShell(script).output;
  std::vector<Arguments> split(1);
  for (std::size_t start = 0; start < output.size();) {
    const std::size_t end = output.find('\0', start);
    std::string word = output.substr(start, end - start);
    start = end + 1;
    if (word == "\n") {
      split.emplace_back();
    } else {
      split.back().push_back(std::move(word));
    }
  }
  split.pop_back();
  return split;
}

TEST(LibraryCommand, TheGallerysCommandsSayWhatTheGalleryDraws) {
  std::vector<DrawRequest> requests;
  std::vector<std::string> commands;
  for (const Sample& sample : GallerySamples()) {
    for (const std::string format : {"png", "svg"}) {
      requests.push_back(sample.request);
      requests.back().format = format;
      commands.push_back(CommandText(requests.back(), "sample." + format));
    }
  }
  const std::vector<Arguments> split = SplitByShell(commands);
  ASSERT_EQ(split.size(), requests.size());
  for (std::size_t i = 0; i < split.size(); ++i) {
    ASSERT_EQ(split[i].at(0), "mkbarcode");
    ASSERT_EQ(split[i].at(1), "library");
    EXPECT_EQ(ParseDraw({split[i].begin() + 2, split[i].end()}).request, requests[i]) << commands[i];
  }
}

}  // namespace
}  // namespace barcode::tool
