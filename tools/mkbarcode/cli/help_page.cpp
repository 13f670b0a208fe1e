#include "mkbarcode/cli/help_page.h"

#include <algorithm>
#include <cstddef>

#include "mkbarcode/quoting.h"

namespace barcode::tool {
namespace {

constexpr std::size_t kColumn = 36;
constexpr std::size_t kTextWidth = 68;

// One row: what is written, and behind it or below it what that does.
std::string Row(const std::string& written, const std::string& help) {
  std::string row = Concat({"  ", written});
  if (row.size() + 2 > kColumn) {
    row += '\n';
    row.append(kColumn, ' ');
  } else {
    row.resize(kColumn, ' ');
  }
  for (const char c : Wrapped(help, kTextWidth)) {
    row += c;
    if (c == '\n') {
      row.append(kColumn, ' ');
    }
  }
  return row + '\n';
}

std::string Arguments(const CommandDescription& command) {
  if (command.arguments.empty()) {
    return "";
  }
  std::string text = "\nArguments:\n";
  for (const ArgumentDescription& argument : command.arguments) {
    text += Row(argument.name, argument.help);
  }
  return text;
}

// In the order in which their first options stand.
std::vector<std::string> GroupsOf(const CommandDescription& command) {
  std::vector<std::string> groups;
  for (const OptionDescription& option : command.options) {
    if (std::ranges::find(groups, option.group) == groups.end()) {
      groups.push_back(option.group);
    }
  }
  return groups;
}

}  // namespace

std::string Wrapped(const std::string& text, std::size_t width) {
  std::string wrapped;
  std::size_t lineLength = 0;
  std::size_t start = 0;
  while (start < text.size()) {
    const std::size_t end = std::min(text.find(' ', start), text.size());
    const std::string word = text.substr(start, end - start);
    const bool fits = lineLength + 1 + word.size() <= width;
    if (!wrapped.empty()) {
      wrapped += fits ? ' ' : '\n';
    }
    lineLength = fits ? lineLength + 1 + word.size() : word.size();
    wrapped += word;
    start = end + 1;
  }
  return wrapped;
}

std::string WrittenForm(const OptionDescription& option) {
  std::string written;
  for (const std::string& name : option.names) {
    const bool isSwitch = !option.opposite.empty() && name.starts_with("--");
    written +=
        Concat({written.empty() ? "" : ", ", isSwitch ? "--[no-]" : "", isSwitch ? name.substr(2) : name});
  }
  if (option.value.empty()) {
    return written;
  }
  return option.valueIsOptional ? Concat({written, "[=", option.value, "]"})
                                : Concat({written, " ", option.value});
}

std::string HelpPage(const CommandDescription& command) {
  std::string page = Concat({command.purpose, "\n\n"});
  for (std::size_t i = 0; i < command.usage.size(); ++i) {
    page += Concat({i == 0 ? "Usage: " : "       ", "mkbarcode ", command.usage[i], "\n"});
  }
  page += Arguments(command);
  for (const std::string& group : GroupsOf(command)) {
    page += Concat({"\n", group, ":\n"});
    for (const OptionDescription& option : command.options) {
      if (option.group == group) {
        page += Row(WrittenForm(option), option.help);
      }
    }
  }
  return command.notes.empty() ? page : Concat({page, "\n", command.notes, "\n"});
}

}  // namespace barcode::tool
