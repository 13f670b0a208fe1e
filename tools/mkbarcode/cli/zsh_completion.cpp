#include <string_view>

#include "mkbarcode/cli/completion.h"
#include "mkbarcode/cli/pages.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

// Within '...[here]...' and '...:here:...'.
std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    if (c == '\'') {
      escaped += "'\\''";
      continue;
    }
    if (c == '[' || c == ']' || c == ':' || c == '\\') {
      escaped += '\\';
    }
    escaped += c;
  }
  return escaped;
}

std::string Action(const std::string& placeholder, const std::vector<std::string>& words) {
  switch (CompletedBy(placeholder, words)) {
    case Completed::kWords:
      return Concat({"(", Joined(words, " "), ")"});
    case Completed::kFiles:
      return "_files";
    case Completed::kDirectories:
      return "_files -/";
    case Completed::kNothing:
      break;
  }
  return " ";
}

// One line for each name.
std::string OptionLines(const OptionDescription& option) {
  const std::vector<std::string> names = NamesOf(option);
  std::string lines;
  for (const std::string& name : names) {
    const bool isLong = name.starts_with("--");
    std::string value;
    std::string sign;
    if (!option.value.empty()) {
      value = Concat({option.valueIsOptional ? "::" : ":", Escaped(option.value), ":",
                      Action(option.value, option.words)});
      sign = option.valueIsOptional ? "=-" : isLong ? "=" : "+";
    }
    lines += Concat(
        {"    '(", Joined(names, " "), ")", name, sign, "[", Escaped(BriefHelp(option)), "]", value, "'\n"});
  }
  return lines;
}

std::string Specifications(const CommandDescription& command, const std::vector<std::string>* firstWords) {
  std::string lines;
  for (const OptionDescription& option : command.options) {
    lines += OptionLines(option);
  }
  for (std::size_t i = 0; i < command.arguments.size(); ++i) {
    const ArgumentDescription& argument = command.arguments[i];
    const bool isFirst = i == 0 && firstWords != nullptr;
    lines += Concat({"    '", std::to_string(i + 1), ":", argument.name, ":",
                     Action(argument.name, isFirst ? *firstWords : argument.words), "'\n"});
  }
  return lines;
}

}  // namespace

std::string ZshCompletion(const Commands& commands) {
  std::string script =
      "#compdef mkbarcode\n"
      "# Completion of mkbarcode for zsh.\n"
      "_mkbarcode() {\n"
      "  local -a specifications\n"
      "  case ${words[2]} in\n";
  for (std::size_t i = 1; i < commands.size(); ++i) {
    script +=
        Concat({"  ", commands[i].name, ")\n    specifications=(\n", Specifications(commands[i], nullptr),
                "    )\n    shift words\n    (( CURRENT-- ))\n    ;;\n"});
  }
  const std::vector<std::string> firstWords = FirstWords(commands);
  script += Concat({"  *)\n    specifications=(\n", Specifications(commands.front(), &firstWords),
                    "    )\n    ;;\n"
                    "  esac\n"
                    "  _arguments -S $specifications\n"
                    "}\n"
                    "_mkbarcode \"$@\"\n"});
  return script;
}

}  // namespace barcode::tool
