#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "mkbarcode/cli/description.h"

// What the completions of all shells have in common.
namespace barcode::tool {

// What stands in place of a value or an argument.
enum class Completed { kNothing, kWords, kFiles, kDirectories };
Completed CompletedBy(const std::string& placeholder, const std::vector<std::string>& words);

std::string Joined(std::span<const std::string> words, std::string_view separator);

// The help of an option without its values and defaults: a line.
std::string BriefHelp(const OptionDescription& option);

// All names of an option, its opposite included.
std::vector<std::string> NamesOf(const OptionDescription& option);

// Of all commands but the one that has none.
std::vector<std::string> NamesOf(const std::vector<CommandDescription>& commands);

// The words that the first argument may be.
std::vector<std::string> FirstWords(const std::vector<CommandDescription>& commands);

}  // namespace barcode::tool
