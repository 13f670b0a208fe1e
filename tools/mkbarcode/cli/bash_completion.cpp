#include <string_view>

#include "mkbarcode/cli/completion.h"
#include "mkbarcode/cli/pages.h"
#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

// The words are told apart by Bash at every "=" too. Where the cursor stands: `cur`, the option whose value
// it is or the word before: `prev`; `place` counts the arguments before it that are no options.
constexpr std::string_view kHead = R"(# Completion of mkbarcode for bash.
_mkbarcode() {
  local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]}
  if [[ $cur == "=" ]]; then
    cur=""
  elif [[ $prev == "=" ]]; then
    prev=${COMP_WORDS[COMP_CWORD-2]}
  fi
  COMPREPLY=()
  local command="" first=1 options="" valued="" place=1 word i
)";
constexpr std::string_view kPlace = R"(  for ((i = first; i < COMP_CWORD; ++i)); do
    word=${COMP_WORDS[i]}
    if [[ $word == "=" ]]; then
      ((++i))
    elif [[ " $valued " == *" $word "* ]]; then
      [[ ${COMP_WORDS[i+1]} == "=" ]] || ((++i))
    elif [[ $word != -* ]]; then
      ((++place))
    fi
  done
  if [[ $cur == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$cur")
    return
  fi
)";
constexpr std::string_view kTail = "}\ncomplete -F _mkbarcode mkbarcode\n";

std::string Reply(Completed completed, const std::vector<std::string>& words) {
  const std::string_view files = "compopt -o filenames; mapfile -t COMPREPLY < <(compgen ";
  switch (completed) {
    case Completed::kWords:
      return Concat({"mapfile -t COMPREPLY < <(compgen -W \"", Joined(words, " "), "\" -- \"$cur\")"});
    case Completed::kFiles:
      return Concat({files, "-f -- \"$cur\")"});
    case Completed::kDirectories:
      return Concat({files, "-d -- \"$cur\")"});
    case Completed::kNothing:
      break;
  }
  return ":";
}

// One branch of the choice of a command: which options it has, and which of them take the next word.
std::string OptionsBranch(const CommandDescription& command) {
  std::vector<std::string> options;
  std::vector<std::string> valued;
  for (const OptionDescription& option : command.options) {
    const std::vector<std::string> names = NamesOf(option);
    options.insert(options.end(), names.begin(), names.end());
    if (!option.value.empty() && !option.valueIsOptional) {
      valued.insert(valued.end(), names.begin(), names.end());
    }
  }
  const bool isNamed = !command.name.empty();
  return Concat({"    ", isNamed ? command.name : "*", ")\n",
                 isNamed ? Concat({"      command=", command.name, " first=2\n"}) : "", "      options=\"",
                 Joined(options, " "), "\"\n      valued=\"", Joined(valued, " "), "\"\n      ;;\n"});
}

std::string ValueBranches(const CommandDescription& command) {
  std::string branches;
  for (const OptionDescription& option : command.options) {
    if (option.value.empty()) {
      continue;
    }
    std::vector<std::string> patterns;
    for (const std::string& name : option.names) {
      // Without "=" what follows is no value of this one.
      patterns.push_back(Concat({"\"", command.name, " ", name, option.valueIsOptional ? " =" : "", "\""}));
    }
    if (!option.valueIsOptional) {
      for (const std::string& name : option.names) {
        patterns.push_back(Concat({"\"", command.name, " ", name, " =\""}));
      }
    }
    branches +=
        Concat({"    ", Joined(patterns, " | "), ")\n      ",
                Reply(CompletedBy(option.value, option.words), option.words), "\n      return\n      ;;\n"});
  }
  return branches;
}

std::string ArgumentBranches(const CommandDescription& command, const Commands& commands) {
  std::string branches;
  for (std::size_t i = 0; i < command.arguments.size(); ++i) {
    const ArgumentDescription& argument = command.arguments[i];
    const bool isFirstWord = command.name.empty() && i == 0;
    const std::vector<std::string> words = isFirstWord ? FirstWords(commands) : argument.words;
    branches += Concat({"    \"", command.name, " ", std::to_string(i + 1), "\") ",
                        Reply(CompletedBy(argument.name, words), words), " ;;\n"});
  }
  return branches;
}

}  // namespace

std::string BashCompletion(const Commands& commands) {
  std::string script(kHead);
  script += "  case ${COMP_WORDS[1]} in\n";
  for (std::size_t i = 1; i < commands.size(); ++i) {
    script += OptionsBranch(commands[i]);
  }
  script += OptionsBranch(commands.front());
  script +=
      "  esac\n"
      "  local sign=\"\"\n"
      "  if [[ ${COMP_WORDS[COMP_CWORD]} == \"=\" || ${COMP_WORDS[COMP_CWORD-1]} == \"=\" ]]; then\n"
      "    sign=\" =\"\n"
      "  fi\n"
      "  case \"$command $prev$sign\" in\n";
  for (const CommandDescription& command : commands) {
    script += ValueBranches(command);
  }
  script += "  esac\n";
  script += kPlace;
  script += "  case \"$command $place\" in\n";
  for (const CommandDescription& command : commands) {
    script += ArgumentBranches(command, commands);
  }
  script += "  esac\n";
  script += kTail;
  return script;
}

}  // namespace barcode::tool
