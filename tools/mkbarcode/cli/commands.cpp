#include "mkbarcode/cli/commands.h"

#include <algorithm>
#include <array>

#include "mkbarcode/batch/batch_command.h"
#include "mkbarcode/gallery_command.h"
#include "mkbarcode/library/library_command.h"
#include "mkbarcode/quoting.h"
#include "mkbarcode/single/label_command.h"

namespace barcode::tool {
namespace {

constexpr std::array kCommands = {
    CommandEntry{"batch", RunBatch, DescribeBatch},
    CommandEntry{"library", RunLibraryCommand, DescribeLibraryCommand},
    CommandEntry{"gallery", RunGalleryCommand, DescribeGalleryCommand},
};

bool Takes(const CommandDescription& command, std::string_view option) {
  return std::ranges::any_of(command.options, [option](const OptionDescription& known) {
    return known.opposite == option || std::ranges::find(known.names, option) != known.names.end();
  });
}

}  // namespace

const CommandEntry* FindCommand(std::string_view name) {
  const auto* const found = std::ranges::find(kCommands, name, &CommandEntry::name);
  return found == kCommands.end() ? nullptr : found;
}

std::vector<std::string> NamesOfCommands() {
  std::vector<std::string> names;
  names.reserve(kCommands.size());
  for (const CommandEntry& command : kCommands) {
    names.emplace_back(command.name);
  }
  return names;
}

std::vector<CommandDescription> AllCommands() {
  std::vector<CommandDescription> commands = {DescribeLabelCommand()};
  for (const CommandEntry& command : kCommands) {
    commands.push_back(command.describe());
  }
  return commands;
}

CommandDescription Overview() {
  std::vector<CommandDescription> commands = AllCommands();
  CommandDescription overview = std::move(commands.front());
  for (std::size_t i = 1; i < commands.size(); ++i) {
    const std::vector<std::string>& usage = commands[i].usage;
    overview.usage.insert(overview.usage.end() - 1, usage.begin(), usage.end());
  }
  return overview;
}

std::string CommandsWithOption(std::string_view option) {
  std::string names;
  for (const CommandDescription& command : AllCommands()) {
    if (Takes(command, option)) {
      const std::string name =
          command.name.empty() ? "mkbarcode TYPE TEXT" : Concat({"mkbarcode ", command.name});
      names += Concat({names.empty() ? "" : ", ", "\"", name, "\""});
    }
  }
  return names;
}

}  // namespace barcode::tool
