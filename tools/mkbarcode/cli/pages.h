#pragma once

#include <string>
#include <vector>

#include "mkbarcode/cli/description.h"

// What is installed beside the program, made from the descriptions of its commands, of which the first is the
// one without a name.
namespace barcode::tool {

using Commands = std::vector<CommandDescription>;

std::string BashCompletion(const Commands& commands);
std::string ZshCompletion(const Commands& commands);
std::string FishCompletion(const Commands& commands);
std::string ManualPage(const Commands& commands, const std::string& version);

}  // namespace barcode::tool
