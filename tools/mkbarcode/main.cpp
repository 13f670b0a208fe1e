#include <exception>
#include <iterator>
#include <string>
#include <vector>

#include "mkbarcode/cli/commands.h"
#include "mkbarcode/cli/parser.h"
#include "mkbarcode/errors.h"
#include "mkbarcode/io.h"
#include "mkbarcode/quoting.h"
#include "mkbarcode/single/label_command.h"

namespace barcode::tool {
namespace {

int Refuse(const std::string& message, const CommandEntry* command) {
  WriteToStandardError(
      Concat({"mkbarcode: ", message, "\nSee mkbarcode ", command != nullptr ? command->name : "",
              command != nullptr ? " " : "", "--help\n"}));
  return kExitUsage;
}

// An option of another command is told of rather than a similar one of this command.
std::string MessageOf(const UnknownOption& error) {
  const std::string commands = CommandsWithOption(error.Option());
  return commands.empty() ? std::string(error.what())
                          : Concat({"The option \"", error.Option(), "\" belongs to ", commands, "."});
}

int Main(const std::vector<std::string>& arguments) {
  const CommandEntry* const command = arguments.empty() ? nullptr : FindCommand(arguments.front());
  try {
    return command == nullptr ? RunLabelCommand(arguments)
                              : command->run({arguments.begin() + 1, arguments.end()});
  } catch (const UnknownOption& error) {
    return Refuse(MessageOf(error), command);
  } catch (const UsageError& error) {
    return Refuse(error.what(), command);
  } catch (const std::exception& error) {
    WriteToStandardError(Concat({"mkbarcode: ", error.what(), "\n"}));
    return kExitFailed;
  }
}

}  // namespace
}  // namespace barcode::tool

int main(int argc, char** argv) {
  barcode::tool::ReserveStandardDescriptors();
  if (argc < 1) {
    return barcode::tool::Main({});
  }
  return barcode::tool::Main({std::next(argv), std::next(argv, argc)});
}
