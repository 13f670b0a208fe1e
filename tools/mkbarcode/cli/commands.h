#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "mkbarcode/cli/description.h"

namespace barcode::tool {

// A command that the first argument names.
struct CommandEntry {
  std::string_view name;
  // With the arguments behind the name; the exit status. Throws UsageError and RunError.
  int (*run)(const std::vector<std::string>& arguments);
  CommandDescription (*describe)();
};

// Null for any other word: it is the type of a label then.
const CommandEntry* FindCommand(std::string_view name);

std::vector<std::string> NamesOfCommands();

// Every command, that of one label first.
std::vector<CommandDescription> AllCommands();

// The command of one label, with the usage of the others.
CommandDescription Overview();

// "", or the names of the commands that take an option: '"mkbarcode library"'.
std::string CommandsWithOption(std::string_view option);

}  // namespace barcode::tool
