#include "mkbarcode/cli/completion.h"

#include <algorithm>

namespace barcode::tool {

Completed CompletedBy(const std::string& placeholder, const std::vector<std::string>& words) {
  if (!words.empty()) {
    return Completed::kWords;
  }
  if (placeholder == "FILE" || placeholder == "JOBS") {
    return Completed::kFiles;
  }
  return placeholder == "DIR" ? Completed::kDirectories : Completed::kNothing;
}

std::string Joined(std::span<const std::string> words, std::string_view separator) {
  std::string joined;
  for (const std::string& word : words) {
    if (!joined.empty()) {
      joined += separator;
    }
    joined += word;
  }
  return joined;
}

std::string BriefHelp(const OptionDescription& option) {
  std::string brief = option.help;
  for (const std::string_view end : {": ", "; ", " (default"}) {
    brief.resize(std::min(brief.find(end), brief.size()));
  }
  return brief;
}

std::vector<std::string> NamesOf(const OptionDescription& option) {
  std::vector<std::string> names = option.names;
  if (!option.opposite.empty()) {
    names.push_back(option.opposite);
  }
  return names;
}

std::vector<std::string> NamesOf(const std::vector<CommandDescription>& commands) {
  std::vector<std::string> names;
  for (const CommandDescription& command : commands) {
    if (!command.name.empty()) {
      names.push_back(command.name);
    }
  }
  return names;
}

std::vector<std::string> FirstWords(const std::vector<CommandDescription>& commands) {
  std::vector<std::string> words = commands.front().arguments.front().words;
  const std::vector<std::string> names = NamesOf(commands);
  words.insert(words.end(), names.begin(), names.end());
  return words;
}

}  // namespace barcode::tool
