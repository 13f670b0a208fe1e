#include <string_view>

#include "mkbarcode/cli/completion.h"
#include "mkbarcode/cli/pages.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

// As one word of fish.
std::string Quoted(std::string_view text) {
  std::string quoted = "'";
  for (const char c : text) {
    if (c == '\'' || c == '\\') {
      quoted += '\\';
    }
    quoted += c;
  }
  return quoted + "'";
}

std::string Values(const std::string& placeholder, const std::vector<std::string>& words) {
  switch (CompletedBy(placeholder, words)) {
    case Completed::kWords:
      return Concat({" -x -a ", Quoted(Joined(words, " "))});
    case Completed::kFiles:
      return " -r -F";
    case Completed::kDirectories:
      return " -x -a '(__fish_complete_directories)'";
    case Completed::kNothing:
      break;
  }
  return " -x";
}

std::string Line(const std::string& condition, const std::string& rest) {
  return Concat({"complete -c mkbarcode -n ", Quoted(condition), rest, "\n"});
}

std::string NameArgument(const std::string& name) {
  return name.starts_with("--") ? Concat({" -l ", name.substr(2)}) : Concat({" -s ", name.substr(1)});
}

std::string InCommand(const CommandDescription& command) {
  return Concat({"__mkbarcode_in \"", command.name, "\""});
}

std::string OptionLines(const CommandDescription& command, const OptionDescription& option) {
  std::string names;
  for (const std::string& name : option.names) {
    names += NameArgument(name);
  }
  const std::string help = Concat({" -d ", Quoted(BriefHelp(option))});
  // An optional value is not asked for: fish would take the next word.
  const bool hasValue = !option.value.empty() && !option.valueIsOptional;
  std::string lines =
      Line(InCommand(command), Concat({names, hasValue ? Values(option.value, option.words) : "", help}));
  if (!option.opposite.empty()) {
    lines += Line(InCommand(command), Concat({NameArgument(option.opposite), help}));
  }
  return lines;
}

std::string ArgumentLines(const CommandDescription& command, const Commands& commands) {
  std::string lines;
  // The program's name and, where it has one, the command's.
  const std::size_t wordsBefore = command.name.empty() ? 1 : 2;
  for (std::size_t i = 0; i < command.arguments.size(); ++i) {
    const ArgumentDescription& argument = command.arguments[i];
    const std::vector<std::string> words =
        command.name.empty() && i == 0 ? FirstWords(commands) : argument.words;
    const std::string condition = Concat(
        {InCommand(command), "; and test (count (commandline -opc)) -eq ", std::to_string(wordsBefore + i)});
    switch (CompletedBy(argument.name, words)) {
      case Completed::kWords:
        lines += Line(condition, Concat({" -a ", Quoted(Joined(words, " "))}));
        break;
      case Completed::kFiles:
        lines += Line(condition, " -F");
        break;
      case Completed::kDirectories:
        lines += Line(condition, " -a '(__fish_complete_directories)'");
        break;
      case Completed::kNothing:
        break;
    }
  }
  return lines;
}

}  // namespace

std::string FishCompletion(const Commands& commands) {
  std::string script =
      Concat({"# Completion of mkbarcode for fish.\n"
              "function __mkbarcode_in\n"
              "    set -l words (commandline -opc)\n"
              "    set -l command ''\n"
              "    if test (count $words) -gt 1; and contains -- $words[2] ",
              Joined(NamesOf(commands), " "),
              "\n"
              "        set command $words[2]\n"
              "    end\n"
              "    test \"$command\" = \"$argv[1]\"\n"
              "end\n"
              "complete -c mkbarcode -f\n"});
  for (const CommandDescription& command : commands) {
    for (const OptionDescription& option : command.options) {
      script += OptionLines(command, option);
    }
    script += ArgumentLines(command, commands);
  }
  return script;
}

}  // namespace barcode::tool
