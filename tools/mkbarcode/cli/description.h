#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
}

// What there is to be told of a command: the one source of its help, of the completions and of the manual
// page.
namespace barcode::tool {

struct OptionDescription {
  std::vector<std::string> names;  // with their dashes: "-o", "--output"
  std::string opposite;            // "--no-show-text"; empty where there is none
  std::string value;               // what stands for it: "FILE"; empty where it takes none
  bool valueIsOptional = false;    // "--report[=FILE]"
  std::string help;
  std::string group;
  std::vector<std::string> words;  // all that the value may be; empty where it may be more
};

struct ArgumentDescription {
  std::string name;
  std::string help;
  std::vector<std::string> words;
};

struct CommandDescription {
  std::string name;  // behind "mkbarcode"; empty for that of one label
  std::string purpose;
  std::vector<std::string> usage;  // lines, without "mkbarcode"
  std::vector<ArgumentDescription> arguments;
  std::vector<OptionDescription> options;
  std::string notes;  // paragraphs behind the options
};

// The words that are the values of an option, by its long name without dashes, or of an argument.
using WordsOf = std::function<std::vector<std::string>(std::string_view)>;

// Those of requests for labels: types, formats and the keywords of fields.
std::vector<std::string> WordsOfLabels(std::string_view name);

// Of the parser of a command. A type name with "|" in it lists the words of that option itself.
CommandDescription Describe(const CLI::App& app, const WordsOf& wordsOf = WordsOfLabels);

}  // namespace barcode::tool
